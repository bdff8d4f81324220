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

/// Code for the end of a host's command: 2 for CR LF, the Windows-1252 code of a single character, -1 for
/// nothing. A text without a code is also -1: the writer appends it to the command.
std::int16_t WriteTerminatorCode(std::string_view terminator);

/// Code for the end of an answer: the Windows-1252 code of the terminator's last character (10 for CR LF), 0
/// for none.
std::int16_t ReadTerminatorCode(std::string_view terminator);

/// Date and time in the user's form, UTF-8.
using DateTimeSource = std::function<std::string()>;

/// The answer read in offline mode: "Test mode answer at " and the time at which it started.
class TestAnswer {
 public:
  explicit TestAnswer(DateTimeSource date_time) : date_time_(std::move(date_time)) {}

  /// The next read starts a new answer.
  void Restart();

  std::string Text() const { return "Test mode answer at " + date_time_(); }

  /// Copies the next `count` bytes of the answer, padded with spaces, to the start of `buffer`. False, with
  /// `buffer` unchanged, once all of the answer has been delivered: reading byte by byte then ends as with a
  /// device that stops sending.
  [[nodiscard]] bool Take(std::int32_t count, Bytes& buffer);

 private:
  DateTimeSource date_time_;
  std::string bytes_;  // Windows-1252; empty before the first read
  std::size_t next_ = 0;
};

}  // namespace kolvane::device
