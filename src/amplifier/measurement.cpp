#include "amplifier/measurement.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kolvane::amplifier {
namespace {

// The signal on a channel: amounts in its unit, frequency in Hz. Independent of the range, so that a range
// set too small is exceeded.
struct Attached {
  double mean;
  double swing;
  double frequency;
  double noise;
};

constexpr std::array<Attached, kChannels> kAttached = {{
    {12.5, 2.0, 0.05, 0.02},
    {180, 40, 0.08, 0.5},
    {6.2, 0.3, 0.02, 0.01},
    {23.5, 0.8, 0.005, 0.2},
    {18, 6, 0.1, 0.05},
    {350, 120, 0.25, 2.0},
    {2.5, 1.5, 0.5, 0.005},
    {11.8, 0.4, 0.03, 0.01},
}};

constexpr double kDriftPeriod = 900;  // seconds
constexpr double kDriftShare = 0.05;  // of the swing
constexpr double kFullBandwidth = 1000;

std::uint64_t Scramble(std::uint64_t x) {
  x += 0x9E3779B97F4A7C15u;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9u;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBu;
  return x ^ (x >> 31);
}

// Approximately normal: the sum of four uniform distributions, between -2 and 2.
double Noise(std::uint64_t seed, std::size_t channel, std::int64_t index) {
  const std::uint64_t bits =
      Scramble(Scramble(seed * kChannels + channel) ^ static_cast<std::uint64_t>(index));
  double sum = -2;
  for (unsigned shift = 0; shift < 64; shift += 16)
    sum += static_cast<double>((bits >> shift) & 0xFFFF) / 65535;
  return sum;
}

double Signal(const Attached& source, std::size_t channel, double time) {
  const double turn = 2 * std::numbers::pi;
  const auto phase = static_cast<double>(channel);
  return source.mean + source.swing * std::sin(turn * source.frequency * time + phase) +
         source.swing * kDriftShare * std::sin(turn * time / kDriftPeriod + phase);
}

double Input(const Settings& settings, std::uint64_t seed, std::size_t channel, std::int64_t index) {
  const ChannelSettings& set = settings.channels[channel];
  if (settings.mode == OperatingMode::kCalibrationSignal) return set.range / 2;
  const Attached& source = kAttached[channel];
  const double bandwidth = set.filter > 0 ? set.filter : kFullBandwidth;
  const double noise = source.noise * std::sqrt(bandwidth / kFullBandwidth) * Noise(seed, channel, index);
  if (settings.mode == OperatingMode::kZeroSignal) return noise;
  return noise + Signal(source, channel, static_cast<double>(index) / static_cast<double>(settings.rate));
}

}  // namespace

Sample Measure(const Settings& settings, std::uint64_t seed, std::size_t channel, std::int64_t index) {
  const ChannelSettings& set = settings.channels[channel];
  const double end = kOverrange * set.range;
  const double input = Input(settings, seed, channel, index);
  Sample sample;
  sample.overrange = std::abs(input) > end;
  sample.gross = std::clamp(input, -end, end) - set.zero;
  sample.net = sample.gross - set.tare;
  return sample;
}

int LimitState(const ChannelSettings& channel, double net) {
  return net < channel.low ? -1 : net > channel.high ? 1 : 0;
}

}  // namespace kolvane::amplifier
