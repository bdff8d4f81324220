// A file that may be a transcript: it is refused with one line, or played to a terminal that sends what it
// should.
#include <string>

#include "amplifier/replay.h"
#include "fuzz/input.h"
#include "fuzz/require.h"

namespace kolvane::fuzz {
namespace {

using amplifier::Conversation;
using amplifier::Replay;

// Nothing differs, and the instrument sends everything that it should.
void Play(const Conversation& conversation, bool recorded_times) {
  std::string expected;
  std::string sent;
  Replay::Clock::time_point now{};
  Replay replay(conversation, recorded_times, now);
  for (const amplifier::Message& each : conversation.messages) {
    Require(!each.bytes.empty() && each.line > 0);
    if (each.from_terminal) {
      replay.Take(each.bytes, now);
    } else {
      expected += each.bytes;
      if (const auto due = replay.Due(); due && *due > now) now = *due;
    }
    sent += replay.TakeDue(now);
    Require(replay.difference().empty());
  }
  if (const auto due = replay.Due()) sent += replay.TakeDue(*due);
  Require(replay.hung_up() == replay.HangsUp());
  Require(replay.finished() && sent == expected);
  replay.End();
  Require(replay.difference().empty());
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  fuzz::Input input(data, size);
  const auto read = amplifier::ReadTranscript(input.Rest());
  if (const auto* problem = std::get_if<amplifier::TranscriptProblem>(&read)) {
    fuzz::Require(problem->line > 0 && !problem->text.empty());
    return 0;
  }
  for (const amplifier::Conversation& each : std::get<0>(read)) {
    fuzz::Require(!each.messages.empty() || each.hang_up);
    for (const bool recorded_times : {false, true}) fuzz::Play(each, recorded_times);
  }
  return 0;
}
