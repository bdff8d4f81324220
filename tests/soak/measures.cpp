#include "soak/measures.h"

#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace kolvane::soak {
namespace {

int CountEntries(const char* folder) {
  const auto entries = std::filesystem::directory_iterator(folder);
  return static_cast<int>(std::distance(begin(entries), end(entries)));
}

}  // namespace

ResourceUse CurrentResourceUse() {
  malloc_trim(0);
  const struct mallinfo2 heap = mallinfo2();
  std::size_t size = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return {static_cast<double>(heap.uordblks + heap.hblkhd),
          static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)),
          CountEntries("/proc/self/fd"), CountEntries("/proc/self/task")};
}

std::string Megabytes(double bytes) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f MB", bytes / 1e6);
  return text;
}

void Expectations::Expect(bool holds, const std::string& what) {
  std::printf("%-7s%s\n", holds ? "holds" : "FAILS", what.c_str());
  all_hold_ = all_hold_ && holds;
}

}  // namespace kolvane::soak
