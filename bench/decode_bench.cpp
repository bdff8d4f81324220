// `kolvane dump` and `kolvane decode` as whole processes, beside xxd and a Python script with a struct loop.
// Usage: decode_bench [MiB] [rounds]

#include <cstdlib>
#include <random>
#include <string>

#include "base/temp_folder.h"
#include "process.h"
#include "row.h"

namespace kolvane::bench {
namespace {

constexpr std::size_t kRecord = 16;
constexpr char kTemplate[] =
    "BYTECOUNT=16\r\nCount;LONG;0\r\nChannel;SHORT;4\r\nState;SHORT;6\r\nValue;DOUBLE;8\r\n";

// A straightforward script: a row of CSV for each record, in the order of the file.
constexpr char kScript[] = R"(
import csv, struct, sys
with open(sys.argv[1], "rb") as file:
    data = file.read()
rows = csv.writer(sys.stdout)
rows.writerow(["Count", "Channel", "State", "Value"])
rows.writerows(struct.iter_unpack("<ihhd", data))
)";

// Records with values like measured ones.
std::string Records(std::size_t bytes) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> value(-2'000'000, 2'000'000);
  std::string all(bytes, '\0');
  for (std::size_t at = 0; at < bytes; at += kRecord) {
    const auto count = static_cast<std::int32_t>(at / kRecord);
    const std::int16_t small[] = {static_cast<std::int16_t>(count % 8), static_cast<std::int16_t>(count % 3)};
    const double number = value(random) / 1e4;
    all.replace(at, 4, reinterpret_cast<const char*>(&count), 4);
    all.replace(at + 4, 4, reinterpret_cast<const char*>(small), 4);
    all.replace(at + 8, 8, reinterpret_cast<const char*>(&number), 8);
  }
  return all;
}

double SecondsOfProgram(const std::vector<std::string>& words) {
  return SecondsOf([&] {
    Process program(words);
    if (program.Wait() != 0) std::abort();
  });
}

void Compare(const Claim& claim, const std::vector<std::string>& baseline,
             const std::vector<std::string>& measured, int rounds) {
  const Comparison comparison = Alternate(
      rounds, [&] { return SecondsOfProgram(baseline); }, [&] { return SecondsOfProgram(measured); });
  PrintAtMostTimes(claim, comparison, 1);
}

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  using namespace kolvane::bench;
  const std::size_t size = static_cast<std::size_t>(argc > 1 ? std::atoi(argv[1]) : 16) << 20;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 7;
  const kolvane::base::TempFolder folder;
  folder.Write("records", Records(size));
  folder.Write("a.BNS", kTemplate);
  folder.Write("a.py", kScript);
  const std::string file = folder.Path("records");
  const std::string mebibytes = std::to_string(size >> 20) + " MiB";
  const std::string dump = "kolvane dump of " + mebibytes;
  Compare({dump.c_str(), "xxd", "s"}, {"/usr/bin/xxd", file}, {KOLVANE_PROGRAM, "dump", file}, rounds);
  const std::vector<std::string> python = {"/usr/bin/python3", folder.Path("a.py"), file};
  for (const char* format : {"csv", "json"}) {
    const std::string decode = "kolvane decode of " + std::to_string(size / kRecord) + " records, " + format;
    Compare({decode.c_str(), "Python: struct.iter_unpack, csv", "s"}, python,
            {KOLVANE_PROGRAM, "decode", file, "--template", folder.Path("a.BNS"), "--repeat", "all",
             "--format", format},
            rounds);
  }
}
