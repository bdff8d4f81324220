#pragma once

#include <cstdint>
#include <string>

namespace kolvane::help {

/// Puts the numbers of \u together: one stands for a character, or two for the halves of a surrogate pair.
class RtfUnicode {
 public:
  /// The UTF-8 that `number` completes; empty for a first half and for control characters. Numbers below 0
  /// count from 65536 down; what is no character becomes U+FFFD.
  std::string Add(std::int32_t number);

  /// U+FFFD if a first half was left alone, else empty; to be asked before any other text.
  std::string Flush();

 private:
  char32_t first_half_ = 0;
};

}  // namespace kolvane::help
