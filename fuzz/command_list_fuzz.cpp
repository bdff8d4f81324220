// Whole command lists, run and stepped through on an instrument that sends arbitrary bytes. A budget of rows
// ends loops.
#include <algorithm>
#include <utility>

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/session_rig.h"
#include "script/command_file.h"
#include "script/run_bench.h"
#include "script/script_core.h"

namespace kolvane::fuzz {
namespace {

constexpr int kMaxRows = 48;     // of a list
constexpr int kRunBudget = 200;  // rows executed
constexpr int kStepBudget = 40;

struct ListRig : SessionRig {
  ListRig() {
    host.at_yield = [this] {
      // All rows after the last one used are empty.
      if (host.yields >= kRunBudget || core.list.current_row() > rows) core.runner.Break();
    };
  }

  /// Resets everything that a run changes, except for the list.
  void ResetAll() {
    Reset();
    script = {};
    log.calls.clear();
    log.open = false;
    host.yields = 0;
    host.locks.clear();
  }

  void Fill(std::string_view text) {
    std::vector<std::string> lines;
    script::LineSplitter splitter([&](std::string_view line) {
      if (lines.size() < kMaxRows) lines.emplace_back(line);
    });
    splitter.Feed(text);
    splitter.Finish();
    const int before = std::exchange(rows, static_cast<int>(lines.size()));
    // Faster than ShowFile, which writes every row of the list.
    lines.resize(static_cast<std::size_t>(std::max(rows, before)));
    core.list.SetTexts(1, lines);
    core.list.SetCurrentRow(1);
  }

  int rows = 0;
  terminal::Exchange exchange{session, waits, state.options, output, clock, ","};
  script::ScriptState script;
  script::FakeRunHost host;
  script::ScriptCore core{{script, state, device_state, exchange, pane, waits, prompt, log, host}};
};

void Play(ListRig& rig) {
  rig.core.runner.Play();
  Require(rig.host.locks == std::vector<bool>({true, false}));
  Require(rig.host.yields <= kRunBudget);
}

void Step(ListRig& rig) {
  for (int steps = 0; steps < kStepBudget && rig.core.list.current_row() <= rig.rows; ++steps)
    rig.core.runner.SingleStep();
}

void CheckEnd(const ListRig& rig, bool whole) {
  Require(rig.script.run.ScriptRunning == 0);
  const int row = rig.core.list.current_row();
  Require(row >= 0 && row <= script::kListRows + 1);
  std::size_t list_errors = 0;
  for (const std::string& error : rig.prompt.errors)
    list_errors += error.starts_with("Fehler in Befehlsliste (Zeile ");
  // A run continues only after an error of the last row, which is the row at which it continues.
  if (whole) Require((list_errors > 0) == rig.core.runner.outcome().list_error);
}

}  // namespace
}  // namespace kolvane::fuzz

/// Three bytes of settings; up to the first NUL the list, after it the instrument's bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static fuzz::ListRig rig;
  rig.ResetAll();
  fuzz::Input input(data, size);
  const std::uint8_t settings = input.Byte();
  rig.state.receive.mode = settings % 3;
  rig.state.receive.binary_display = settings / 3 % 2;
  rig.state.options.show_response_times = settings / 6 % 2 != 0;
  rig.device_state.connected = settings / 12 % 2 == 0;
  rig.library.open_status = settings / 24 % 2 == 0 ? 0 : -7;
  rig.state.shown.count = std::to_string(input.Byte());
  const bool whole = input.Byte() % 4 != 0;
  rig.Fill(input.Until('\0'));
  const std::string_view sent = input.Rest();
  rig.library.Send(sent.substr(0, sent.size() / 2), sent.substr(sent.size() / 2));
  whole ? fuzz::Play(rig) : fuzz::Step(rig);
  fuzz::CheckEnd(rig, whole);
  return 0;
}
