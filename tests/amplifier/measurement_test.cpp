#include "amplifier/measurement.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

namespace kolvane::amplifier {
namespace {

TEST(Measurement, IsTheSameForTheSameSeedAndNumber) {
  const Settings settings = DefaultSettings();
  EXPECT_EQ(Measure(settings, 1, 0, 77).net, Measure(settings, 1, 0, 77).net);
  EXPECT_NE(Measure(settings, 1, 0, 77).net, Measure(settings, 2, 0, 77).net);
}

// The same seed gives the same values in every version.
TEST(Measurement, IsTheSameInEveryVersion) {
  constexpr std::array<double, kChannels> kValues = {14.3435418, 190.641779, 5.91305399, 23.9213223,
                                                     17.0149666, 246.815547, 1.18288973, 11.4549405};
  constexpr std::array<double, kChannels> kOfAnotherSeed = {10.8113191, 158.537607, 6.51544803, 23.7032399,
                                                            23.2753346, 339.275828, 3.68941273, 11.8540215};
  constexpr double kDigits = 1e-8;
  const Settings settings = DefaultSettings();
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    const double value = kValues[channel];
    EXPECT_NEAR(Measure(settings, 1, channel, 12'345).net, value, value * kDigits) << channel;
    const double other = kOfAnotherSeed[channel];
    EXPECT_NEAR(Measure(settings, 7, channel, -321).net, other, other * kDigits) << channel;
  }
}

TEST(Measurement, CalibratesWithHalfTheRange) {
  Settings settings = DefaultSettings();
  settings.mode = OperatingMode::kCalibrationSignal;
  EXPECT_EQ(Measure(settings, 1, 0, 1).net, settings.channels[0].range / 2);
}

TEST(Measurement, HasDifferentNoiseOnEveryChannelAndSample) {
  Settings settings = DefaultSettings();
  settings.mode = OperatingMode::kZeroSignal;
  std::set<double> seen;
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    for (std::int64_t index = -50; index < 50; ++index) seen.insert(Measure(settings, 1, channel, index).net);
  }
  EXPECT_EQ(seen.size(), kChannels * 100);
}

TEST(Measurement, StaysInItsRangeByDefault) {
  const Settings settings = DefaultSettings();
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    for (std::int64_t index = 0; index < 100'000; index += 97) {
      const Sample sample = Measure(settings, 1, channel, index);
      EXPECT_LT(std::abs(sample.net), settings.channels[channel].range) << channel;
      EXPECT_FALSE(sample.overrange);
    }
  }
}

TEST(Measurement, IsSteadierWithALowerFilter) {
  Settings settings = DefaultSettings();
  settings.mode = OperatingMode::kZeroSignal;
  settings.channels[0].filter = 1000;
  const double wide = Measure(settings, 1, 0, 5).net;
  settings.channels[0].filter = 0;
  EXPECT_EQ(Measure(settings, 1, 0, 5).net, wide);
  settings.channels[0].filter = 10;
  EXPECT_NEAR(Measure(settings, 1, 0, 5).net, wide / 10, std::abs(wide) * 1e-9);
}

TEST(Measurement, EndsAt120PercentOfTheRange) {
  Settings settings = DefaultSettings();
  settings.channels[0].range = 1;
  settings.channels[0].zero = 0.25;
  settings.channels[0].tare = 0.125;
  const Sample sample = Measure(settings, 1, 0, 0);
  EXPECT_TRUE(sample.overrange);
  EXPECT_DOUBLE_EQ(sample.gross, 0.95);
  EXPECT_DOUBLE_EQ(sample.net, 0.825);
}

TEST(Limits, BelongToThePermittedValues) {
  ChannelSettings channel;
  channel.low = -1;
  channel.high = 2;
  EXPECT_EQ(LimitState(channel, -1), 0);
  EXPECT_EQ(LimitState(channel, 2), 0);
  EXPECT_EQ(LimitState(channel, std::nextafter(-1, -2)), -1);
  EXPECT_EQ(LimitState(channel, std::nextafter(2, 3)), 1);
}

}  // namespace
}  // namespace kolvane::amplifier
