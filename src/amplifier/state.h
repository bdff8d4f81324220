#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "amplifier/settings.h"
#include "amplifier/transmission.h"
#include "base/clock.h"

namespace kolvane::amplifier {

/// Why a command was refused; the numbers are those that ERR? answers.
enum class Refusal {
  kNone = 0,
  kUnknownCommand = 1,
  kWrongParameterCount = 2,
  kBadParameter = 3,
  kLineTooLong = 4,
  kNotNow = 5,
};

/// A recording is a span of sample numbers, not a store: samples are worked out when they are asked for, with
/// the settings of the moment it was started.
struct Recording {
  Settings settings;
  std::size_t first_channel = 0;
  std::size_t channel_count = 0;
  std::int64_t first_index = 0;
  std::int64_t wanted = 0;
  std::optional<std::int64_t> stopped_at;  // samples that were there when STP came
};

inline constexpr std::size_t kMemories = 4;

/// What the instrument keeps between two commands.
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
  std::int64_t mute = 0;  // answers still to be kept back
  std::uint32_t blocks = 0;
  Refusal last_refusal = Refusal::kNone;
  bool went_local = false;  // since the last STAT?
};

/// Seconds since the instrument was started or restarted.
double UpTime(const State& state);
std::int64_t UpTimeMs(const State& state);
/// The number of the newest sample at the present rate.
std::int64_t NewestIndex(const State& state);
/// Samples of each channel that the recording holds by now, and whether more are to come.
std::int64_t RecordedCount(const State& state);
bool RecordingRuns(const State& state);

/// Everything but the memories as after the program's start.
void Restart(State& state);

}  // namespace kolvane::amplifier
