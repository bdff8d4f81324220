#pragma once

#include <unistd.h>

namespace kolvane::base {

/// Runs `work` in a process of its own, which never comes back from it.
template <typename Work>
pid_t InChild(Work work) {
  const pid_t child = fork();
  if (child != 0) return child;
  work();
  _exit(0);
}

}  // namespace kolvane::base
