#include "base/utf8.h"

#include <cstdint>
#include <cstring>

namespace kolvane::base {
namespace {

// Longer than need be, half of a pair, or past the last code point.
bool IsForbidden(char32_t point, std::size_t length) {
  return (length == 3 && point < 0x800) || (length == 4 && point < 0x10000) ||
         (point >= 0xD800 && point <= 0xDFFF) || point > 0x10FFFF;
}

}  // namespace

CodePoint DecodeUtf8(std::string_view text, std::size_t at) {
  const auto lead = static_cast<std::uint8_t>(text[at]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = Utf8Length(text[at]);
  if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return {kMalformed, 1};
  char32_t point = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (!IsUtf8Continuation(text[at + i])) return {kMalformed, i};
    point = (point << 6) | (static_cast<std::uint8_t>(text[at + i]) & 0x3F);
  }
  return {IsForbidden(point, length) ? kMalformed : point, length};
}

void AppendUtf8(std::string& out, char32_t point) {
  if (point < 0x80) {
    out += static_cast<char>(point);
  } else if (point < 0x800) {
    out += static_cast<char>(0xC0 | (point >> 6));
    out += static_cast<char>(0x80 | (point & 0x3F));
  } else {
    if (point < 0x10000) {
      out += static_cast<char>(0xE0 | (point >> 12));
    } else {
      out += static_cast<char>(0xF0 | (point >> 18));
      out += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
    }
    out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (point & 0x3F));
  }
}

std::string_view Utf8Prefix(std::string_view text, std::size_t bytes) {
  if (bytes >= text.size()) return text;
  while (bytes > 0 && IsUtf8Continuation(text[bytes])) --bytes;
  return text.substr(0, bytes);
}

bool IsUtf8(std::string_view text) {
  if (IsAscii(text)) return true;
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint next = DecodeUtf8(text, at);
    if (next.value == kMalformed) return false;
    at += next.length;
  }
  return true;
}

bool IsAscii(std::string_view text) {
  std::uint64_t seen = 0;
  std::size_t i = 0;
  for (; i + sizeof(seen) <= text.size(); i += sizeof(seen)) {
    std::uint64_t word;
    std::memcpy(&word, text.data() + i, sizeof(word));
    seen |= word;
  }
  for (; i < text.size(); ++i) seen |= static_cast<std::uint8_t>(text[i]);
  return (seen & 0x8080808080808080u) == 0;
}

}  // namespace kolvane::base
