#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kolvane::base {

/// These ignore case, for the letters of Windows-1252 (umlauts included), on UTF-8 texts.
bool EqualsNoCase(std::string_view a, std::string_view b);
bool ContainsNoCase(std::string_view text, std::string_view part);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);
std::string UpperCase(std::string_view text);

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
/// Whether the byte is below 32, or 127.
constexpr bool IsAsciiControl(char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }
constexpr bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
/// Capitals for a to z; every other character is unchanged.
constexpr char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// `text` without trailing spaces; fast even for thousands of them.
std::string_view TrimSpacesRight(std::string_view text);

/// `text` without the spaces (character 32 only) at both ends.
inline std::string_view TrimSpaces(std::string_view text) {
  if (text.ends_with(' ')) text = TrimSpacesRight(text);
  while (text.starts_with(' ')) text.remove_prefix(1);
  return text;
}

/// `text` without the spaces, tabs, CR and LF at both ends.
std::string_view TrimWhiteSpace(std::string_view text);

/// Whether an instrument's command has a "?" outside "..." and '...'.
bool IsQuery(std::string_view command);

/// Removes the first line from `bytes`, which must not be empty, and returns it without its end: CR LF, LF or
/// CR.
std::string_view TakeLine(std::string_view& bytes);
/// All lines of `bytes`; a line end at the very end does not start another line.
std::vector<std::string> LinesOf(std::string_view bytes);

/// `text` with `prefix` before each of its lines, the one after a LF at the very end included.
std::string WithLinePrefix(std::string_view text, std::string_view prefix);

/// Passes the comma-separated fields of `text` to `use` one by one while it returns true; an empty text is
/// one empty field. Returns whether `use` returned true for all of them.
template <typename Use>
bool ForEachField(std::string_view text, Use use) {
  for (std::size_t comma; (comma = text.find(',')) != std::string_view::npos; text.remove_prefix(comma + 1)) {
    if (!use(text.substr(0, comma))) return false;
  }
  return use(text);
}

}  // namespace kolvane::base
