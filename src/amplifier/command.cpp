#include "amplifier/command.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace kolvane::amplifier {
namespace {

constexpr int kSignificantDigits = 6;
constexpr int kMostDecimals = 8;
constexpr double kLeastPlain = 1e-6;

template <typename... Form>
void AppendNumber(std::string& answer, Form... form) {
  char text[64];
  const auto [end, error] = std::to_chars(text, text + sizeof(text), form...);
  AppendField(answer,
              std::string_view(text, error == std::errc() ? static_cast<std::size_t>(end - text) : 0));
}

}  // namespace

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

// Adding 0 turns a negative zero into a plain one.
void AppendField(std::string& answer, double value) {
  const bool tiny = value != 0 && std::abs(value) < kLeastPlain;
  AppendNumber(answer, value + 0.0, tiny ? std::chars_format::scientific : std::chars_format::fixed);
}

// What would show as "-0.00" is shown as zero.
void AppendFixed(std::string& answer, double value, int decimals) {
  const bool vanishes = std::abs(value) < std::pow(10.0, -decimals) / 2;
  AppendNumber(answer, vanishes ? 0.0 : value, std::chars_format::fixed, decimals);
}

void AppendMeasured(std::string& answer, double value, double range) {
  const int whole_digits = static_cast<int>(std::floor(std::log10(range))) + 1;
  AppendFixed(answer, value, std::clamp(kSignificantDigits - whole_digits, 0, kMostDecimals));
}

}  // namespace kolvane::amplifier
