#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kolvane::base {

/// Windows-1252 to UTF-8. Never fails: 81 8D 8F 90 9D, undefined in the code page, become U+0081 and so on.
std::string FromWindows1252(std::string_view bytes);

/// UTF-8 to Windows-1252, the inverse of FromWindows1252. Characters outside the code page, and malformed
/// UTF-8, become '?'.
std::string ToWindows1252(std::string_view text);

/// Decodes a device's UTF-8; each byte that is not part of a character counts as Windows-1252.
std::string FromUtf8OrWindows1252(std::string_view bytes);

/// Decodes bytes of a device, as UTF-8 or Windows-1252.
inline std::string FromDevice(std::string_view bytes, bool utf8) {
  return utf8 ? FromUtf8OrWindows1252(bytes) : FromWindows1252(bytes);
}

/// Byte position of the first character for which ToWindows1252 would substitute a '?'; nothing if there is
/// none.
std::optional<std::size_t> FirstOutsideWindows1252(std::string_view text);
/// That character itself; empty if there is none.
std::string_view OutsideWindows1252(std::string_view text);
/// The first character that a device in UTF-8 or Windows-1252 cannot be sent; empty if there is none.
inline std::string_view UnsendableCharacter(std::string_view text, bool utf8) {
  return utf8 ? std::string_view() : OutsideWindows1252(text);
}

// UTF-8 is what RFC 3629 defines: no overlong form, no surrogates, nothing past U+10FFFF.

/// Byte order mark that a UTF-8 file may start with.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// Whether this is a continuation byte, which does not start a character.
constexpr bool IsUtf8Continuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// Number of bytes, 1 to 4, of the character that starts with `lead` in well-formed text.
constexpr std::size_t Utf8Length(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  return byte < 0x80 ? 1 : byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
}

/// Number of bytes, 0 to 3, at the end of `text` that start a character but do not complete it.
std::size_t UnfinishedUtf8(std::string_view text);

/// A code point and its length in bytes.
struct CodePoint {
  char32_t value;
  std::size_t length;
};
/// Stands for a malformed sequence instead of a code point.
inline constexpr char32_t kMalformed = 0xFFFFFFFF;

/// Decodes the character at `at`, a position within `text`. For malformed bytes: kMalformed, with the number
/// of bytes, at least one, that could belong to one character.
CodePoint DecodeUtf8(std::string_view text, std::size_t at);

/// Appends a code point, at most U+10FFFF.
void AppendUtf8(std::string& out, char32_t point);

/// The longest start of `text` of at most `bytes` bytes that ends with a whole character.
std::string_view Utf8Prefix(std::string_view text, std::size_t bytes);

/// Whether `text` is well-formed.
bool IsUtf8(std::string_view text);

/// The bytes in Base64 (RFC 4648), padded with "=".
std::string Base64(std::string_view bytes);

/// Decodes Base64; nothing if `text` is not valid.
std::optional<std::string> FromBase64(std::string_view text);

/// Whether every byte is below 128, so that its encoding does not matter.
bool IsAscii(std::string_view text);

/// Converts UTF-8 to the 8-bit text of the C interface: one byte per character, '?' for characters above
/// U+00FF and for malformed UTF-8.
std::string EightBitText(std::string_view utf8);

}  // namespace kolvane::base
