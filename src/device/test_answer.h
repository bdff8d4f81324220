#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "kolvane/Variant.h"

namespace kolvane::device {

inline constexpr std::int16_t kWriteCrLf = 2;
inline constexpr std::int16_t kWriteNothing = -1;
inline constexpr std::int16_t kReadWithoutTerminator = 0;

/// How a host ends a command: 2 for CR LF, the Windows-1252 code of a single character, -1 for nothing. A
/// text that no code stands for is -1 as well: whoever writes appends it to the command.
std::int16_t WriteTerminatorCode(std::string_view terminator);

/// What ends an answer: the Windows-1252 code of the terminator's last character (10 for CR LF), 0 for none.
std::int16_t ReadTerminatorCode(std::string_view terminator);

/// Date and time as the user reads them, UTF-8.
using DateTimeSource = std::function<std::string()>;

/// What the offline mode reads: "Test mode answer at " and the time at which the answer began.
class TestAnswer {
 public:
  explicit TestAnswer(DateTimeSource date_time) : date_time_(std::move(date_time)) {}

  /// The next read begins a new answer.
  void Restart();

  std::string Text() const { return "Test mode answer at " + date_time_(); }

  /// The next `count` bytes of the answer, spaces after its end, into the start of `buffer`. False, with
  /// `buffer` untouched, once the answer has been handed over to its end: so a read of one byte after the
  /// other ends as it does on a device that falls silent.
  [[nodiscard]] bool Take(std::int32_t count, Bytes& buffer);

 private:
  DateTimeSource date_time_;
  std::string bytes_;  // Windows-1252; empty before the first byte is taken
  std::size_t next_ = 0;
};

}  // namespace kolvane::device
