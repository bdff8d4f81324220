#pragma once

#include <bit>
#include <cstdint>

namespace kolvane::inspect {

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

}  // namespace kolvane::inspect
