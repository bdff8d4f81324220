#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>

namespace kolvane::base {

/// A clock that never jumps back; its origin is arbitrary.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Seconds since the origin.
  virtual double Seconds() const = 0;
};

/// CLOCK_MONOTONIC, counted from the making of this object: what is kept in single precision would be coarse
/// on a machine that has been up for days.
class SteadyClock final : public Clock {
 public:
  SteadyClock();
  double Seconds() const override;

 private:
  double origin_;
};

/// The time that is left until `due`, none where it has passed; for ppoll.
timespec TimeUntil(std::chrono::steady_clock::time_point due);

/// Date and time in the default form of the user's locale (LC_ALL, LC_TIME, LANG), local time, UTF-8. A
/// system without a locale of its own (C, POSIX) gets the form of the interface's language, "20.11.2026
/// 08:05:09".
std::string DateTimeText(std::time_t when);
std::string CurrentDateTimeText();

/// Milliseconds since 1970 UTC.
std::int64_t WallClockMs();

/// A moment in that count as RFC 3339 has it, UTC: "2026-11-21T14:01:04.123Z".
std::string UtcTimeText(std::int64_t time_ms);

/// Writes moments in local time, "2026-11-21 15:01:04.123". Those of one second share their work.
class TimeText {
 public:
  /// Where the time of day begins.
  static constexpr std::size_t kDateLength = sizeof "2026-11-21 " - 1;

  /// Appends `time_ms`, milliseconds since 1970 UTC; `decimal_sign` stands before the milliseconds.
  void Append(std::int64_t time_ms, char decimal_sign, std::string& out);

 private:
  std::time_t second_ = 0;  // of text_
  std::string text_;
};

/// This moment in local time to the millisecond, "2026-11-21 15:01:04.123".
std::string TimeStamp();

}  // namespace kolvane::base
