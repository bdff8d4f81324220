#include "app/option_values.h"

#include <strings.h>

#include <cstdint>

namespace kolvane::app {
namespace {

template <typename Value>
struct Word {
  const char* word;
  Value value;
};

template <typename Value, std::size_t size>
std::optional<Value> Find(const Word<Value> (&words)[size], std::string_view text) {
  for (const Word<Value>& word : words) {
    if (strcasecmp(word.word, std::string(text).c_str()) == 0) return word.value;
  }
  return std::nullopt;
}

constexpr Word<const char*> kTerminators[] = {{"LF", "\n"}, {"CR", "\r"}, {"CRLF", "\r\n"}, {"NONE", ""}};

constexpr Word<SerialParity> kParities[] = {
    {"none", SerialParity::kNone}, {"even", SerialParity::kEven}, {"odd", SerialParity::kOdd}};

constexpr Word<AnswerEnd> kReceiveModes[] = {
    {"terminator", AnswerEnd::kTerminator}, {"auto", AnswerEnd::kGap}, {"count", AnswerEnd::kCount}};

}  // namespace

std::optional<std::string> TerminatorValue(std::string_view text) {
  if (const auto word = Find(kTerminators, text)) return *word;
  const auto code = NumberValue<std::int32_t>(text, 0, 255);
  return code ? std::optional(std::string(1, static_cast<char>(*code))) : std::nullopt;
}

std::optional<SerialParity> ParityValue(std::string_view text) { return Find(kParities, text); }

std::optional<AnswerEnd> ReceiveModeValue(std::string_view text) { return Find(kReceiveModes, text); }

}  // namespace kolvane::app
