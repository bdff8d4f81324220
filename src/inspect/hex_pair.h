#pragma once

#include <cstdint>

namespace kolvane::inspect {

/// The value of a hexadecimal digit, -1 for any other character.
constexpr int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

/// Two characters read as a hexadecimal number as far as they form one, a blank in front passed over: "4x",
/// "4 " and " 4" are 4, "x4" and "  " are 0.
constexpr std::uint8_t HexPair(char first, char second) {
  const int high = HexDigit(first);
  const int low = HexDigit(second);
  if (high < 0) return static_cast<std::uint8_t>(first == ' ' && low > 0 ? low : 0);
  return static_cast<std::uint8_t>(low < 0 ? high : high * 16 + low);
}

}  // namespace kolvane::inspect
