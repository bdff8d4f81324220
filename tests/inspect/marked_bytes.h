#pragma once

#include <string>
#include <string_view>

#include "inspect/hex_dump.h"

namespace kolvane::inspect {

/// The bytes as the output pane shows them in binary display.
inline std::string Marked(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text += {'<', kDigits[byte >> 4], kDigits[byte & 15], '>'};
  }
  return text;
}

/// 00 01 02 ... FF 00 ...
inline std::string Ramp(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>(i & 255);
  return bytes;
}

inline std::string DumpOf(std::string_view bytes) { return BuildDump(Marked(bytes)); }

}  // namespace kolvane::inspect
