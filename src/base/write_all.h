#pragma once

#include <string_view>

namespace kolvane::base {

/// Writes all of `bytes` to an open descriptor. Returns 0 or an errno; a file that may not grow further
/// (EFBIG) and a pipe that nobody reads (EPIPE) are such failures too, not signals. What was written before
/// a failure stays.
[[nodiscard]] int WriteAll(int descriptor, std::string_view bytes);

}  // namespace kolvane::base
