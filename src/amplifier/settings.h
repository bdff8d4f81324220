#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kolvane::amplifier {

inline constexpr std::size_t kChannels = 8;
inline constexpr std::size_t kMaxNameLength = 16;
inline constexpr std::size_t kMaxUnitLength = 8;
inline constexpr std::int64_t kMaxRate = 10'000;

/// Texts are Windows-1252; range, zero, tare and limits are in the channel's unit, the filter is in Hz.
struct ChannelSettings {
  std::string name;
  std::string unit;
  std::string_view sensor;
  double range = 0;
  double filter = 0;
  double low = 0;
  double high = 0;
  double zero = 0;
  double tare = 0;
};

enum class OperatingMode : std::uint8_t { kMeasure = 0, kCalibrationSignal = 1, kZeroSignal = 2 };

/// Everything that SAVE keeps, LOAD brings back and *RST puts to its default.
struct Settings {
  std::array<ChannelSettings, kChannels> channels;
  OperatingMode mode = OperatingMode::kMeasure;
  std::int64_t rate = 100;  // samples a second
};

Settings DefaultSettings();

/// The transducer types and filter frequencies that a channel accepts; a filter of 0 is switched off.
inline constexpr std::array<std::string_view, 8> kSensors = {"FULL",  "HALF", "QUARTER", "LVDT",
                                                             "PT100", "TCK",  "U10V",    "I20MA"};
inline constexpr std::array<double, 14> kFilters = {0,  0.1, 0.2, 0.5, 1,   2,   5,
                                                    10, 20,  50,  100, 200, 500, 1000};

}  // namespace kolvane::amplifier
