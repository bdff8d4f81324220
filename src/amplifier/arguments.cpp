#include "amplifier/arguments.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "amplifier/state.h"
#include "base/text.h"

namespace kolvane::amplifier {
namespace {

constexpr double kMaxMagnitude = 1e9;

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

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

}  // namespace

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, Upper, Upper);
}

std::optional<std::int64_t> ParseInteger(std::string_view text, std::int64_t least, std::int64_t most) {
  const auto value = ParseWhole<std::int64_t>(text);
  if (!value || *value < least || *value > most) return std::nullopt;
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
  const auto first = ParseInteger(base::TrimBlanks(text.substr(0, dash)), 1, kLast);
  if (!first) return std::nullopt;
  auto last = first;
  if (dash != std::string_view::npos)
    last = ParseInteger(base::TrimBlanks(text.substr(dash + 1)), *first, kLast);
  if (!last) return std::nullopt;
  return ChannelRange{static_cast<std::size_t>(*first - 1), static_cast<std::size_t>(*last - *first + 1)};
}

Arguments::Arguments(std::string_view text) : whole_(text) {
  if (base::TrimBlanks(text).empty()) return;
  for (;;) {
    const std::size_t comma = text.find(',');
    if (size_ < kMax) fields_[size_] = base::TrimBlanks(text.substr(0, comma));
    ++size_;
    if (comma == std::string_view::npos || size_ > kMax) return;
    text.remove_prefix(comma + 1);
  }
}

}  // namespace kolvane::amplifier
