#include "component/ini_value.h"

#include <charconv>
#include <cstdint>

#include "base/encoding.h"

namespace kolvane::component {
namespace {

// Letters after a backslash, and their meanings.
constexpr std::string_view kLetters = "abfnrtv\"?'\\";
constexpr std::string_view kMeanings = "\a\b\f\n\r\t\v\"?'\\";
constexpr std::string_view kWithLetter = "\a\b\f\n\r\t\v\"\\";

// Prefixes of a text with a NUL, and of those that other programs store.
constexpr std::string_view kStringMark = "@String(";
constexpr std::string_view kBytesMark = "@ByteArray(";

constexpr std::size_t kShown = 80;

bool IsSpace(char c) { return c == ' ' || c == '\t'; }
bool IsOctal(char c) { return c >= '0' && c <= '7'; }
bool IsHex(char c) { return (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'f'); }
bool IsControl(char c) { return static_cast<std::uint8_t>(c) < 0x20; }

std::string HexEscape(char c) {
  char digits[2];
  const auto end = std::to_chars(digits, digits + 2, static_cast<std::uint8_t>(c), 16).ptr;
  return "\\x" + std::string(digits, end);
}

// A digit after a numeric escape would be read as part of it, so it is escaped too.
class Encoder {
 public:
  std::string Run(std::string_view text) {
    for (const char c : text) Add(c);
    return std::move(out_);
  }

 private:
  void Add(char c) {
    const bool numeric = (after_numeric_ && IsHex(c)) || (IsControl(c) && kWithLetter.find(c) == kNone);
    if (c == '\0') {
      out_ += "\\0";
    } else if (numeric) {
      out_ += HexEscape(c);
    } else if (kWithLetter.find(c) != kNone) {
      out_ += {'\\', kLetters[kMeanings.find(c)]};
    } else {
      out_ += c;
    }
    after_numeric_ = numeric;
  }

  static constexpr std::size_t kNone = std::string_view::npos;
  std::string out_;
  bool after_numeric_ = false;
};

bool NeedsQuotes(const std::string& encoded) {
  return encoded.find_first_of(";,=") != std::string::npos ||
         (!encoded.empty() && (encoded.front() == ' ' || encoded.back() == ' '));
}

class Decoder {
 public:
  explicit Decoder(std::string_view value) : value_(value) {}

  std::string Run() {
    SkipSpaces();
    while (!AtEnd() && (quoted_ || Peek() != ';')) Step(value_[at_++]);
    if (!had_quotes_) StripSpaces();
    return std::move(out_);
  }

 private:
  bool AtEnd() const { return at_ == value_.size(); }
  char Peek() const { return AtEnd() ? '\n' : value_[at_]; }

  void SkipSpaces() {
    while (IsSpace(Peek())) ++at_;
  }

  // Drops unescaped trailing spaces.
  void StripSpaces() {
    while (out_.size() > escaped_to_ && IsSpace(out_.back())) out_.pop_back();
  }

  void Step(char c) {
    if (c == '"') {
      quoted_ = !quoted_;
      had_quotes_ = true;
      if (!quoted_) SkipSpaces();
    } else if (c == '\\') {
      Escape();
      escaped_to_ = out_.size();
    } else {
      out_ += c;
    }
  }

  void Escape() {
    if (IsOctal(Peek())) return Number(8, &IsOctal);
    if (AtEnd()) return;
    const char c = value_[at_++];
    const std::size_t letter = kLetters.find(c);
    if (letter != std::string_view::npos) out_ += kMeanings[letter];
    if (c == 'x' && IsHex(Peek())) Number(16, &IsHex);
    // An unknown escape is skipped with all bytes of its character.
    while (base::IsUtf8Continuation(Peek())) ++at_;
  }

  void Number(unsigned base, bool (*is_digit)(char)) {
    std::uint16_t point = 0;
    for (; is_digit(Peek()); ++at_) {
      const char c = value_[at_];
      const int digit = c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
      point = static_cast<std::uint16_t>(point * base + static_cast<unsigned>(digit));
    }
    constexpr std::uint16_t kReplacement = 0xFFFD;
    base::AppendUtf8(out_, (point & 0xF800) == 0xD800 ? kReplacement : point);
  }

  std::string_view value_;
  std::size_t at_ = 0;
  std::string out_;
  std::size_t escaped_to_ = 0;
  bool quoted_ = false;
  bool had_quotes_ = false;
};

bool Unwrap(std::string& text, std::string_view mark) {
  if (!text.starts_with(mark) || !text.ends_with(')')) return false;
  text = text.substr(mark.size(), text.size() - mark.size() - 1);
  return true;
}

std::string WithMark(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return std::string(kStringMark).append(text) + ")";
  return (text.starts_with('@') ? "@" : "") + std::string(text);
}

}  // namespace

std::string EncodeIniValue(std::string_view text) {
  const std::string encoded = Encoder().Run(WithMark(text));
  return NeedsQuotes(encoded) ? '"' + encoded + '"' : encoded;
}

std::string DecodeIniValue(std::string_view value) {
  std::string text = base::IsUtf8(value) ? Decoder(value).Run() : Decoder(base::FromWindows1252(value)).Run();
  if (Unwrap(text, kStringMark) || Unwrap(text, kBytesMark)) return text;
  if (text.starts_with("@@")) text.erase(0, 1);
  return text;
}

std::string ShownIniValue(std::string_view text) {
  std::string shown;
  std::size_t characters = 0;
  for (const char c : text) {
    if (!base::IsUtf8Continuation(c) && ++characters > kShown) return shown + "…";
    shown += IsControl(c) ? Encoder().Run({&c, 1}) : std::string(1, c);
  }
  return shown;
}

}  // namespace kolvane::component
