#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "app/options.h"
#include "kolvane/CommandRun.h"

/// The values that options take; nothing for a text that is none.
namespace kolvane::app {

/// Digits, with a sign in front where `smallest` is negative.
template <typename Number>
std::optional<Number> NumberValue(std::string_view text, Number smallest, Number largest, int base = 10) {
  Number value{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value, base);
  const bool whole = result.ec == std::errc() && result.ptr == end;
  return whole && value >= smallest && value <= largest ? std::optional(value) : std::nullopt;
}

/// LF, CR, CRLF and NONE in any letter case, or a character code from 0 to 255; the bytes they stand for.
std::optional<std::string> TerminatorValue(std::string_view text);

/// none, even and odd.
std::optional<SerialParity> ParityValue(std::string_view text);

/// text, csv and json.
std::optional<AnswerFormat> FormatValue(std::string_view text);

/// terminator, auto and count.
std::optional<AnswerEnd> ReceiveModeValue(std::string_view text);

/// Reads what stands behind `run` or `send`, argv[0], into `options`, whose action says which of the two.
void ParseRunOptions(int argc, char** argv, Options& options);

}  // namespace kolvane::app
