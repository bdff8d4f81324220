#include "base/number.h"

#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <limits>

#include "base/runtime_error.h"
#include "base/text.h"

namespace kolvane::base {
namespace {

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// The characters of a number without spaces, and how much of the source they took.
struct Scan {
  std::string digits;
  std::size_t taken = 0;
};

enum class DecimalSigns { kPoint, kPointAndComma };
enum class InnerSpaces { kSkipped, kEndNumber };

class Scanner {
 public:
  Scanner(std::string_view text, DecimalSigns signs, InnerSpaces spaces)
      : text_(text), signs_(signs), spaces_(spaces) {}

  Scan Run() {
    SkipSpaces();
    if (Peek() == '-' || Peek() == '+') Sign();
    const std::size_t whole = Digits();
    std::size_t fraction = 0;
    if (Peek() == '.' || (signs_ == DecimalSigns::kPointAndComma && Peek() == ',')) {
      ++at_;
      scan_.digits += '.';
      fraction = Digits();
    }
    if (whole + fraction == 0) return {};
    scan_.taken = at_;
    Exponent();
    return scan_;
  }

 private:
  char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }

  void SkipSpaces() {
    while (at_ < text_.size() && IsSpace(text_[at_])) ++at_;
  }

  void SkipInnerSpaces() {
    if (spaces_ == InnerSpaces::kSkipped) SkipSpaces();
  }

  void Sign() {
    if (Peek() == '-') scan_.digits += '-';
    ++at_;
    SkipInnerSpaces();
  }

  std::size_t Digits() {
    std::size_t count = 0;
    for (SkipInnerSpaces(); IsDigit(Peek()); SkipInnerSpaces(), ++count) scan_.digits += text_[at_++];
    return count;
  }

  void Exponent() {
    if ((Peek() | 0x20) != 'e' && (Peek() | 0x20) != 'd') return;
    const std::string mantissa = scan_.digits;
    scan_.digits += 'e';
    ++at_;
    if (Peek() == '-' || Peek() == '+') Sign();
    if (Digits() == 0) {
      scan_.digits = mantissa;
    } else {
      scan_.taken = at_;
    }
  }

  std::string_view text_;
  DecimalSigns signs_;
  InnerSpaces spaces_;
  std::size_t at_ = 0;
  Scan scan_;
};

// For a number outside a double's range: whether it is too close to 0, not too large.
bool IsTiny(std::string_view digits) {
  const std::string_view mantissa = digits.substr(0, digits.find('e'));
  const std::string_view exponent = digits.substr(std::min(mantissa.size() + 1, digits.size()));
  const auto point = static_cast<std::ptrdiff_t>(std::min(mantissa.find('.'), mantissa.size()));
  const auto first = static_cast<std::ptrdiff_t>(mantissa.find_first_of("123456789"));
  std::ptrdiff_t scale = 0;
  const auto result = std::from_chars(exponent.data(), exponent.data() + exponent.size(), scale);
  if (result.ec == std::errc::result_out_of_range) return exponent.starts_with('-');
  return scale < first - point;
}

double ValueOf(const Scan& scan) {
  double value = 0;
  const char* end = scan.digits.data() + scan.digits.size();
  const auto result = std::from_chars(scan.digits.data(), end, value);
  if (result.ec == std::errc::result_out_of_range)
    value = IsTiny(scan.digits) ? 0 : scan.digits.front() == '-' ? -HUGE_VAL : HUGE_VAL;
  return value;
}

std::optional<double> HexPrefix(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && IsSpace(text[at])) ++at;
  if (at + 1 >= text.size() || text[at] != '&' || (text[at + 1] | 0x20) != 'h') return std::nullopt;
  std::uint32_t value = 0;
  const char* first = text.data() + at + 2;
  const auto result = std::from_chars(first, text.data() + text.size(), value, 16);
  if (result.ec != std::errc()) return 0.0;
  // Up to four digits are a 16-bit pattern, up to eight a 32-bit one, so that &HFFFF is -1.
  if (result.ptr - first <= 4) return static_cast<std::int16_t>(value);
  return static_cast<std::int32_t>(value);
}

double Leading(std::string_view text, DecimalSigns signs) {
  if (const auto hex = HexPrefix(text)) return *hex;
  return ValueOf(Scanner(text, signs, InnerSpaces::kSkipped).Run());
}

template <typename Int>
std::optional<Int> Fit(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max()))
    return std::nullopt;
  return static_cast<Int>(rounded);
}

template <typename Int>
Int RoundTo(double value) {
  const auto rounded = Fit<Int>(value);
  if (!rounded) throw RuntimeError(RuntimeError::Kind::kOverflow);
  return *rounded;
}

double TextValue(std::string_view text) {
  const auto value = WholeTextNumber(text);
  if (!value) throw RuntimeError(RuntimeError::Kind::kTypeMismatch);
  return *value;
}

std::string General(double value, int digits, std::string_view decimal_sign) {
  char buffer[40];
  const int length = std::snprintf(buffer, sizeof buffer, "%.*G", digits, value);
  std::string text(buffer, static_cast<std::size_t>(length));
  // snprintf writes the decimal sign of the process's locale, which the host may have set.
  const std::size_t sign = text.find_first_not_of("-+0123456789EINFAN");
  if (sign != std::string::npos) {
    const std::size_t end = text.find_first_of("0123456789", sign);
    text.replace(sign, end - sign, decimal_sign);
  }
  return text;
}

}  // namespace

double LeadingNumber(std::string_view text) { return Leading(text, DecimalSigns::kPoint); }

double LeadingTypedNumber(std::string_view text) { return Leading(text, DecimalSigns::kPointAndComma); }

std::optional<double> WholeTextNumber(std::string_view text) {
  const Scan scan = Scanner(text, DecimalSigns::kPointAndComma, InnerSpaces::kEndNumber).Run();
  if (scan.taken == 0) return std::nullopt;
  for (const char c : text.substr(scan.taken)) {
    if (!IsSpace(c)) return std::nullopt;
  }
  return ValueOf(scan);
}

std::optional<std::int16_t> FitInt16(double value) { return Fit<std::int16_t>(value); }

std::optional<std::int32_t> FitInt32(double value) { return Fit<std::int32_t>(value); }

std::int16_t RoundToInt16(double value) { return RoundTo<std::int16_t>(value); }

std::int32_t RoundToInt32(double value) { return RoundTo<std::int32_t>(value); }

std::int16_t TextToInt16(std::string_view text) { return RoundToInt16(TextValue(text)); }

std::int32_t TextToInt32(std::string_view text) { return RoundToInt32(TextValue(text)); }

std::string SingleText(float value, std::string_view decimal_sign) {
  return General(static_cast<double>(value), 7, decimal_sign);
}

std::string DoubleText(double value, std::string_view decimal_sign) {
  return General(value, 15, decimal_sign);
}

std::string ShortText(double value, std::string_view decimal_sign) {
  constexpr double kWithoutFraction = 999.5;
  if (std::abs(value) < kWithoutFraction) return General(value, 3, decimal_sign);
  return General(std::round(value), 15, decimal_sign);
}

std::string SystemDecimalSign() {
  const locale_t user = newlocale(LC_NUMERIC_MASK, "", nullptr);
  if (user == nullptr) return ".";
  std::string sign = nl_langinfo_l(RADIXCHAR, user);
  freelocale(user);
  return sign.empty() ? "." : sign;
}

}  // namespace kolvane::base
