#pragma once

namespace kolvane::base {

/// A clock that never jumps back; its origin is arbitrary.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Seconds since the origin.
  virtual double Seconds() const = 0;
};

/// CLOCK_MONOTONIC.
class SteadyClock final : public Clock {
 public:
  double Seconds() const override;
};

}  // namespace kolvane::base
