#include "help/rtf_tokens.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "base/text.h"

namespace kolvane::help {
namespace {

using Kind = RtfToken::Kind;

bool IsControlByte(char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t'; }
bool IsPlain(char c) { return c != '\\' && c != '{' && c != '}' && !IsControlByte(c); }

}  // namespace

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

// Numbers beyond 32 bits stay at the end of the range.
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
