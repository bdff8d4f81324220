#include "amplifier/command.h"
#include "amplifier/measurement.h"

namespace kolvane::amplifier {
namespace {

constexpr std::string_view kIdentification = "KOLVANE,KVA-8 SIMULATED AMPLIFIER,00104711,1.0";

Refusal Identify(State&, const Arguments&, Reply& reply) {
  reply.bytes = kIdentification;
  return Refusal::kNone;
}

Refusal ResetSettings(State& state, const Arguments&, Reply& reply) {
  state.settings = DefaultSettings();
  return NoAnswer(reply);
}

Refusal RestartInstrument(State& state, const Arguments&, Reply& reply) {
  Restart(state);
  return NoAnswer(reply);
}

Refusal GoToLocal(State& state, const Arguments&, Reply& reply) {
  state.went_local = true;
  return NoAnswer(reply);
}

Refusal ListCommands(State&, const Arguments&, Reply& reply) {
  for (const auto rows : {SystemCommands(), ChannelCommands(), MeasuringCommands(), LineCommands()}) {
    for (const Command& row : rows) AppendField(reply.bytes, row.word);
  }
  return Refusal::kNone;
}

std::string_view TextOf(Refusal refusal) {
  switch (refusal) {
    case Refusal::kNone:
      return "no error";
    case Refusal::kUnknownCommand:
      return "unknown command";
    case Refusal::kWrongParameterCount:
      return "wrong number of parameters";
    case Refusal::kBadParameter:
      return "parameter not allowed";
    case Refusal::kLineTooLong:
      return "line too long";
    case Refusal::kNotNow:
      return "not possible now";
  }
  return {};
}

Refusal LastError(State& state, const Arguments&, Reply& reply) {
  AppendField(reply.bytes, static_cast<std::int64_t>(state.last_refusal));
  AppendField(reply.bytes, TextOf(state.last_refusal));
  state.last_refusal = Refusal::kNone;
  return Refusal::kNone;
}

// Fields: remote, recording, overrange mask, limit mask, recorded samples.
Refusal Status(State& state, const Arguments&, Reply& reply) {
  std::int64_t overrange = 0;
  std::int64_t beyond_limit = 0;
  const std::int64_t index = NewestIndex(state);
  for (std::size_t c = 0; c < kChannels; ++c) {
    const Sample sample = Measure(state.settings, state.seed, c, index);
    if (sample.overrange) overrange |= std::int64_t{1} << c;
    if (LimitState(state.settings.channels[c], sample.net) != 0) beyond_limit |= std::int64_t{1} << c;
  }
  AppendField(reply.bytes, std::int64_t{!state.went_local});
  AppendField(reply.bytes, std::int64_t{RecordingRuns(state)});
  AppendField(reply.bytes, overrange);
  AppendField(reply.bytes, beyond_limit);
  AppendField(reply.bytes, RecordedCount(state));
  state.went_local = false;
  return Refusal::kNone;
}

Refusal Time(State& state, const Arguments&, Reply& reply) {
  AppendFixed(reply.bytes, static_cast<double>(UpTimeMs(state)) / 1000, 3);
  return Refusal::kNone;
}

Refusal SetMode(State& state, const Arguments& arguments, Reply& reply) {
  const auto mode = ParseInteger(arguments[0], 0, 2);
  if (!mode) return Refusal::kBadParameter;
  state.settings.mode = static_cast<OperatingMode>(*mode);
  return Done(reply);
}

Refusal AskMode(State& state, const Arguments&, Reply& reply) {
  AppendField(reply.bytes, static_cast<std::int64_t>(state.settings.mode));
  return Refusal::kNone;
}

Refusal Save(State& state, const Arguments& arguments, Reply& reply) {
  const auto number = ParseInteger(arguments[0], 1, kMemories);
  if (!number) return Refusal::kBadParameter;
  state.memories[static_cast<std::size_t>(*number - 1)] = state.settings;
  state.memory_in_use = *number;
  return Done(reply);
}

Refusal Load(State& state, const Arguments& arguments, Reply& reply) {
  const auto number = ParseInteger(arguments[0], 1, kMemories);
  if (!number) return Refusal::kBadParameter;
  const auto& memory = state.memories[static_cast<std::size_t>(*number - 1)];
  if (!memory) return Refusal::kNotNow;
  state.settings = *memory;
  state.memory_in_use = *number;
  return Done(reply);
}

Refusal Preset(State& state, const Arguments&, Reply& reply) {
  AppendField(reply.bytes, state.memory_in_use);
  return Refusal::kNone;
}

constexpr Command kSystemRows[] = {
    {"*IDN?", 0, 0, Identify},  {"*RST", 0, 0, ResetSettings}, {"RES", 0, 0, RestartInstrument},
    {"DCL", 0, 0, GoToLocal},   {"CMD?", 0, 0, ListCommands},  {"ERR?", 0, 0, LastError},
    {"STAT?", 0, 0, Status},    {"TIME?", 0, 0, Time},         {"OPMODE", 1, 1, SetMode},
    {"OPMODE?", 0, 0, AskMode}, {"SAVE", 1, 1, Save},          {"LOAD", 1, 1, Load},
    {"PRES?", 0, 0, Preset},
};

}  // namespace

std::span<const Command> SystemCommands() { return kSystemRows; }

}  // namespace kolvane::amplifier
