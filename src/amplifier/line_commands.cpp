#include "amplifier/command.h"

// Commands that test the line and the reader instead of measuring.

namespace kolvane::amplifier {
namespace {

constexpr std::int64_t kMaxLength = 1'000'000;
constexpr std::size_t kMaxHexBytes = 1024;
constexpr std::int64_t kMaxMute = 1'000'000;

Refusal EchoText(State&, const Arguments& arguments, Reply& reply) {
  reply.bytes = arguments.whole();
  return Refusal::kNone;
}

Refusal LongLine(State&, const Arguments& arguments, Reply& reply) {
  const auto length = ParseInteger(arguments[0], 1, kMaxLength);
  if (!length) return Refusal::kBadParameter;
  reply.bytes.resize(static_cast<std::size_t>(*length));
  int digit = 0;
  for (char& c : reply.bytes) {
    c = static_cast<char>('0' + digit);
    digit = digit == 9 ? 0 : digit + 1;
  }
  return Refusal::kNone;
}

Refusal Ramp(State&, const Arguments& arguments, Reply& reply) {
  const auto length = ParseInteger(arguments[0], 1, kMaxLength);
  if (!length) return Refusal::kBadParameter;
  reply.kind = Reply::Kind::kBytes;
  reply.bytes.resize(static_cast<std::size_t>(*length));
  unsigned char next = 0;
  for (char& c : reply.bytes) c = static_cast<char>(next++);
  return Refusal::kNone;
}

std::optional<unsigned> HexDigit(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A' + 10);
  if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
  return std::nullopt;
}

Refusal HexBytes(State&, const Arguments& arguments, Reply& reply) {
  const std::string_view digits = arguments[0];
  if (digits.size() % 2 != 0 || digits.size() > 2 * kMaxHexBytes) return Refusal::kBadParameter;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const auto high = HexDigit(digits[i]);
    const auto low = HexDigit(digits[i + 1]);
    if (!high || !low) return Refusal::kBadParameter;
    reply.bytes += static_cast<char>(*high << 4 | *low);
  }
  reply.kind = Reply::Kind::kBytes;
  return Refusal::kNone;
}

Refusal Wait(State&, const Arguments& arguments, Reply& reply) {
  const auto pause = ParseInteger(arguments[0], 0, kMaxPauseMs);
  if (!pause) return Refusal::kBadParameter;
  reply.wait_ms = static_cast<std::uint32_t>(*pause);
  return Done(reply);
}

Refusal CountFiles(State& state, const Arguments&, Reply& reply) {
  AppendField(reply.bytes, static_cast<std::int64_t>(state.files.size()));
  return Refusal::kNone;
}

const std::string* FindFile(const State& state, std::string_view parameter) {
  const auto number = ParseInteger(parameter, 1, static_cast<std::int64_t>(state.files.size()));
  return number ? &state.files[static_cast<std::size_t>(*number - 1)] : nullptr;
}

Refusal SendFile(State& state, const Arguments& arguments, Reply& reply) {
  const std::string* file = FindFile(state, arguments[0]);
  if (file == nullptr) return Refusal::kBadParameter;
  reply.kind = Reply::Kind::kBytes;
  reply.bytes = *file;
  return Refusal::kNone;
}

Refusal SizeOfFile(State& state, const Arguments& arguments, Reply& reply) {
  const std::string* file = FindFile(state, arguments[0]);
  if (file == nullptr) return Refusal::kBadParameter;
  AppendField(reply.bytes, static_cast<std::int64_t>(file->size()));
  return Refusal::kNone;
}

template <std::uint32_t Transmission::*kPause>
Refusal SetPause(State& state, const Arguments& arguments, Reply& reply) {
  const auto pause = ParseInteger(arguments[0], 0, kMaxPauseMs);
  if (!pause) return Refusal::kBadParameter;
  state.transmission.*kPause = static_cast<std::uint32_t>(*pause);
  return Done(reply);
}

template <std::uint32_t Transmission::*kPause>
Refusal AskPause(State& state, const Arguments&, Reply& reply) {
  AppendField(reply.bytes, std::int64_t{state.transmission.*kPause});
  return Refusal::kNone;
}

Refusal SetTerminator(State& state, const Arguments& arguments, Reply& reply) {
  const auto terminator = TerminatorNamed(arguments[0]);
  if (!terminator) return Refusal::kBadParameter;
  state.transmission.terminator = *terminator;
  return Done(reply);
}

Refusal AskTerminator(State& state, const Arguments&, Reply& reply) {
  AppendField(reply.bytes, NameOfTerminator(state.transmission.terminator));
  return Refusal::kNone;
}

Refusal Mute(State& state, const Arguments& arguments, Reply& reply) {
  const auto count = ParseInteger(arguments[0], 0, kMaxMute);
  if (!count) return Refusal::kBadParameter;
  state.mute = *count;
  return Done(reply);
}

constexpr Command kLineRows[] = {
    {"ECHO", 0, kAnyCount, EchoText},
    {"LONG?", 1, 1, LongLine},
    {"RAMP?", 1, 1, Ramp},
    {"HEX?", 1, 1, HexBytes},
    {"WAIT?", 1, 1, Wait},
    {"FILES?", 0, 0, CountFiles},
    {"FILE?", 1, 1, SendFile},
    {"FILESIZE?", 1, 1, SizeOfFile},
    {"DELAY", 1, 1, SetPause<&Transmission::delay_ms>},
    {"DELAY?", 0, 0, AskPause<&Transmission::delay_ms>},
    {"DRIP", 1, 1, SetPause<&Transmission::drip_ms>},
    {"DRIP?", 0, 0, AskPause<&Transmission::drip_ms>},
    {"TERM", 1, 1, SetTerminator},
    {"TERM?", 0, 0, AskTerminator},
    {"MUTE", 1, 1, Mute},
};

}  // namespace

std::span<const Command> LineCommands() { return kLineRows; }

}  // namespace kolvane::amplifier
