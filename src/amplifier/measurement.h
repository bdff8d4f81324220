#pragma once

#include <cstddef>
#include <cstdint>

#include "amplifier/state.h"

namespace kolvane::amplifier {

/// One measured value in the channel's unit; gross is after zero, net after zero and tare.
struct Sample {
  double gross = 0;
  double net = 0;
  bool overrange = false;
};

/// An input is limited to this multiple of its range in either direction.
inline constexpr double kOverrange = 1.2;

/// The value of channel `channel` (0-based) at sample number `index`, taken index / rate seconds after the
/// start. A pure function: the same seed and index give the same noise.
Sample Measure(const Settings& settings, std::uint64_t seed, std::size_t channel, std::int64_t index);

/// -1 below the lower limit, 1 above the upper one, 0 between them.
int LimitState(const ChannelSettings& channel, double net);

}  // namespace kolvane::amplifier
