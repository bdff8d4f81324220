#pragma once

#include "base/clock.h"

namespace kolvane::device {

/// A clock that stands still until a test moves it.
class FakeClock final : public base::Clock {
 public:
  double Seconds() const override { return now; }
  void Advance(double seconds) { now += seconds; }

  double now = 1000;
};

}  // namespace kolvane::device
