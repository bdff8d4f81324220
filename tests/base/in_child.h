#pragma once

#include <unistd.h>

namespace kolvane::base {

/// Runs `work` in a child process, which then exits; returns the child's id.
template <typename Work>
pid_t InChild(Work work) {
  const pid_t child = fork();
  if (child != 0) return child;
  work();
  _exit(0);
}

}  // namespace kolvane::base
