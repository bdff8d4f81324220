// The checker's findings in a list, compared with what the interpreter refuses when the list is played three
// times.
#include "base/encoding.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "script/checker/check_replay.h"
#include "script/command_file.h"

namespace kolvane::fuzz {
namespace {

constexpr std::size_t kMaxRows = 48;  // of a list
constexpr std::size_t kMaxAnswers = 8;
constexpr int kBudget = 300;  // rows of a run

std::vector<std::string> Lines(std::string_view bytes, std::size_t max_lines) {
  std::vector<std::string> lines;
  script::LineSplitter splitter([&](std::string_view line) {
    if (lines.size() < max_lines) lines.push_back(base::FromWindows1252(line));
  });
  splitter.Feed(bytes);
  splitter.Finish();
  return lines;
}

/// A state that earlier runs may leave, counters at their limits included.
script::InterpreterState State(Input& input) {
  static constexpr std::int16_t kDepths[] = {0, 1, -1, 30, -30, 32766, 32767, -32767, -32768};
  static constexpr std::int32_t kCounts[] = {0, 1, -1, 2, INT32_MIN};
  script::InterpreterState state;
  state.RepeatLevel = static_cast<std::int16_t>(input.Byte() % 20 - 1);
  state.IfDepth = kDepths[input.Byte() % std::size(kDepths)];
  const std::uint8_t flags = input.Byte();
  state.SkipRows = flags % 2 != 0;
  if (flags / 2 % 2 != 0) state.ParamList = {"1", "2"};
  for (std::int16_t& row : state.RepeatRow) row = static_cast<std::int16_t>(input.Byte() % kMaxRows);
  state.RepeatCount.fill(kCounts[flags / 4 % std::size(kCounts)]);
  return state;
}

}  // namespace
}  // namespace kolvane::fuzz

/// A byte of settings, optionally a state left by earlier runs; up to the first NUL the list, after it the
/// answers.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static script::checker::CheckReplay replay;
  replay.Reset();
  fuzz::Input input(data, size);
  const std::uint8_t settings = input.Byte();
  replay.SetLogOpen(settings % 2 != 0);
  if (settings / 4 % 2 != 0) replay.SetState(fuzz::State(input));
  const std::vector<std::string> rows = fuzz::Lines(input.Until('\0'), fuzz::kMaxRows);
  replay.SetAnswers(fuzz::Lines(input.Rest(), fuzz::kMaxAnswers));
  for (int run = 0; run < 3; ++run) {
    const std::string disagreement = replay.Compare(rows, settings / 2 % 2 != 0, fuzz::kBudget);
    if (!disagreement.empty()) std::fprintf(stderr, "%s\n", disagreement.c_str());
    fuzz::Require(disagreement.empty());
  }
  return 0;
}
