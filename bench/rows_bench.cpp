// How many rows a command list without a window gets through in a second, and what loading and saving cost.

#include <benchmark/benchmark.h>

#include <string>

#include "script/command_file.h"
#include "script/run_bench.h"
#include "script/temp_folder.h"

namespace kolvane::script {
namespace {

/// The least that a front end does.
class BareHost final : public RunHost {
 public:
  void LockGUI(bool) override {}
  void Yield() override { ++rows; }
  std::int64_t rows = 0;
};

struct BareRun : terminal::SessionBench {
  void Play(benchmark::State& bench, const char* rows) {
    FillList(core.list, rows);
    for (auto _ : bench) core.runner.Play();
    bench.SetItemsProcessed(host.rows);
  }

  ScriptState script;
  device::FakePortLibrary library;
  device::FakePortLibrarySource libraries{&library};
  terminal::FakeClock clock;
  FakeScriptLog script_log;
  BareHost host;
  ScriptCore core{
      {script, state, device_state, session, output, pane, libraries, clock, prompt, script_log, host, ","}};
};

void NestedRepeats(benchmark::State& bench) {
  BareRun().Play(bench, "$REPEAT 99|$REPEAT 99|$REPEAT 9|$ENDREPEAT|$ENDREPEAT|$ENDREPEAT|$STOP");
}
BENCHMARK(NestedRepeats)->Unit(benchmark::kMillisecond);

void Conditions(benchmark::State& bench) {
  BareRun().Play(bench,
                 "$REPEAT 99999|$IFEQUAL x|A|$ENDIF|$IFLESS x|$CLOSELOG|$ENDIF|'comment||$ENDREPEAT|$STOP");
}
BENCHMARK(Conditions)->Unit(benchmark::kMillisecond);

void Jumps(benchmark::State& bench) {
  BareRun().Play(bench, "$REPEAT 9999|$GOTO here|'there:|here:|$ENDREPEAT|$STOP");
}
BENCHMARK(Jumps)->Unit(benchmark::kMillisecond);

void FullList(CommandList& list) {
  for (int row = 1; row <= kListRows; ++row)
    list.SetText(row, "MSV? " + std::to_string(row) + ",4800,0 'Größe");
}

void Load(benchmark::State& bench) {
  TempFolder folder;
  CommandList list;
  FullList(list);
  bool ok = WriteCommandFile(list, folder.Path("a.CMD")).ok();
  for (auto _ : bench) ok &= LoadCommandFile(list, folder.Path("a.CMD")).ok();
  if (!ok) bench.SkipWithError("cannot load");
}
BENCHMARK(Load)->Unit(benchmark::kMicrosecond);

void Save(benchmark::State& bench) {
  TempFolder folder;
  CommandList list;
  FullList(list);
  bool ok = true;
  for (auto _ : bench) ok &= WriteCommandFile(list, folder.Path("a.CMD")).ok();
  if (!ok) bench.SkipWithError("cannot save");
}
BENCHMARK(Save)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kolvane::script

BENCHMARK_MAIN();
