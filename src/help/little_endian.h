#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kolvane::help {

/// The 32-bit number at `place`, low byte first; all four bytes lie within `bytes`.
inline std::uint32_t NumberAt(std::string_view bytes, std::size_t place) {
  std::uint32_t number = 0;
  for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
  return number;
}

}  // namespace kolvane::help
