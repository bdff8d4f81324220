#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/hex_dump.h"

namespace kolvane::inspect {

using ByteBuffer = std::array<std::uint8_t, 257>;
using ByteSpan = std::span<const std::uint8_t>;

/// The value with its bytes in reverse order; a single is swapped as a bit pattern.
constexpr std::int16_t BSwapS(std::int16_t value) {
  const auto bits = static_cast<std::uint16_t>(value);
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(bits << 8 | bits >> 8));
}

constexpr std::int32_t BSwapL(std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  return static_cast<std::int32_t>(bits << 24 | (bits & 0xFF00) << 8 | (bits >> 8 & 0xFF00) | bits >> 24);
}

constexpr float BSwapF(float value) {
  return std::bit_cast<float>(BSwapL(std::bit_cast<std::int32_t>(value)));
}

/// Values in a buffer, in the machine's byte order (low byte first) or, if `network_order` is set, in the
/// other. No value if the first byte is outside the buffer; bytes after its end count as 0.

template <std::size_t kBytes>
std::optional<std::uint64_t> BitsAt(ByteSpan bytes, std::int32_t offset) {
  if (offset < 0 || static_cast<std::size_t>(offset) >= bytes.size()) return std::nullopt;
  const auto first = static_cast<std::size_t>(offset);
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < kBytes && first + i < bytes.size(); ++i)
    bits |= static_cast<std::uint64_t>(bytes[first + i]) << (8 * i);
  return bits;
}

inline std::optional<std::uint8_t> ByteAt(ByteSpan bytes, std::int32_t offset) {
  const auto bits = BitsAt<1>(bytes, offset);
  if (!bits) return std::nullopt;
  return static_cast<std::uint8_t>(*bits);
}

inline std::optional<std::int16_t> ShortAt(ByteSpan bytes, std::int32_t offset, bool network_order) {
  const auto bits = BitsAt<2>(bytes, offset);
  if (!bits) return std::nullopt;
  const auto value = static_cast<std::int16_t>(*bits);
  return network_order ? BSwapS(value) : value;
}

inline std::optional<std::int32_t> LongAt(ByteSpan bytes, std::int32_t offset, bool network_order) {
  const auto bits = BitsAt<4>(bytes, offset);
  if (!bits) return std::nullopt;
  const auto value = static_cast<std::int32_t>(*bits);
  return network_order ? BSwapL(value) : value;
}

inline std::optional<float> FloatAt(ByteSpan bytes, std::int32_t offset, bool network_order) {
  const auto bits = BitsAt<4>(bytes, offset);
  if (!bits) return std::nullopt;
  const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(*bits));
  return network_order ? BSwapF(value) : value;
}

/// Doubles have no network order.
inline std::optional<double> DoubleAt(ByteSpan bytes, std::int32_t offset) {
  const auto bits = BitsAt<8>(bytes, offset);
  if (!bits) return std::nullopt;
  return std::bit_cast<double>(*bits);
}

/// Reads bytes from the caret on into the buffer and selects them in the dump. Reading stops `kTextEnd`
/// positions before the text's end; the rest of the buffer keeps what an earlier read left. With a count
/// below 1 it continues to that end. Returns false if the buffer was full before: the caret then stays after
/// the last byte, and nothing is selected.
[[nodiscard]] bool BuildByteBuf(std::int32_t total_bytes, DumpView& view, ByteBuffer& buffer);

inline constexpr Position kTextEnd = 22;

/// The bytes from the caret on read as one type, low byte first and high byte first.
struct ValueRow {
  std::string_view type;  ///< UTF-8, German
  std::string little_endian;
  std::string big_endian;
};

/// One row for each type, always the same ones; values that need more than `bytes` are empty. Texts are
/// UTF-8.
std::vector<ValueRow> ValueTable(std::string_view bytes, std::string_view decimal_sign);

}  // namespace kolvane::inspect
