#include <algorithm>

#include "amplifier/command.h"
#include "amplifier/measurement.h"
#include "base/text.h"

namespace kolvane::amplifier {
namespace {

constexpr double kMinRange = 0.001;
constexpr double kMaxRange = 1'000'000;

// Calls `step` for each channel in the first parameter; without parameters for all.
template <typename Step>
Refusal ForChannels(const Arguments& arguments, Step step) {
  const auto channels = ParseChannels(arguments.size() == 0 ? "0" : arguments[0]);
  if (!channels) return Refusal::kBadParameter;
  for (std::size_t i = 0; i < channels->count; ++i) step(channels->first + i);
  return Refusal::kNone;
}

// Sets one channel, or with "0" or "2-5" several to the same value, if the value is allowed.
template <typename Value>
Refusal SetMember(State& state, const Arguments& arguments, Reply& reply, Value ChannelSettings::*member,
                  const Value& value, bool allowed) {
  if (!allowed) return Refusal::kBadParameter;
  const Refusal refusal =
      ForChannels(arguments, [&](std::size_t c) { state.settings.channels[c].*member = value; });
  return refusal == Refusal::kNone ? Done(reply) : refusal;
}

template <auto kMember>
Refusal AskMember(State& state, const Arguments& arguments, Reply& reply) {
  return ForChannels(arguments,
                     [&](std::size_t c) { AppendField(reply.bytes, state.settings.channels[c].*kMember); });
}

bool IsPlainText(std::string_view text, std::size_t maximum) {
  return !text.empty() && text.size() <= maximum && std::ranges::none_of(text, base::IsAsciiControl);
}

Refusal ListChannels(State&, const Arguments&, Reply& reply) {
  for (std::size_t c = 1; c <= kChannels; ++c) AppendField(reply.bytes, static_cast<std::int64_t>(c));
  return Refusal::kNone;
}

Refusal SetName(State& state, const Arguments& arguments, Reply& reply) {
  return SetMember(state, arguments, reply, &ChannelSettings::name, std::string(arguments[1]),
                   IsPlainText(arguments[1], kMaxNameLength));
}

Refusal SetUnit(State& state, const Arguments& arguments, Reply& reply) {
  return SetMember(state, arguments, reply, &ChannelSettings::unit, std::string(arguments[1]),
                   IsPlainText(arguments[1], kMaxUnitLength));
}

Refusal SetSensor(State& state, const Arguments& arguments, Reply& reply) {
  const auto found = ParseWord(arguments[1], kSensors);
  return SetMember(state, arguments, reply, &ChannelSettings::sensor, kSensors[found.value_or(0)],
                   found.has_value());
}

Refusal SetRange(State& state, const Arguments& arguments, Reply& reply) {
  const double range = ParseNumber(arguments[1]).value_or(0);
  return SetMember(state, arguments, reply, &ChannelSettings::range, range,
                   range >= kMinRange && range <= kMaxRange);
}

Refusal SetFilter(State& state, const Arguments& arguments, Reply& reply) {
  const double filter = ParseNumber(arguments[1]).value_or(-1);
  return SetMember(state, arguments, reply, &ChannelSettings::filter, filter,
                   std::ranges::find(kFilters, filter) != kFilters.end());
}

Refusal SetLimits(State& state, const Arguments& arguments, Reply& reply) {
  const auto low = ParseNumber(arguments[1]);
  const auto high = ParseNumber(arguments[2]);
  if (!low || !high || !(*low < *high)) return Refusal::kBadParameter;
  const Refusal refusal = SetMember(state, arguments, reply, &ChannelSettings::low, *low, true);
  return refusal == Refusal::kNone ? SetMember(state, arguments, reply, &ChannelSettings::high, *high, true)
                                   : refusal;
}

Refusal AskLimits(State& state, const Arguments& arguments, Reply& reply) {
  return ForChannels(arguments, [&](std::size_t c) {
    AppendField(reply.bytes, state.settings.channels[c].low);
    AppendField(reply.bytes, state.settings.channels[c].high);
  });
}

// A second parameter is the offset itself; without one the present value becomes the new zero point.
template <double ChannelSettings::*kOffset, double Sample::*kPresent>
Refusal SetOffset(State& state, const Arguments& arguments, Reply& reply) {
  const auto value = ParseNumber(arguments[1]);
  if (arguments.size() == 2) {
    return SetMember(state, arguments, reply, kOffset, value.value_or(0), value.has_value());
  }
  const std::int64_t index = NewestIndex(state);
  const Refusal refusal = ForChannels(arguments, [&](std::size_t c) {
    const Sample present = Measure(state.settings, state.seed, c, index);
    ChannelSettings& channel = state.settings.channels[c];
    channel.*kOffset += present.*kPresent;
  });
  return refusal == Refusal::kNone ? Done(reply) : refusal;
}

template <double ChannelSettings::*kOffset>
Refusal AskOffset(State& state, const Arguments& arguments, Reply& reply) {
  return ForChannels(arguments, [&](std::size_t c) {
    const ChannelSettings& channel = state.settings.channels[c];
    AppendMeasured(reply.bytes, channel.*kOffset, channel.range);
  });
}

template <double Sample::*kValue>
Refusal AskValues(State& state, const Arguments& arguments, Reply& reply) {
  const std::int64_t index = NewestIndex(state);
  return ForChannels(arguments, [&](std::size_t c) {
    AppendMeasured(reply.bytes, Measure(state.settings, state.seed, c, index).*kValue,
                   state.settings.channels[c].range);
  });
}

Refusal AskLimitStates(State& state, const Arguments& arguments, Reply& reply) {
  const std::int64_t index = NewestIndex(state);
  return ForChannels(arguments, [&](std::size_t c) {
    const Sample sample = Measure(state.settings, state.seed, c, index);
    AppendField(reply.bytes, std::int64_t{LimitState(state.settings.channels[c], sample.net)});
  });
}

constexpr Command kChannelRows[] = {
    {"CHS?", 0, 0, ListChannels},
    {"NAME", 2, 2, SetName},
    {"NAME?", 0, 1, AskMember<&ChannelSettings::name>},
    {"UNIT", 2, 2, SetUnit},
    {"UNIT?", 0, 1, AskMember<&ChannelSettings::unit>},
    {"SENS", 2, 2, SetSensor},
    {"SENS?", 0, 1, AskMember<&ChannelSettings::sensor>},
    {"RANGE", 2, 2, SetRange},
    {"RANGE?", 0, 1, AskMember<&ChannelSettings::range>},
    {"FILT", 2, 2, SetFilter},
    {"FILT?", 0, 1, AskMember<&ChannelSettings::filter>},
    {"ZERO", 1, 2, SetOffset<&ChannelSettings::zero, &Sample::gross>},
    {"ZERO?", 0, 1, AskOffset<&ChannelSettings::zero>},
    {"TARE", 1, 2, SetOffset<&ChannelSettings::tare, &Sample::net>},
    {"TARE?", 0, 1, AskOffset<&ChannelSettings::tare>},
    {"LIM", 3, 3, SetLimits},
    {"LIM?", 0, 1, AskLimits},
    {"LIMS?", 0, 1, AskLimitStates},
    {"MSV?", 0, 1, AskValues<&Sample::net>},
    {"GRO?", 0, 1, AskValues<&Sample::gross>},
};

}  // namespace

std::span<const Command> ChannelCommands() { return kChannelRows; }

}  // namespace kolvane::amplifier
