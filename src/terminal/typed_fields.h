#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "terminal/texts.h"

namespace kolvane::terminal {

inline constexpr std::string_view kCrLf = "\r\n";

/// Both lists hold the same words; each starts with the one used most.
inline constexpr std::array<std::string_view, 4> kReceiveTerminatorWords = {texts::kCrLf, texts::kCr,
                                                                            texts::kLf, texts::kNoTerminator};
inline constexpr std::array<std::string_view, 4> kSendTerminatorWords = {texts::kLf, texts::kCr, texts::kCrLf,
                                                                         texts::kNoTerminator};

/// The receive terminator for the text of RcvTermChar: a word of the list or a character code; no value for
/// any other text. Throws RuntimeError kInvalidArgument for a code outside 0 to 255.
std::optional<std::string> ReceiveTerminator(std::string_view shown);

/// The send terminator for the text of SendTermChar: a word of the list, a character code, or the text
/// itself. Throws as ReceiveTerminator does.
std::string SendTerminator(std::string_view shown);

/// How a terminator is shown: its word, or the terminator itself if it has no word.
std::string TerminatorWord(std::string_view terminator);

/// Parse the text of number fields. Throw RuntimeError, its text naming the field: kTypeMismatch for a text
/// that is not a number, kOverflow for one outside the type's range.

inline constexpr std::size_t kCountedAnswerLimit = 1025;  ///< bytes of an answer in mode 2

/// ReceiveTimo, milliseconds as a 32-bit number.
std::int32_t TypedTimeout(std::string_view text);
/// BinChars, a 16-bit number; kSubscript outside 0 to kCountedAnswerLimit.
std::size_t TypedCount(std::string_view text);

/// Why the function above would throw for `text`; empty if it would not.
std::string TimeoutFault(std::string_view text);
std::string CountFault(std::string_view text);

}  // namespace kolvane::terminal
