#include <algorithm>

#include "amplifier/block.h"
#include "amplifier/command.h"
#include "amplifier/measurement.h"

namespace kolvane::amplifier {
namespace {

constexpr std::int64_t kMaxRecording = 100'000;
constexpr std::int64_t kMaxBufferValues = 500;
// By SampleType and ByteOrder.
constexpr std::string_view kTypes[] = {"INT16", "INT32", "FLOAT32"};
constexpr std::string_view kOrders[] = {"INTEL", "MOTOROLA"};

Refusal SetRate(State& state, const Arguments& arguments, Reply& reply) {
  const auto rate = ParseInteger(arguments[0], 1, kMaxRate);
  if (!rate) return Refusal::kBadParameter;
  state.settings.rate = *rate;
  return Done(reply);
}

Refusal AskRate(State& state, const Arguments&, Reply& reply) {
  AppendField(reply.bytes, state.settings.rate);
  return Refusal::kNone;
}

Refusal Start(State& state, const Arguments& arguments, Reply& reply) {
  const auto count = ParseInteger(arguments[0], 1, kMaxRecording);
  const auto channels = ParseChannels(arguments.size() > 1 ? arguments[1] : "0");
  if (!count || !channels) return Refusal::kBadParameter;
  if (RecordingRuns(state)) return Refusal::kNotNow;
  state.recording = {state.settings, channels->first, channels->count, NewestIndex(state) + 1, *count, {}};
  return Done(reply);
}

Refusal Stop(State& state, const Arguments&, Reply& reply) {
  state.recording.stopped_at = RecordedCount(state);
  return NoAnswer(reply);
}

Refusal AskBuffer(State& state, const Arguments&, Reply& reply) {
  AppendField(reply.bytes, RecordedCount(state));
  AppendField(reply.bytes, state.recording.wanted);
  AppendField(reply.bytes, std::int64_t{RecordingRuns(state)});
  return Refusal::kNone;
}

// A part of the recording, from sample `first` (1-based) on; nothing if a sample is not available (yet).
struct Part {
  std::int64_t first_index;
  std::int64_t count;
};

std::optional<Part> ParsePart(const State& state, std::string_view first, std::string_view count,
                              std::int64_t maximum) {
  const std::int64_t recorded = RecordedCount(state);
  const auto from = ParseInteger(first, 1, recorded);
  if (!from) return std::nullopt;
  const auto wanted = ParseInteger(count, 1, std::min(maximum, recorded - *from + 1));
  if (!wanted) return std::nullopt;
  return Part{state.recording.first_index + *from - 1, *wanted};
}

Refusal AskBufferValues(State& state, const Arguments& arguments, Reply& reply) {
  const Recording& recording = state.recording;
  const auto channel =
      ParseInteger(arguments[0], static_cast<std::int64_t>(recording.first_channel + 1),
                   static_cast<std::int64_t>(recording.first_channel + recording.channel_count));
  const auto part =
      ParsePart(state, arguments[1], arguments.size() > 2 ? arguments[2] : "1", kMaxBufferValues);
  if (!channel || !part) return Refusal::kBadParameter;
  const auto c = static_cast<std::size_t>(*channel - 1);
  for (std::int64_t i = 0; i < part->count; ++i) {
    const Sample sample = Measure(recording.settings, state.seed, c, part->first_index + i);
    AppendMeasured(reply.bytes, sample.net, recording.settings.channels[c].range);
  }
  return Refusal::kNone;
}

// Parses sample type and byte order at the end of both block commands; false for an unknown word.
bool ParseForm(std::string_view type, std::string_view order, BlockRequest& request) {
  const auto type_row = type.empty() ? 0 : ParseWord(type, kTypes);
  const auto order_row = order.empty() ? 0 : ParseWord(order, kOrders);
  if (!type_row || !order_row) return false;
  request.type = static_cast<SampleType>(*type_row);
  request.order = static_cast<ByteOrder>(*order_row);
  return true;
}

Refusal SendBlock(State& state, BlockRequest& request, const Settings& settings, Reply& reply) {
  request.time_ms = static_cast<std::uint32_t>(UpTimeMs(state));
  request.block_number = ++state.blocks;
  request.recording = RecordingRuns(state);
  reply.kind = Reply::Kind::kBytes;
  AppendBlock(reply.bytes, request, settings, state.seed);
  return Refusal::kNone;
}

Refusal AskBlock(State& state, const Arguments& arguments, Reply& reply) {
  BlockRequest request;
  const auto channels = ParseChannels(arguments[0]);
  const auto count = ParseInteger(arguments.size() > 1 ? arguments[1] : "1", 1, kMaxBlockSamples);
  if (!channels || !count || !ParseForm(arguments[2], arguments[3], request)) return Refusal::kBadParameter;
  request.first_channel = channels->first;
  request.channel_count = channels->count;
  request.first_index = NewestIndex(state) - *count + 1;
  request.sample_count = static_cast<std::size_t>(*count);
  return SendBlock(state, request, state.settings, reply);
}

Refusal AskBufferBlock(State& state, const Arguments& arguments, Reply& reply) {
  BlockRequest request;
  const auto part = ParsePart(state, arguments[0], arguments[1], kMaxBlockSamples);
  if (!part || !ParseForm(arguments[2], arguments[3], request)) return Refusal::kBadParameter;
  request.first_channel = state.recording.first_channel;
  request.channel_count = state.recording.channel_count;
  request.first_index = part->first_index;
  request.sample_count = static_cast<std::size_t>(part->count);
  return SendBlock(state, request, state.recording.settings, reply);
}

constexpr Command kMeasuringRows[] = {
    {"RATE", 1, 1, SetRate},
    {"RATE?", 0, 0, AskRate},
    {"STA", 1, 2, Start},
    {"STP", 0, 0, Stop},
    {"BUF?", 0, 0, AskBuffer},
    {"BUFV?", 2, 3, AskBufferValues},
    {"BUFB?", 2, 4, AskBufferBlock},
    {"BIN?", 1, 4, AskBlock},
};

}  // namespace

std::span<const Command> MeasuringCommands() { return kMeasuringRows; }

}  // namespace kolvane::amplifier
