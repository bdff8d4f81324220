#include "devlnk/eight_bit.h"

#include <algorithm>

#include "base/utf8.h"

namespace kolvane::devlnk {
namespace {

// The character at the start of `text`, which is not ASCII and takes `size` bytes.
char CharacterOf(std::string_view text, std::size_t size) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (size != 2 || lead < 0xC2 || lead > 0xC3) return '?';
  return static_cast<char>(((lead & 0x03U) << 6U) | (static_cast<unsigned char>(text[1]) & 0x3FU));
}

}  // namespace

std::string EightBitText(std::string_view utf8) {
  std::string text;
  while (!utf8.empty()) {
    const bool ascii = static_cast<unsigned char>(utf8[0]) < 0x80;
    const auto* next = std::find_if_not(utf8.begin() + 1, utf8.end(), base::IsUtf8Continuation);
    const std::size_t size = ascii ? 1 : static_cast<std::size_t>(next - utf8.begin());
    text += ascii ? utf8[0] : CharacterOf(utf8, size);
    utf8.remove_prefix(size);
  }
  return text;
}

}  // namespace kolvane::devlnk
