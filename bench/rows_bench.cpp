// How many rows per second a command list executes without a window. Usage: rows_bench [rounds]

#include <cstdlib>
#include <string>

#include "row.h"
#include "script/run_bench.h"

namespace kolvane::script {
namespace {

/// The minimal front end.
class BareHost final : public RunHost {
 public:
  void LockGUI(bool) override {}
  void Yield() override { ++rows; }
  std::int64_t rows = 0;
};

struct BareRun : terminal::SessionBench {
  double RowsPerSecond() {
    host.rows = 0;
    const double seconds = bench::SecondsOf([this] { core.runner.Play(); });
    return static_cast<double>(host.rows) / seconds;
  }

  ScriptState script;
  terminal::FakeClock clock;
  terminal::Exchange exchange{session, waits, state.options, output, clock, ","};
  BareHost host;
  ScriptCore core{{script, state, device_state, exchange, pane, waits, prompt, log, host}};
};

// The minimal cost of a row: reading its text.
double TextsPerSecond() {
  constexpr int passes = 1000;
  const std::vector<std::string> rows(kListRows, "$IFEQUAL x|A");
  const double seconds = bench::SecondsOf([&] {
    for (int pass = 0; pass < passes; ++pass) {
      for (const std::string& row : rows) {
        volatile bool special = row.starts_with('$');
        (void)special;
      }
    }
  });
  return static_cast<double>(passes) * kListRows / seconds;
}

void Measure(const char* what, const char* rows, int rounds) {
  BareRun run;
  FillList(run.core.list, rows);
  const bench::Comparison comparison =
      bench::Alternate(rounds, TextsPerSecond, [&] { return run.RowsPerSecond(); });
  const std::string claim = std::string("rows of a list that need no device, without a window: ") + what;
  bench::PrintAtLeast({claim.c_str(), "reading each text once", "rows/s"}, comparison.baseline,
                      comparison.measured, 100'000);
}

}  // namespace
}  // namespace kolvane::script

int main(int argc, char** argv) {
  using kolvane::script::Measure;
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 9;
  Measure("nested repeats", "$REPEAT 99|$REPEAT 99|$REPEAT 9|$ENDREPEAT|$ENDREPEAT|$ENDREPEAT|$STOP", rounds);
  Measure("conditions",
          "$REPEAT 99999|$IFEQUAL x|A|$ENDIF|$IFLESS x|$CLOSELOG|$ENDIF|'comment||$ENDREPEAT|$STOP", rounds);
  Measure("jumps", "$REPEAT 9999|$GOTO here|'there:|here:|$ENDREPEAT|$STOP", rounds);
}
