#pragma once

#include <cerrno>

namespace kolvane::base {

/// The result of a system call, which is made again whenever a signal interrupts it.
template <typename Call>
int Uninterrupted(Call call) {
  int result = 0;
  do {
    result = call();
  } while (result < 0 && errno == EINTR);
  return result;
}

}  // namespace kolvane::base
