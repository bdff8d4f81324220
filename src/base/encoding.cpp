#include "base/encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace kolvane::base {
namespace {

// 80 to 9F; every other byte is the code point of the same number.
constexpr std::array<char16_t, 32> kHigh = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::optional<char> ByteOf(char32_t point) {
  if (point < 0x80 || (point >= 0xA0 && point <= 0xFF)) return static_cast<char>(point);
  for (std::size_t i = 0; i < kHigh.size(); ++i) {
    if (kHigh[i] == point) return static_cast<char>(0x80 + i);
  }
  return std::nullopt;
}

}  // namespace

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
    const CodePoint next = DecodeUtf8(text, at);
    out += ByteOf(next.value).value_or('?');
    at += next.length;
  }
  return out;
}

[[gnu::hot]] std::optional<std::size_t> FirstOutsideWindows1252(std::string_view text) {
  if (IsAscii(text)) return std::nullopt;
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint next = DecodeUtf8(text, at);
    if (!ByteOf(next.value)) return at;
    at += next.length;
  }
  return std::nullopt;
}

[[gnu::hot]] std::string_view OutsideWindows1252(std::string_view text) {
  const auto at = FirstOutsideWindows1252(text);
  return at ? text.substr(*at, DecodeUtf8(text, *at).length) : std::string_view();
}

namespace {

// Overlong, a surrogate, or past the last code point.
bool IsForbidden(char32_t point, std::size_t length) {
  return (length == 3 && point < 0x800) || (length == 4 && point < 0x10000) ||
         (point >= 0xD800 && point <= 0xDFFF) || point > 0x10FFFF;
}

// Whether a character of several bytes can start with this one.
bool IsUtf8Lead(char c) {
  const auto byte = static_cast<std::uint8_t>(c);
  return byte >= 0xC2 && byte <= 0xF4;
}

}  // namespace

std::size_t UnfinishedUtf8(std::string_view text) {
  for (std::size_t back = 1; back <= std::min<std::size_t>(3, text.size()); ++back) {
    const char c = text[text.size() - back];
    if (!IsUtf8Continuation(c)) return IsUtf8Lead(c) && Utf8Length(c) > back ? back : 0;
  }
  return 0;
}

CodePoint DecodeUtf8(std::string_view text, std::size_t at) {
  const auto lead = static_cast<std::uint8_t>(text[at]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = Utf8Length(text[at]);
  if (!IsUtf8Lead(text[at]) || at + length > text.size()) return {kMalformed, 1};
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

namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string Base64(std::string_view bytes) {
  std::string out;
  out.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    const std::string_view three = bytes.substr(at, 3);
    unsigned bits = 0;
    for (std::size_t i = 0; i < 3; ++i)
      bits = bits << 8 | (i < three.size() ? static_cast<unsigned char>(three[i]) : 0u);
    for (std::size_t i = 0; i < 4; ++i) out += i <= three.size() ? kDigits[bits >> (18 - 6 * i) & 63] : '=';
  }
  return out;
}

std::optional<std::string> FromBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  text.remove_suffix(text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0);
  std::string bytes;
  unsigned bits = 0;
  int count = 0;
  for (const char c : text) {
    const std::size_t digit = kDigits.find(c);
    if (digit == std::string_view::npos) return std::nullopt;
    bits = bits << 6 | static_cast<unsigned>(digit);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xFF);
  }
  return bytes;
}

[[gnu::hot]] bool IsAscii(std::string_view text) {
  std::uint64_t seen = 0;
  const auto take_eight = [text, &seen](std::size_t at) {
    std::uint64_t word;
    std::memcpy(&word, text.data() + at, sizeof(word));
    seen |= word;
  };
  std::size_t i = 0;
  for (; i + sizeof(seen) <= text.size(); i += sizeof(seen)) take_eight(i);
  // Reading the last eight bytes, some of them twice, is faster than reading the rest one by one.
  if (i > 0) {
    take_eight(text.size() - sizeof(seen));
  } else {
    for (; i < text.size(); ++i) seen |= static_cast<std::uint8_t>(text[i]);
  }
  return (seen & 0x8080808080808080u) == 0;
}

namespace {

// Latin-1 of the non-ASCII character of `size` bytes at the start of `text`; '?' if there is none.
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
    const auto* next = std::find_if_not(utf8.begin() + 1, utf8.end(), IsUtf8Continuation);
    const std::size_t size = ascii ? 1 : static_cast<std::size_t>(next - utf8.begin());
    text += ascii ? utf8[0] : CharacterOf(utf8, size);
    utf8.remove_prefix(size);
  }
  return text;
}

std::string FromUtf8OrWindows1252(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string text;
  for (std::size_t at = 0; at < bytes.size();) {
    const CodePoint point = DecodeUtf8(bytes, at);
    const std::string_view piece = bytes.substr(at, point.length);
    text += point.value == kMalformed ? FromWindows1252(piece) : std::string(piece);
    at += point.length;
  }
  return text;
}

}  // namespace kolvane::base
