#pragma once

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

}  // namespace kolvane::base
