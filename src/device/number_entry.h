#pragma once

#include <cstdint>
#include <string_view>

namespace kolvane::device {

/// Numbers typed into a field of the connection dialog: the leading number (comma or point, 0 if there is
/// none), rounded half to even and clamped to the type's range, so that reading the dialog cannot fail.
std::int32_t TypedInt32(std::string_view text);
std::int16_t TypedInt16(std::string_view text);
std::uint8_t TypedByte(std::string_view text);

/// Like TypedInt16, with 32768 to 65535 stored as the same 16 bits with a sign.
std::int16_t TypedIpPort(std::string_view text);

inline constexpr std::int32_t kSmallestReceiveBuffer = 512;

/// The receive buffer in bytes, at least kSmallestReceiveBuffer.
std::int32_t TypedReceiveBuffer(std::string_view text);

/// The seconds that a modem may take to connect; below 10 becomes 60.
std::int32_t TypedDialTimeout(std::string_view text);

/// The baud value of a parallel port: `mode_index` + 1, and 95 for the fifth mode.
std::int32_t BaudOfLptMode(std::int32_t mode_index);

/// Milliseconds from the text of a time-out field: leading number (comma or point), rounded half to even,
/// clamped to 32 bits.

/// Seconds; a negative entry becomes 0.
std::int32_t Rs232Timeout(std::string_view text);

/// Seconds; a negative entry stays negative.
std::int32_t ParallelTimeout(std::string_view text);
std::int32_t TcpIpTimeout(std::string_view text);

/// Milliseconds if the text contains "msec", otherwise seconds: the list's "100 ms" is 100000.
std::int32_t GpibTimeout(std::string_view text);

}  // namespace kolvane::device
