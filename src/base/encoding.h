#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kolvane::base {

/// Windows-1252 to UTF-8. Total: 81 8D 8F 90 9D, which the code page leaves open, become U+0081 and so on.
std::string FromWindows1252(std::string_view bytes);

/// UTF-8 to Windows-1252, the inverse of FromWindows1252; what the code page lacks, and malformed UTF-8,
/// becomes '?'.
std::string ToWindows1252(std::string_view text);

/// What a device sends that speaks UTF-8: each byte that is part of no character counts as Windows-1252.
std::string FromUtf8OrWindows1252(std::string_view bytes);

/// What a device sends, which speaks UTF-8 or not.
inline std::string FromDevice(std::string_view bytes, bool utf8) {
  return utf8 ? FromUtf8OrWindows1252(bytes) : FromWindows1252(bytes);
}

/// Where the first character of UTF-8 text stands for which ToWindows1252 would write a '?' of its own, in
/// bytes; nothing where there is none.
std::optional<std::size_t> FirstOutsideWindows1252(std::string_view text);
/// That character itself; empty where there is none.
std::string_view OutsideWindows1252(std::string_view text);

/// UTF-8 as RFC 3629 defines it: no form longer than need be, no half of a pair, nothing past U+10FFFF.

/// What may stand at the start of a file in UTF-8.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// Is this a continuation byte, which does not start a character?
constexpr bool IsUtf8Continuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// The bytes of the character that starts with `lead` in well-formed text, 1 to 4.
constexpr std::size_t Utf8Length(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  return byte < 0x80 ? 1 : byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
}

/// A code point and the bytes it takes.
struct CodePoint {
  char32_t value;
  std::size_t length;
};
/// In place of a code point where none begins.
inline constexpr char32_t kMalformed = 0xFFFFFFFF;

/// What begins at `at`, a place within `text`. kMalformed with the bytes, at least one, that continue it as
/// a character would.
CodePoint DecodeUtf8(std::string_view text, std::size_t at);

/// Appends a code point, at most U+10FFFF.
void AppendUtf8(std::string& out, char32_t point);

/// The start of `text`, at most `bytes` of it, that ends with a whole character.
std::string_view Utf8Prefix(std::string_view text, std::size_t bytes);

/// Whether `text` is well-formed.
bool IsUtf8(std::string_view text);

/// The bytes in Base64 (RFC 4648), with the "=" at the end.
std::string Base64(std::string_view bytes);

/// The other way; nothing for any other text.
std::optional<std::string> FromBase64(std::string_view text);

/// Whether every byte is below 128, so that all encodings here are the same.
bool IsAscii(std::string_view text);

}  // namespace kolvane::base

namespace kolvane::base {

/// The system's UTF-8 as the 8-bit text of the C interface: one byte a character, '?' for what is beyond and
/// for malformed UTF-8.
std::string EightBitText(std::string_view utf8);

}  // namespace kolvane::base
