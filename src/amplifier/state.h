#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "amplifier/stream.h"
#include "base/clock.h"

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

/// Everything that SAVE stores, LOAD restores and *RST resets.
struct Settings {
  std::array<ChannelSettings, kChannels> channels;
  OperatingMode mode = OperatingMode::kMeasure;
  std::int64_t rate = 100;  // samples a second
};

Settings DefaultSettings();

/// The transducer types and filter frequencies of a channel; a filter of 0 is off.
inline constexpr std::array<std::string_view, 8> kSensors = {"FULL",  "HALF", "QUARTER", "LVDT",
                                                             "PT100", "TCK",  "U10V",    "I20MA"};
inline constexpr std::array<double, 14> kFilters = {0,  0.1, 0.2, 0.5, 1,   2,   5,
                                                    10, 20,  50,  100, 200, 500, 1000};

/// Why a command was refused; ERR? returns these numbers.
enum class Refusal {
  kNone = 0,
  kUnknownCommand = 1,
  kWrongParameterCount = 2,
  kBadParameter = 3,
  kLineTooLong = 4,
  kNotNow = 5,
};

/// A recording is a range of sample numbers without stored samples: they are computed on demand, with the
/// settings at the start of the recording.
struct Recording {
  Settings settings;
  std::size_t first_channel = 0;
  std::size_t channel_count = 0;
  std::int64_t first_index = 0;
  std::int64_t wanted = 0;
  std::optional<std::int64_t> stopped_at;  // number of samples at STP
};

inline constexpr std::size_t kMemories = 4;

/// The instrument's state between two commands.
struct State {
  const base::Clock& clock;
  std::uint64_t seed = 1;
  Transmission start_transmission = {};
  std::vector<std::string> files = {};

  double started = 0;  // on the clock
  Settings settings = DefaultSettings();
  std::array<std::optional<Settings>, kMemories> memories = {};
  std::int64_t memory_in_use = 0;  // 1-based, 0 = none
  Recording recording = {};
  Transmission transmission = {};
  std::int64_t mute = 0;  // answers still to be suppressed
  std::uint32_t blocks = 0;
  Refusal last_refusal = Refusal::kNone;
  bool went_local = false;  // since the last STAT?
};

/// Seconds since the instrument was started or restarted.
double UpTime(const State& state);
std::int64_t UpTimeMs(const State& state);
/// The number of the newest sample at the current rate.
std::int64_t NewestIndex(const State& state);
/// Samples per channel recorded so far, and whether more are to come.
std::int64_t RecordedCount(const State& state);
bool RecordingRuns(const State& state);

/// Resets everything except the memories to the state after the program's start.
void Restart(State& state);

}  // namespace kolvane::amplifier
