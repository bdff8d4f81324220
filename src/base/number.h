#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace kolvane::base {

/// The number at the start of `text` after spaces ("12.5 V" is 12.5, "2e3x" is 2000), 0 if there is none.
/// Spaces between digits are skipped; "&H" starts a hexadecimal whole number. Only a point is a decimal sign.
double LeadingNumber(std::string_view text);

/// Like LeadingNumber, for text that a user typed: a comma is a decimal sign too.
double LeadingTypedNumber(std::string_view text);

/// The whole of `text` as a number (spaces around it allowed, comma or point), or nothing.
std::optional<double> WholeTextNumber(std::string_view text);

/// Rounds half to even; nothing outside the type's range.
std::optional<std::int16_t> FitInt16(double value);
std::optional<std::int32_t> FitInt32(double value);

/// Rounds half to even; throws RuntimeError kOverflow outside the type's range.
std::int16_t RoundToInt16(double value);
std::int32_t RoundToInt32(double value);

/// WholeTextNumber, rounded; throws RuntimeError kTypeMismatch for a text that is not a number, kOverflow out
/// of range.
std::int16_t TextToInt16(std::string_view text);
std::int32_t TextToInt32(std::string_view text);

/// Parses digits, with a sign only if `smallest` is negative; nothing for any other text.
template <typename Number>
std::optional<Number> NumberValue(std::string_view text, Number smallest, Number largest, int base = 10) {
  Number value{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value, base);
  const bool whole =
      result.ec == std::errc() && result.ptr == end && (smallest < 0 || !text.starts_with('-'));
  return whole && value >= smallest && value <= largest ? std::optional(value) : std::nullopt;
}

/// Decimal text with at most 7 (single) or 15 (double) significant digits, "1,5E-07" outside the plain range;
/// `decimal_sign` separates whole part and fraction.
std::string SingleText(float value, std::string_view decimal_sign);
std::string DoubleText(double value, std::string_view decimal_sign);

/// Three significant digits, but always the complete whole part: "0,0285", "12,3", "1235".
std::string ShortText(double value, std::string_view decimal_sign);

/// The decimal sign of the user's locale (LC_ALL, LC_NUMERIC, LANG); the process's own locale is not changed.
std::string SystemDecimalSign();

}  // namespace kolvane::base
