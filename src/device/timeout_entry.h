#pragma once

#include <cstdint>
#include <string_view>

namespace kolvane::device {

/// Milliseconds from the text of a time-out field: leading number (comma or point), rounded half to even,
/// limited to 32 bits.

/// Seconds; a negative entry becomes 0.
std::int32_t Rs232Timeout(std::string_view text);

/// Seconds; a negative entry stays negative.
std::int32_t ParallelTimeout(std::string_view text);
std::int32_t TcpIpTimeout(std::string_view text);

/// Milliseconds where the text contains "msec", seconds otherwise: the list's "100 ms" is 100000.
std::int32_t GpibTimeout(std::string_view text);

}  // namespace kolvane::device
