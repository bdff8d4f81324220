#pragma once

#include <bit>
#include <optional>

#include "inspect/byte_reader.h"
#include "inspect/byte_swap.h"

/// Values in the byte buffer, in the machine's order (low byte first) or, where `network_order` is set, the
/// other one. Nothing where the first byte lies outside the buffer; bytes behind its end count as 0.
namespace kolvane::inspect {

template <std::size_t kBytes>
std::optional<std::uint64_t> BitsAt(const ByteBuffer& buffer, std::int32_t offset) {
  if (offset < 0 || static_cast<std::size_t>(offset) >= buffer.size()) return std::nullopt;
  const auto first = static_cast<std::size_t>(offset);
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < kBytes && first + i < buffer.size(); ++i)
    bits |= static_cast<std::uint64_t>(buffer[first + i]) << (8 * i);
  return bits;
}

inline std::optional<std::uint8_t> ByteAt(const ByteBuffer& buffer, std::int32_t offset) {
  const auto bits = BitsAt<1>(buffer, offset);
  if (!bits) return std::nullopt;
  return static_cast<std::uint8_t>(*bits);
}

inline std::optional<std::int16_t> ShortAt(const ByteBuffer& buffer, std::int32_t offset,
                                           bool network_order) {
  const auto bits = BitsAt<2>(buffer, offset);
  if (!bits) return std::nullopt;
  const auto value = static_cast<std::int16_t>(*bits);
  return network_order ? BSwapS(value) : value;
}

inline std::optional<std::int32_t> LongAt(const ByteBuffer& buffer, std::int32_t offset, bool network_order) {
  const auto bits = BitsAt<4>(buffer, offset);
  if (!bits) return std::nullopt;
  const auto value = static_cast<std::int32_t>(*bits);
  return network_order ? BSwapL(value) : value;
}

inline std::optional<float> FloatAt(const ByteBuffer& buffer, std::int32_t offset, bool network_order) {
  const auto bits = BitsAt<4>(buffer, offset);
  if (!bits) return std::nullopt;
  const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(*bits));
  return network_order ? BSwapF(value) : value;
}

/// Doubles know no network order.
inline std::optional<double> DoubleAt(const ByteBuffer& buffer, std::int32_t offset) {
  const auto bits = BitsAt<8>(buffer, offset);
  if (!bits) return std::nullopt;
  return std::bit_cast<double>(*bits);
}

}  // namespace kolvane::inspect
