// The cost of the largest dump and the largest format template. Usage: inspect_bench [rounds]

#include <cstdlib>

#include "base/temp_folder.h"
#include "inspect/decode.h"
#include "inspect/marked_bytes.h"
#include "row.h"

namespace kolvane::inspect {
namespace {

constexpr std::size_t kLargestDump = 32752;

// Keeps the compiler from removing an unused result.
template <typename Value>
void Use(const Value& value) {
  asm volatile("" : : "r"(&value) : "memory");
}

double MillisecondsPerCall(const std::function<void()>& work) {
  constexpr int times = 20;
  return bench::SecondsOf([&] {
           for (int i = 0; i < times; ++i) work();
         }) /
         times * 1e3;
}

void MeasureDump(int rounds) {
  const std::string marked = Marked(Ramp(kLargestDump));
  const std::string dump = DumpOf(Ramp(kLargestDump));
  const bench::Comparison comparison = bench::Alternate(
      rounds, [&] { return MillisecondsPerCall([&] { Use(std::string(dump)); }); },
      [&] { return MillisecondsPerCall([&] { Use(BuildDump(marked)); }); });
  bench::PrintAtMost({"a dump of 32,752 bytes", "copying it", "ms"}, comparison.baseline, comparison.measured,
                     2);
}

void MeasureTemplate(const char* claim, const std::string& text, int rounds) {
  const base::TempFolder folder;
  base::WriteBytes(folder.Path("a.BNS"), text);
  const std::string dump = DumpOf(Ramp(kLargestDump));
  InspectorState state{.format_code = format::kTemplate, .network_order = true};
  DumpView view{dump, kFirstByte, 0};
  const bench::Comparison comparison = bench::Alternate(
      rounds, [&] { return MillisecondsPerCall([&] { Use(base::ReadBytes(folder.Path("a.BNS"))); }); },
      [&] {
        return MillisecondsPerCall([&] { Use(InspectBytePattern(folder.Path("a.BNS"), ",", view, state)); });
      });
  bench::PrintAtMost({claim, "reading the file", "ms"}, comparison.baseline, comparison.measured, 2);
}

std::string FieldsOfAllKinds() {
  const char* const fields[] = {"BYTE;17",     "BYTE;4;3",  "SHORT;18;0;7", "SHORT;&H20",  "LONG;100",
                                "LONG;24;1;9", "FLOAT;200", "DOUBLE;200",   "STRING*16;40"};
  std::string text = "BYTECOUNT=257\r\n";
  for (std::size_t line = 1; line < 1000; ++line)
    text += "Field " + std::to_string(line) + ';' + fields[line % std::size(fields)] + "\r\n";
  return text;
}

std::string FailingFields() {
  std::string text = "BYTECOUNT=-1\r\n";
  for (int line = 1; line < 1000; ++line) text += "x;LONG;99999999999;99999;-99999\r\n";
  return text;
}

}  // namespace
}  // namespace kolvane::inspect

int main(int argc, char** argv) {
  using namespace kolvane::inspect;
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
  MeasureDump(rounds);
  MeasureTemplate("a template of 1,000 lines", FieldsOfAllKinds(), rounds);
  MeasureTemplate("a template of 1,000 lines that all fail", FailingFields(), rounds);
}
