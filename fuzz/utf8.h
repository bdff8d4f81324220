#pragma once

#include <cstdint>
#include <string_view>

namespace kolvane::fuzz {

/// Whether `text` is well-formed UTF-8: no stray or missing bytes, no overlong form, no surrogate, nothing
/// past U+10FFFF.
inline bool IsUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const auto lead = static_cast<std::uint8_t>(text[at]);
    const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if ((lead >= 0x80 && lead < 0xC2) || lead > 0xF4 || at + size > text.size()) return false;
    char32_t point = size == 1 ? lead : lead & (0x7Fu >> size);
    for (std::size_t i = 1; i < size; ++i) {
      const auto next = static_cast<std::uint8_t>(text[at + i]);
      if ((next & 0xC0) != 0x80) return false;
      point = (point << 6) | (next & 0x3Fu);
    }
    const bool overlong = (size == 3 && point < 0x800) || (size == 4 && point < 0x10000);
    if (overlong || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) return false;
    at += size;
  }
  return true;
}

/// The number of characters in well-formed `text`.
inline std::size_t Characters(std::string_view text) {
  std::size_t count = 0;
  for (const char c : text) count += (static_cast<std::uint8_t>(c) & 0xC0) != 0x80;
  return count;
}

}  // namespace kolvane::fuzz
