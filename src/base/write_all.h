#pragma once

#include <cstddef>
#include <string_view>

namespace kolvane::base {

/// Writes all of `bytes` to an open descriptor. Returns 0 or an errno; a file that may not grow further
/// (EFBIG) and a pipe that nobody reads (EPIPE) are such failures too, not signals. What was written before
/// a failure stays; `written`, where given, tells how much that was.
[[nodiscard]] int WriteAll(int descriptor, std::string_view bytes, std::size_t* written = nullptr);

}  // namespace kolvane::base
