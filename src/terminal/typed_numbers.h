#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What is typed into the fields of numbers. Throws RuntimeError, its text naming the field, kTypeMismatch
/// for a text that is no number and kOverflow for one outside the type's range.
namespace kolvane::terminal {

inline constexpr std::size_t kCountedAnswerLimit = 1025;  ///< bytes of an answer in mode 2

/// ReceiveTimo, milliseconds as a 32-bit number.
std::int32_t TypedTimeout(std::string_view text);
/// BinChars, a 16-bit number; kSubscript outside 0 to kCountedAnswerLimit.
std::size_t TypedCount(std::string_view text);

/// Why the function above would throw for `text`; empty where it would not.
std::string TimeoutFault(std::string_view text);
std::string CountFault(std::string_view text);

}  // namespace kolvane::terminal
