#include "base/codepage.h"

#include <array>
#include <cstdint>

#include "base/utf8.h"

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

std::optional<std::size_t> FirstOutsideWindows1252(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint next = DecodeUtf8(text, at);
    if (!ByteOf(next.value)) return at;
    at += next.length;
  }
  return std::nullopt;
}

std::string_view OutsideWindows1252(std::string_view text) {
  const auto at = FirstOutsideWindows1252(text);
  return at ? text.substr(*at, DecodeUtf8(text, *at).length) : std::string_view();
}

}  // namespace kolvane::base
