#include "terminal/typed_fields.h"

#include <cmath>

#include "base/encoding.h"
#include "base/number.h"
#include "base/runtime_error.h"
#include "terminal/texts.h"

namespace kolvane::terminal {
namespace {

struct Word {
  std::string_view shown;
  std::string_view terminator;
};

constexpr std::array<Word, 4> kWords = {{
    {texts::kCrLf, kCrLf},
    {texts::kCr, "\r"},
    {texts::kLf, "\n"},
    {texts::kNoTerminator, ""},
}};

std::string CharacterOf(double code) {
  const double whole = std::nearbyint(code);
  if (!(whole >= 0 && whole <= 255)) throw base::RuntimeError(base::RuntimeError::Kind::kInvalidArgument);
  const char byte = static_cast<char>(static_cast<unsigned char>(whole));
  return base::FromWindows1252({&byte, 1});
}

}  // namespace

std::optional<std::string> ReceiveTerminator(std::string_view shown) {
  for (const Word& word : kWords) {
    if (word.shown == shown) return std::string(word.terminator);
  }
  if (const auto code = base::WholeTextNumber(shown)) return CharacterOf(*code);
  return std::nullopt;
}

std::string SendTerminator(std::string_view shown) {
  return ReceiveTerminator(shown).value_or(std::string(shown));
}

std::string TerminatorWord(std::string_view terminator) {
  for (const Word& word : kWords) {
    if (word.terminator == terminator) return std::string(word.shown);
  }
  return std::string(terminator);
}

namespace {

template <typename Convert>
auto InField(std::string_view label, Convert convert) {
  try {
    return convert();
  } catch (const base::RuntimeError& error) {
    throw base::RuntimeError(error.kind(), texts::InField(label, error.what()));
  }
}

std::string FaultOf(std::string_view text, const auto& convert) {
  try {
    convert(text);
  } catch (const base::RuntimeError& error) {
    return error.what();
  }
  return {};
}

}  // namespace

std::int32_t TypedTimeout(std::string_view text) {
  return InField(texts::kTimeoutLabel, [text] { return base::TextToInt32(text); });
}

std::size_t TypedCount(std::string_view text) {
  return InField(texts::kCountLabel, [text] {
    const std::int16_t typed = base::TextToInt16(text);
    const auto count = static_cast<std::size_t>(typed);
    if (typed < 0 || count > kCountedAnswerLimit)
      throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
    return count;
  });
}

std::string TimeoutFault(std::string_view text) { return FaultOf(text, TypedTimeout); }

std::string CountFault(std::string_view text) { return FaultOf(text, TypedCount); }

}  // namespace kolvane::terminal
