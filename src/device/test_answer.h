#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "kolvane/Variant.h"

namespace kolvane::device {

/// Date and time as the user reads them, UTF-8.
using DateTimeSource = std::function<std::string()>;

/// What the offline mode reads: "Test mode answer at " and the time at which the answer began.
class TestAnswer {
 public:
  explicit TestAnswer(DateTimeSource date_time) : date_time_(std::move(date_time)) {}

  /// The next read begins a new answer.
  void Restart();

  std::string Text() const { return "Test mode answer at " + date_time_(); }

  /// The next `count` bytes of the answer, blanks behind its end, into the start of `buffer`. False, with
  /// `buffer` untouched, once the answer has been handed over to its end: so a read of one byte after the
  /// other ends as it does on a device that falls silent.
  [[nodiscard]] bool Take(std::int32_t count, Bytes& buffer);

 private:
  DateTimeSource date_time_;
  std::string bytes_;  // Windows-1252; empty before the first byte is taken
  std::size_t next_ = 0;
};

}  // namespace kolvane::device
