#pragma once

#include <cerrno>

namespace kolvane::base {

/// The result of a system call, which is made again whenever a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
  decltype(call()) result{};
  do {
    result = call();
  } while (result < 0 && errno == EINTR);
  return result;
}

}  // namespace kolvane::base
