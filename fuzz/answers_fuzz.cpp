// Bytes of an instrument, read as answers in each mode and format: no byte is lost, doubled or invented.
#include "base/encoding.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/session_rig.h"
#include "fuzz/utf8.h"
#include "terminal/session.h"

namespace kolvane::fuzz {
namespace {

using terminal::receive_mode::kAuto;
using terminal::receive_mode::kCount;

constexpr int kMaxAnswers = 8;
constexpr std::string_view kTerminators[] = {"", "\r\n", "\n", "\r", "a", " ", "\xC3\xBC", "\xE2\x82\xAC"};

/// Takes the settings of a run from its first three bytes.
void Configure(terminal::TerminalState& state, Input& input) {
  const std::uint8_t settings = input.Byte();
  state.receive.mode = settings % 3;
  state.receive.binary_display = settings / 3 % 2;
  state.receive.receive_terminator = kTerminators[settings / 6 % std::size(kTerminators)];
  state.shown.format = state.receive.mode == kAuto ? 1 : 0;
  state.shown.count = std::to_string(input.Byte());
}

std::string Shown(std::string_view bytes, const terminal::TerminalState& state) {
  std::string text;
  terminal::AppendDisplayForm(bytes, state.receive.binary_display != 0, text);
  return text;
}

/// `bytes` without what an answer strips at its ends.
std::string_view Core(std::string_view bytes, char terminator) {
  const auto is_edge = [&](char c) {
    return c == ' ' || c == '\0' || c == '\r' || c == '\n' || c == terminator;
  };
  while (!bytes.empty() && is_edge(bytes.front())) bytes.remove_prefix(1);
  while (!bytes.empty() && is_edge(bytes.back())) bytes.remove_suffix(1);
  return bytes;
}

char LastByte(std::string_view terminator) {
  const std::string bytes = base::ToWindows1252(terminator);
  return bytes.empty() ? '\0' : bytes.back();
}

/// `taken`: the bytes read from the instrument for this answer.
void CheckAnswer(const terminal::TerminalState& state, const std::string& taken, bool received) {
  const std::string& answer = state.last_answer.text;
  const std::string& terminator = state.receive.receive_terminator;
  Require(IsUtf8(answer));
  if (state.receive.mode == kAuto) {
    Require(received == !taken.empty());
    Require(answer == Shown(taken, state));
  } else if (!received) {
    Require(taken.empty() && !answer.empty());
  } else if (state.receive.mode == kCount) {
    Require(answer == Shown(taken, state));
  } else {
    const std::string bytes = base::ToWindows1252(answer);
    const char last = LastByte(terminator);
    Require(Core(bytes, last) == (terminator.empty() ? "" : Core(taken, last)));
  }
}

/// Whether an answer or a part of one was received.
bool ReadOne(SessionRig& rig) {
  const std::size_t before = rig.library.consumed().size();
  const std::size_t lines = rig.pane.lines.size();
  const bool received = rig.session.GetAnswer();
  Require(rig.pane.lines.size() == lines + 1);
  CheckAnswer(rig.state, rig.library.consumed().substr(before), received);
  return rig.library.consumed().size() > before;
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static fuzz::SessionRig rig;
  rig.Reset();
  fuzz::Input input(data, size);
  fuzz::Configure(rig.state, input);
  const std::string_view first = input.Take(input.Byte());
  const std::string sent = std::string(first) + std::string(input.Rest());
  rig.library.Send(first, input.Rest());
  for (int answers = 0; answers < fuzz::kMaxAnswers && fuzz::ReadOne(rig);) ++answers;
  fuzz::Require(sent.starts_with(rig.library.consumed()));
  fuzz::Require(rig.library.consumed().size() + rig.library.left() == sent.size());
  return 0;
}
