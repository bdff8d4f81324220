#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "base/runtime_error.h"

namespace kolvane::script {

/// Adds `step` to a counter; throws RuntimeError kOverflow, the counter as it was, where its type is too
/// small.
template <typename Counter>
void Count(Counter& counter, Counter step) {
  Counter sum;
  if (__builtin_add_overflow(counter, step, &sum))
    throw base::RuntimeError(base::RuntimeError::Kind::kOverflow);
  counter = sum;
}

/// The element at `index`; throws RuntimeError kSubscript where there is none.
template <typename Element, std::size_t size>
Element& At(std::array<Element, size>& array, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= size)
    throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
  return array[static_cast<std::size_t>(index)];
}

/// A row that begins with "$", taken apart. The line is cut at each comma and its first piece at each single
/// blank; word 0 is the command, word 1 the one argument, all the rest is not used.
class SpecialLine {
 public:
  /// `line` must outlive this.
  explicit SpecialLine(std::string_view line);

  /// The word that names the command, in upper case; empty for one longer than any command's.
  std::string_view Command() const { return {command_, command_size_}; }

  /// Empty where two blanks stand in front of it. Throws RuntimeError kSubscript where there is none.
  std::string_view Argument() const;
  /// The number at the argument's start, 0 where none stands there.
  double Number() const;
  /// The argument without the quotes that enclose it: where it begins with one, its first and last character
  /// are taken off, whatever the last one is.
  std::string_view Unquoted() const;

 private:
  static constexpr std::size_t kLongest = 12;  ///< $SPLITPARAMS

  char command_[kLongest];
  std::size_t command_size_ = 0;
  bool has_argument_ = false;
  std::string_view argument_;
};

}  // namespace kolvane::script
