// The $ commands, one per line, after an answer of the instrument.
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "script/script_bench.h"

namespace kolvane::fuzz {
namespace {

constexpr int kMaxLines = 24;

/// Resets what a run changes; the list has no rows to empty.
void Reset(script::ScriptBench& bench) {
  bench.state = {};
  bench.terminal = {};
  bench.device = {};
  bench.library.calls.clear();
  bench.log.calls.clear();
  bench.log.open = false;
  bench.prompt.errors.clear();
  bench.list.ClearLineSelection(1);
  bench.list.ClearLineSelection(script::kListRows);
}

/// A level too deep is counted before it is refused, so only the lower end is fixed.
void CheckState(const script::InterpreterState& state) {
  Require(state.RepeatLevel >= -1);
  Require(state.IfDepth >= 0);
}

void Execute(script::ScriptBench& bench, std::string_view line) {
  bench.prompt.errors.clear();
  const bool done = bench.Execute(line);
  Require(bench.prompt.errors.size() == (done ? 0u : 1u));
  const int row = bench.list.current_row();
  Require(row >= 1 && row <= script::kListRows);
  if (!done)
    Require(row == script::kListRows && bench.prompt.errors[0].starts_with("Fehler in Befehlsliste (Zeile "));
  CheckState(bench.state.interpreter);
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static script::ScriptBench bench;
  fuzz::Reset(bench);
  fuzz::Input input(data, size);
  bench.device.last_result = static_cast<std::int8_t>(input.Byte());
  bench.terminal.last_answer.text = input.Until('\n');
  for (int lines = 0; lines < fuzz::kMaxLines && !input.empty(); ++lines)
    fuzz::Execute(bench, "$" + std::string(input.Until('\n')));
  return 0;
}
