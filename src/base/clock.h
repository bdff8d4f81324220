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

/// CLOCK_MONOTONIC, counted from the construction of this object: single precision would be too coarse for
/// the uptime of a machine that has been running for days.
class SteadyClock final : public Clock {
 public:
  SteadyClock();
  double Seconds() const override;

 private:
  double origin_;
};

/// CLOCK_MONOTONIC_COARSE: four times as fast to read, but up to 10 ms behind.
class CoarseClock final : public Clock {
 public:
  double Seconds() const override;
};

/// The time left until `due`, 0 if it has passed; for ppoll.
timespec TimeUntil(std::chrono::steady_clock::time_point due);

/// Date and time in the default form of the user's locale (LC_ALL, LC_TIME, LANG), local time, UTF-8. Without
/// a configured locale (C, POSIX) the German form of the user interface is used, "20.11.2026 08:05:09".
std::string DateTimeText(std::time_t when);
std::string CurrentDateTimeText();

/// Milliseconds since 1970 UTC.
std::int64_t WallClockMs();

/// `time_ms` since 1970 UTC in RFC 3339 form, UTC: "2026-11-21T14:01:04.123Z".
std::string UtcTimeText(std::int64_t time_ms);

/// Formats times in local time, "2026-11-21 15:01:04.123". Consecutive calls within a second share the work.
class TimeText {
 public:
  /// Offset of the time of day.
  static constexpr std::size_t kDateLength = sizeof "2026-11-21 " - 1;

  /// Appends `time_ms`, milliseconds since 1970 UTC, with `decimal_sign` before the milliseconds.
  void Append(std::int64_t time_ms, char decimal_sign, std::string& out);

 private:
  std::time_t second_ = 0;  // of text_
  std::string text_;
};

/// The current local time to the millisecond, "2026-11-21 15:01:04.123".
std::string TimeStamp();

}  // namespace kolvane::base
