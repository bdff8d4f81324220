#include "base/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace kolvane::base {
namespace {

// In UTF-8 the Latin-1 letters à to þ are C3 A0 to C3 BE, their capitals 32 below; š, œ and ž are elsewhere.
// ÿ (C3 BF) is not among them: its capital Ÿ (C5 B8) differs in both bytes.
char Upper(char previous, char c) {
  if (const char upper = UpperAscii(c); upper != c) return upper;
  const auto byte = static_cast<unsigned char>(c);
  if (previous == '\xC3' && byte >= 0xA0 && byte <= 0xBE && byte != 0xB7) return static_cast<char>(byte - 32);
  if (previous == '\xC5' && (byte == 0xA1 || byte == 0x93 || byte == 0xBE))
    return static_cast<char>(byte - 1);
  return c;
}

// Converts a block to upper case if all of it is ASCII; false, unchanged, if not. The compiler vectorizes a
// loop of this size.
constexpr std::size_t kAsciiBlock = 64;

bool UpperCaseAscii(char* bytes) {
  unsigned others = 0;
  for (std::size_t i = 0; i < kAsciiBlock; ++i) others |= static_cast<unsigned char>(bytes[i]);
  if (others >= 0x80) return false;
  for (std::size_t i = 0; i < kAsciiBlock; ++i) {
    const bool small = bytes[i] >= 'a' && bytes[i] <= 'z';
    bytes[i] = static_cast<char>(bytes[i] - (small ? 32 : 0));
  }
  return true;
}

// A size that the compiler vectorizes without a call.
constexpr std::size_t kBlock = 256;
constexpr std::uint64_t kEightSpaces = 0x2020202020202020;

template <std::size_t size>
bool EndsInSpaces(std::string_view text) {
  if (text.size() < size) return false;
  std::uint64_t others = 0;
  for (std::size_t at = text.size() - size; at < text.size(); at += sizeof others) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data() + at, sizeof eight);
    others |= eight ^ kEightSpaces;
  }
  return others == 0;
}

}  // namespace

std::string UpperCase(std::string_view text) {
  std::string out(text);
  char previous = '\0';
  for (std::size_t at = 0; at < out.size();) {
    const std::size_t end = std::min(at + kAsciiBlock, out.size());
    if (end - at == kAsciiBlock && UpperCaseAscii(out.data() + at)) {
      at = end;
      previous = '\0';
    }
    for (; at < end; ++at) {
      const char c = out[at];
      out[at] = Upper(previous, c);
      if (previous == '\xC3' && c == '\xBF') out.replace(at - 1, 2, "Ÿ");
      previous = c;
    }
  }
  return out;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a == b || UpperCase(a) == UpperCase(b));
}

bool ContainsNoCase(std::string_view text, std::string_view part) {
  return UpperCase(text).find(UpperCase(part)) != std::string::npos;
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
  return EqualsNoCase(text.substr(0, prefix.size()), prefix);
}

[[gnu::hot]] std::string_view TrimSpacesRight(std::string_view text) {
  if (!text.ends_with(' ')) return text;
  while (EndsInSpaces<kBlock>(text)) text.remove_suffix(kBlock);
  while (EndsInSpaces<sizeof kEightSpaces>(text)) text.remove_suffix(sizeof kEightSpaces);
  const std::size_t last = text.find_last_not_of(' ');
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

std::string_view TrimWhiteSpace(std::string_view text) {
  constexpr std::string_view kWhiteSpace = " \t\r\n";
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  return text.substr(0, text.find_last_not_of(kWhiteSpace) + 1);
}

bool IsQuery(std::string_view command) {
  char quote = 0;
  for (const char c : command) {
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '?') {
      return true;
    }
  }
  return false;
}

std::string_view TakeLine(std::string_view& bytes) {
  constexpr std::string_view kLineEnd = "\r\n";
  const std::size_t end = std::min(bytes.find_first_of(kLineEnd), bytes.size());
  const std::string_view line = bytes.substr(0, end);
  bytes.remove_prefix(end);
  bytes.remove_prefix(bytes.substr(0, 2) == kLineEnd ? 2 : bytes.empty() ? 0 : 1);
  return line;
}

std::vector<std::string> LinesOf(std::string_view bytes) {
  std::vector<std::string> lines;
  while (!bytes.empty()) lines.emplace_back(TakeLine(bytes));
  return lines;
}

std::string WithLinePrefix(std::string_view text, std::string_view prefix) {
  std::string lines(prefix);
  for (std::size_t at; (at = text.find('\n')) != std::string_view::npos; text.remove_prefix(at + 1))
    lines.append(text.substr(0, at + 1)).append(prefix);
  return lines.append(text);
}

}  // namespace kolvane::base
