#include "help/rtf_tokens.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

#include "base/encoding.h"
#include "base/text.h"

namespace kolvane::help {
namespace {

using Kind = RtfToken::Kind;

bool IsControlByte(char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t'; }
bool IsPlain(char c) { return c != '\\' && c != '{' && c != '}' && !IsControlByte(c); }

}  // namespace

void RtfColorTable::Apply(RtfMeaning meaning, std::int32_t parameter) {
  if (meaning == RtfMeaning::kRed) SetComponent(0, parameter);
  if (meaning == RtfMeaning::kGreen) SetComponent(8, parameter);
  if (meaning == RtfMeaning::kBlue) SetComponent(16, parameter);
}

void RtfColorTable::SetComponent(unsigned shift, std::int32_t value) {
  const auto component = static_cast<std::uint32_t>(std::clamp(value, 0, 255));
  entry_ = (entry_.value_or(0) & ~(0xFFu << shift)) | component << shift;
}

void RtfColorTable::AddText(std::string_view text) {
  const auto ends = static_cast<std::size_t>(std::ranges::count(text, ';'));
  for (std::size_t i = 0; i < std::min(ends, kMaxEntries - colors_.size()); ++i)
    colors_.push_back(std::exchange(entry_, std::nullopt));
}

std::optional<std::uint32_t> RtfColorTable::At(std::int32_t index) const {
  const auto position = static_cast<std::size_t>(index);
  return index >= 0 && position < colors_.size() ? colors_[position] : std::nullopt;
}

namespace {

constexpr char32_t kNoCharacter = 0xFFFD;
constexpr char32_t kLastCharacter = 0x10FFFF;

bool IsFirstHalf(char32_t point) { return point >= 0xD800 && point < 0xDC00; }
bool IsSecondHalf(char32_t point) { return point >= 0xDC00 && point < 0xE000; }

char32_t PointOf(std::int32_t number) {
  if (number < 0) number += 0x10000;
  const auto point = static_cast<char32_t>(number);
  return number < 0 || point > kLastCharacter ? kNoCharacter : point;
}

std::string Utf8(char32_t point) {
  std::string text;
  base::AppendUtf8(text, point);
  return text;
}

}  // namespace

std::string RtfUnicode::Add(std::int32_t number) {
  const char32_t point = PointOf(number);
  if (first_half_ != 0 && IsSecondHalf(point))
    return Utf8(0x10000 + ((std::exchange(first_half_, 0) - 0xD800) << 10) + (point - 0xDC00));
  std::string text = Flush();
  if (IsFirstHalf(point)) {
    first_half_ = point;
  } else if (point >= 0x20) {
    text += Utf8(IsSecondHalf(point) ? kNoCharacter : point);
  }
  return text;
}

std::string RtfUnicode::Flush() {
  return std::exchange(first_half_, 0) != 0 ? Utf8(kNoCharacter) : std::string();
}

namespace {

using enum RtfMeaning;

constexpr RtfWord kWords[] = {
    {"annotation", kSkip},
    {"b", kBold},
    {"blue", kBlue},
    {"bullet", kInsert, "•"},
    {"cell", kInsert, "\t"},
    {"cf", kColor},
    {"colortbl", kColorTable},
    {"emdash", kInsert, "—"},
    {"endash", kInsert, "–"},
    {"filetbl", kSkip},
    {"fldinst", kSkip},
    {"fonttbl", kSkip},
    {"footer", kSkip},
    {"footerf", kSkip},
    {"footerl", kSkip},
    {"footerr", kSkip},
    {"footnote", kSkip},
    {"green", kGreen},
    {"header", kSkip},
    {"headerf", kSkip},
    {"headerl", kSkip},
    {"headerr", kSkip},
    {"info", kSkip},
    {"ldblquote", kInsert, "“"},
    {"line", kInsert, "\n"},
    {"listoverridetable", kSkip},
    {"listtable", kSkip},
    {"lquote", kInsert, "‘"},
    {"nonshppict", kSkip},
    {"object", kSkip},
    {"page", kParagraph},
    {"par", kParagraph},
    {"pict", kSkip},
    {"plain", kPlain},
    {"rdblquote", kInsert, "”"},
    {"red", kRed},
    {"revtbl", kSkip},
    {"row", kParagraph},
    {"rquote", kInsert, "’"},
    {"rsidtbl", kSkip},
    {"sect", kParagraph},
    {"stylesheet", kSkip},
    {"tab", kInsert, "\t"},
    {"tc", kSkip},
    {"u", kUnicode},
    {"uc", kFallbackLength},
    {"xe", kSkip},
};

// A line end after a backslash means \par.
constexpr RtfWord kSymbols[] = {
    {"\n", kParagraph},       {"\r", kParagraph},    {"*", kSkip},
    {"-", kInsert, "\u00AD"}, {"\\", kInsert, "\\"}, {"_", kInsert, "\u2011"},
    {"{", kInsert, "{"},      {"}", kInsert, "}"},   {"~", kInsert, "\u00A0"},
};

static_assert(std::ranges::is_sorted(kWords, {}, &RtfWord::name));

}  // namespace

RtfWord FindRtfWord(std::string_view name) {
  const auto found = std::ranges::lower_bound(kWords, name, {}, &RtfWord::name);
  return found != std::end(kWords) && found->name == name ? *found : RtfWord{name};
}

RtfWord FindRtfSymbol(std::string_view byte) {
  const auto found = std::ranges::find(kSymbols, byte, &RtfWord::name);
  return found != std::end(kSymbols) ? *found : RtfWord{byte};
}

RtfToken RtfTokens::Next() {
  SkipControlBytes();
  if (AtEnd()) return {};
  switch (bytes_[at_]) {
    case '{':
      return {.kind = Kind::kOpen, .text = bytes_.substr(at_++, 1)};
    case '}':
      return {.kind = Kind::kClose, .text = bytes_.substr(at_++, 1)};
    case '\\':
      ++at_;
      return Control();
    default:
      return Text();
  }
}

void RtfTokens::SkipControlBytes() {
  while (!AtEnd() && IsControlByte(bytes_[at_])) ++at_;
}

RtfToken RtfTokens::Text() {
  const std::size_t start = at_;
  while (!AtEnd() && IsPlain(bytes_[at_])) ++at_;
  return {.kind = Kind::kText, .text = bytes_.substr(start, at_ - start)};
}

RtfToken RtfTokens::Control() {
  if (AtEnd()) return Truncated();
  if (base::IsAsciiLetter(bytes_[at_])) return Word();
  if (bytes_[at_] == '\'') return Byte();
  return {.kind = Kind::kSymbol, .text = bytes_.substr(at_++, 1)};
}

RtfToken RtfTokens::Word() {
  const std::size_t start = at_;
  while (!AtEnd() && base::IsAsciiLetter(bytes_[at_])) ++at_;
  const std::string_view word = bytes_.substr(start, at_ - start);
  const std::optional<std::int32_t> parameter = Parameter();
  if (!AtEnd() && bytes_[at_] == ' ') ++at_;
  if (word == "bin") return Binary(parameter.value_or(0));
  return {.kind = Kind::kWord, .text = word, .parameter = parameter};
}

// Numbers beyond 32 bits are clamped.
std::optional<std::int32_t> RtfTokens::Parameter() {
  const bool negative = at_ + 1 < bytes_.size() && bytes_[at_] == '-' && base::IsDigit(bytes_[at_ + 1]);
  const std::size_t start = at_;
  if (negative) ++at_;
  while (!AtEnd() && base::IsDigit(bytes_[at_])) ++at_;
  if (at_ == start) return std::nullopt;
  std::int32_t value = 0;
  const auto result = std::from_chars(bytes_.data() + start, bytes_.data() + at_, value);
  if (result.ec == std::errc()) return value;
  using Limits = std::numeric_limits<std::int32_t>;
  return negative ? Limits::min() : Limits::max();
}

RtfToken RtfTokens::Byte() {
  ++at_;
  const std::string_view digits = bytes_.substr(at_, 2);
  std::uint8_t value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  const bool complete = result.ec == std::errc() && result.ptr == digits.data() + digits.size();
  if (digits.size() < 2 && (digits.empty() || complete)) return Truncated();
  if (!complete) return {.kind = Kind::kBadByte};
  at_ += digits.size();
  return {.kind = Kind::kByte, .text = digits, .parameter = value};
}

RtfToken RtfTokens::Binary(std::int32_t count) {
  const auto length = static_cast<std::size_t>(std::max(count, 0));
  if (length > bytes_.size() - at_) return Truncated();
  at_ += length;
  return {.kind = Kind::kBinary};
}

RtfToken RtfTokens::Truncated() {
  at_ = bytes_.size();
  return {.kind = Kind::kTruncated};
}

}  // namespace kolvane::help
