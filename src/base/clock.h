#pragma once

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

/// Date and time in the default form of the user's locale (LC_ALL, LC_TIME, LANG), local time, UTF-8. A
/// system without a locale of its own (C, POSIX) gets the form of the interface's language, "20.11.2026
/// 08:05:09".
std::string DateTimeText(std::time_t when);
std::string CurrentDateTimeText();

}  // namespace kolvane::base
