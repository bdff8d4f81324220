#include "terminal/terminators.h"

#include <cmath>

#include "base/codepage.h"
#include "base/number.h"
#include "base/runtime_error.h"

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

}  // namespace kolvane::terminal
