#include "base/codepage.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "base/utf8.h"

namespace kolvane::base {
namespace {

// 80 to 9F; every other byte is the code point of the same number.
constexpr std::array<char16_t, 32> kHigh = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ByteOf(char32_t point) {
  if (point < 0x80 || (point >= 0xA0 && point <= 0xFF)) return static_cast<char>(point);
  for (std::size_t i = 0; i < kHigh.size(); ++i) {
    if (kHigh[i] == point) return static_cast<char>(0x80 + i);
  }
  return '?';
}

struct Decoded {
  char32_t point;
  std::size_t length;
};

constexpr char32_t kMalformed = 0xFFFFFFFF;

// Longer than need be, half of a pair, or past the last code point.
bool IsForbidden(char32_t point, std::size_t length) {
  return (length == 3 && point < 0x800) || (length == 4 && point < 0x10000) ||
         (point >= 0xD800 && point <= 0xDFFF) || point > 0x10FFFF;
}

Decoded DecodeUtf8(std::string_view text, std::size_t at) {
  const auto lead = static_cast<std::uint8_t>(text[at]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return {kMalformed, 1};
  char32_t point = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (!IsUtf8Continuation(text[at + i])) return {kMalformed, i};
    point = (point << 6) | (static_cast<std::uint8_t>(text[at + i]) & 0x3F);
  }
  return {IsForbidden(point, length) ? kMalformed : point, length};
}

}  // namespace

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

bool IsUtf8(std::string_view text) {
  if (IsAscii(text)) return true;
  for (std::size_t at = 0; at < text.size();) {
    const Decoded next = DecodeUtf8(text, at);
    if (next.point == kMalformed) return false;
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

std::string FromWindows1252(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 2);
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    AppendUtf8(out, byte >= 0x80 && byte < 0xA0 ? kHigh[byte - 0x80u] : byte);
  }
  return out;
}

std::string ToWindows1252(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const Decoded next = DecodeUtf8(text, at);
    out += ByteOf(next.point);
    at += next.length;
  }
  return out;
}

}  // namespace kolvane::base
