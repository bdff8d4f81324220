#include "amplifier/command.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "amplifier/state.h"
#include "base/text.h"

namespace kolvane::amplifier {
namespace {

constexpr double kMaxMagnitude = 1e9;

template <typename Number>
std::optional<Number> ParseWhole(std::string_view text) {
  if (text.starts_with("+-")) return std::nullopt;
  if (text.starts_with('+')) text.remove_prefix(1);
  Number value{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

constexpr int kSignificantDigits = 6;
constexpr int kMaxDecimals = 8;
constexpr double kMinPlain = 1e-6;

template <typename... Form>
void AppendNumber(std::string& answer, Form... form) {
  char text[64];
  const auto [end, error] = std::to_chars(text, text + sizeof(text), form...);
  AppendField(answer,
              std::string_view(text, error == std::errc() ? static_cast<std::size_t>(end - text) : 0));
}

}  // namespace

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, base::UpperAscii, base::UpperAscii);
}

std::optional<std::int64_t> ParseInteger(std::string_view text, std::int64_t minimum, std::int64_t maximum) {
  const auto value = ParseWhole<std::int64_t>(text);
  if (!value || *value < minimum || *value > maximum) return std::nullopt;
  return value;
}

std::optional<double> ParseNumber(std::string_view text) {
  const auto value = ParseWhole<double>(text);
  if (!value || !(std::abs(*value) <= kMaxMagnitude)) return std::nullopt;
  return value;
}

std::optional<std::size_t> ParseWord(std::string_view text, std::span<const std::string_view> words) {
  const auto found =
      std::ranges::find_if(words, [text](std::string_view word) { return EqualsNoCase(text, word); });
  if (found == words.end()) return std::nullopt;
  return static_cast<std::size_t>(found - words.begin());
}

std::optional<ChannelRange> ParseChannels(std::string_view text) {
  constexpr auto kLast = static_cast<std::int64_t>(kChannels);
  if (ParseInteger(text, 0, 0)) return ChannelRange{0, kChannels};
  const std::size_t dash = text.find('-');
  const auto first = ParseInteger(base::TrimSpaces(text.substr(0, dash)), 1, kLast);
  if (!first) return std::nullopt;
  auto last = first;
  if (dash != std::string_view::npos)
    last = ParseInteger(base::TrimSpaces(text.substr(dash + 1)), *first, kLast);
  if (!last) return std::nullopt;
  return ChannelRange{static_cast<std::size_t>(*first - 1), static_cast<std::size_t>(*last - *first + 1)};
}

Arguments::Arguments(std::string_view text) : whole_(text) {
  if (base::TrimSpaces(text).empty()) return;
  for (;;) {
    const std::size_t comma = text.find(',');
    if (size_ < kMax) fields_[size_] = base::TrimSpaces(text.substr(0, comma));
    ++size_;
    if (comma == std::string_view::npos || size_ > kMax) return;
    text.remove_prefix(comma + 1);
  }
}

Refusal Done(Reply& reply) {
  reply.bytes.assign(1, '0');
  return Refusal::kNone;
}

Refusal NoAnswer(Reply& reply) {
  reply.kind = Reply::Kind::kNone;
  return Refusal::kNone;
}

void AppendField(std::string& answer, std::string_view text) {
  if (!answer.empty()) answer += ',';
  answer += text;
}

void AppendField(std::string& answer, std::int64_t value) { AppendNumber(answer, value); }

// Adding 0 turns a negative zero into a positive one.
void AppendField(std::string& answer, double value) {
  const bool tiny = value != 0 && std::abs(value) < kMinPlain;
  AppendNumber(answer, value + 0.0, tiny ? std::chars_format::scientific : std::chars_format::fixed);
}

// A value that would be printed as "-0.00" is printed as zero.
void AppendFixed(std::string& answer, double value, int decimals) {
  const bool vanishes = std::abs(value) < std::pow(10.0, -decimals) / 2;
  AppendNumber(answer, vanishes ? 0.0 : value, std::chars_format::fixed, decimals);
}

void AppendMeasured(std::string& answer, double value, double range) {
  const int whole_digits = static_cast<int>(std::floor(std::log10(range))) + 1;
  AppendFixed(answer, value, std::clamp(kSignificantDigits - whole_digits, 0, kMaxDecimals));
}

}  // namespace kolvane::amplifier
