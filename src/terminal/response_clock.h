#pragma once

#include "base/clock.h"

namespace kolvane::terminal {

/// Times of the exchanges sent by hand. Single precision on purpose, for seconds and milliseconds alike: the
/// longer the clock has run, the coarser they are.
inline float SingleMilliseconds(const base::Clock& clock) {
  return static_cast<float>(clock.Seconds()) * 1000.0f;
}

/// Times of the rows of a running command list.
inline double DoubleMilliseconds(const base::Clock& clock) { return clock.Seconds() * 1000.0; }

}  // namespace kolvane::terminal
