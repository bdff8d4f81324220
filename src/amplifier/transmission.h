#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kolvane::amplifier {

/// How answers go out on every connection.
struct Transmission {
  std::uint32_t delay_ms = 0;            // before each answer
  std::uint32_t drip_ms = 0;             // between two bytes of an answer; 0 = all at once
  std::string_view terminator = "\r\n";  // of static duration
};

/// The longest pause that any option or command may ask for.
inline constexpr std::uint32_t kMaxPauseMs = 600'000;

/// Between the words CRLF, CR, LF and NONE (case disregarded) and the bytes they stand for.
std::optional<std::string_view> TerminatorNamed(std::string_view word);
std::string_view NameOfTerminator(std::string_view terminator);

}  // namespace kolvane::amplifier
