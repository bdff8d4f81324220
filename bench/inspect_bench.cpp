// What a dump and a format template cost at their largest.

#include <benchmark/benchmark.h>

#include "base/temp_folder.h"
#include "inspect/decode.h"
#include "inspect/marked_bytes.h"

namespace kolvane::inspect {
namespace {

constexpr std::size_t kLargestDump = 32752;

void Dump(benchmark::State& bench) {
  const std::string marked = Marked(Ramp(kLargestDump));
  for (auto _ : bench) benchmark::DoNotOptimize(BuildDump(marked));
}
BENCHMARK(Dump)->Unit(benchmark::kMicrosecond);

// The yardstick: as many bytes written once as the dump has.
void CopyOfTheDump(benchmark::State& bench) {
  const std::string dump = DumpOf(Ramp(kLargestDump));
  for (auto _ : bench) benchmark::DoNotOptimize(std::string(dump));
}
BENCHMARK(CopyOfTheDump)->Unit(benchmark::kMicrosecond);

void RunFile(benchmark::State& bench, const std::string& text) {
  const base::TempFolder folder;
  base::WriteBytes(folder.Path("a.BNS"), text);
  const std::string dump = DumpOf(Ramp(kLargestDump));
  InspectorState state{.format_code = format::kTemplate, .network_order = true};
  DumpView view{dump, kFirstByte, 0};
  for (auto _ : bench) benchmark::DoNotOptimize(InspectBytePattern(folder.Path("a.BNS"), ",", view, state));
}

void TemplateOf1000Lines(benchmark::State& bench) {
  const char* const fields[] = {"BYTE;17",     "BYTE;4;3",  "SHORT;18;0;7", "SHORT;&H20",  "LONG;100",
                                "LONG;24;1;9", "FLOAT;200", "DOUBLE;200",   "STRING*16;40"};
  std::string text = "BYTECOUNT=257\r\n";
  for (std::size_t line = 1; line < 1000; ++line)
    text += "Field " + std::to_string(line) + ';' + fields[line % std::size(fields)] + "\r\n";
  RunFile(bench, text);
}
BENCHMARK(TemplateOf1000Lines)->Unit(benchmark::kMicrosecond);

void TemplateOf1000Failures(benchmark::State& bench) {
  std::string text = "BYTECOUNT=-1\r\n";
  for (int line = 1; line < 1000; ++line) text += "x;LONG;99999999999;99999;-99999\r\n";
  RunFile(bench, text);
}
BENCHMARK(TemplateOf1000Failures)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kolvane::inspect

BENCHMARK_MAIN();
