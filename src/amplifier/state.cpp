#include "amplifier/state.h"

#include <algorithm>
#include <cmath>

namespace kolvane::amplifier {
namespace {

ChannelSettings Channel(std::string_view name, std::string_view unit, std::string_view sensor, double range,
                        double filter) {
  ChannelSettings channel;
  channel.name = name;
  channel.unit = unit;
  channel.sensor = sensor;
  channel.range = range;
  channel.filter = filter;
  channel.low = -range;
  channel.high = range;
  return channel;
}

}  // namespace

Settings DefaultSettings() {
  Settings settings;
  settings.channels = {
      Channel("Force", "kN", "FULL", 20, 100),
      Channel("Torque", "Nm", "FULL", 500, 100),
      Channel("Pressure", "bar", "FULL", 10, 50),
      Channel("Temperature",
              "\xB0"
              "C",
              "PT100", 200, 1),
      Channel("Displacement", "mm", "LVDT", 50, 50),
      Channel("Strain", "\xB5m/m", "QUARTER", 2000, 20),
      Channel("Voltage", "V", "U10V", 10, 1000),
      Channel("Current", "mA", "I20MA", 20, 500),
  };
  return settings;
}

namespace {

std::int64_t IndexAt(double seconds, std::int64_t rate) {
  return static_cast<std::int64_t>(std::floor(seconds * static_cast<double>(rate)));
}

}  // namespace

double UpTime(const State& state) { return state.clock.Seconds() - state.started; }

std::int64_t UpTimeMs(const State& state) { return IndexAt(UpTime(state), 1000); }

std::int64_t NewestIndex(const State& state) { return IndexAt(UpTime(state), state.settings.rate); }

std::int64_t RecordedCount(const State& state) {
  const Recording& recording = state.recording;
  if (recording.stopped_at) return *recording.stopped_at;
  const std::int64_t newest = IndexAt(UpTime(state), recording.settings.rate);
  return std::clamp<std::int64_t>(newest - recording.first_index + 1, 0, recording.wanted);
}

bool RecordingRuns(const State& state) {
  return !state.recording.stopped_at && RecordedCount(state) < state.recording.wanted;
}

void Restart(State& state) {
  state.started = state.clock.Seconds();
  state.settings = DefaultSettings();
  state.memory_in_use = 0;
  state.recording = Recording();
  state.transmission = state.start_transmission;
  state.mute = 0;
  state.blocks = 0;
  state.last_refusal = Refusal::kNone;
  state.went_local = false;
}

}  // namespace kolvane::amplifier
