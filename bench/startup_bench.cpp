// From the start of the terminal to its first painted window, compared with an empty window with a text pane;
// its memory, and its activity while idle. Needs a display without a window manager. Usage: startup_bench
// [rounds] [idle seconds]

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "base/temp_folder.h"
#include "process.h"
#include "row.h"
#include "x_watch.h"

namespace kolvane::bench {
namespace {

constexpr double kMegabyte = 1e6;

void Sleep(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

// The cost of a program's start, in milliseconds and megabytes.
struct Start {
  double mapped = 0;
  double painted = 0;
  double resident = 0;
  double proportional = 0;  ///< shared memory counts proportionally
};

Start StartOf(const std::vector<std::string>& words, XWatch& watch) {
  const Process program(words);
  const FirstPaint paint = watch.Await(program.started());
  Sleep(0.3);  // for what it does after painting
  return {paint.mapped * 1e3, paint.painted * 1e3, program.Memory("Rss") / kMegabyte,
          program.Memory("Pss") / kMegabyte};
}

void MeasureStart(int rounds, XWatch& watch) {
  std::vector<Start> empties;
  std::vector<Start> terminals;
  // The first start of each reads the program from the disk.
  for (int round = -1; round < rounds; ++round) {
    const Start empty = StartOf({KOLVANE_EMPTY_WINDOW}, watch);
    const Start terminal = StartOf({KOLVANE_PROGRAM}, watch);
    if (round < 0) continue;
    empties.push_back(empty);
    terminals.push_back(terminal);
  }
  const auto compared = [&](double Start::*figure) {
    std::size_t at = 0;
    return Alternate(
        rounds, [&] { return empties[at].*figure; }, [&] { return terminals[at++].*figure; });
  };
  const char* const baseline = "empty Qt window with a text pane";
  PrintAtMostTimes({"start to first window mapped", baseline, "ms"}, compared(&Start::mapped), 2);
  PrintAtMostTimes({"start to first window painted", baseline, "ms"}, compared(&Start::painted), 2);
  const Comparison resident = compared(&Start::resident);
  PrintAtMost({"resident memory of the idle window", baseline, "MB"}, resident.baseline, resident.measured,
              60);
  PrintWithoutGoal({"the same, shared pages counted proportionally", baseline, "MB"},
                   compared(&Start::proportional));
}

struct Idle {
  double milliseconds = 0;
  double wake_ups = 0;
  double ticks = 0;
};

Idle IdleOf(const std::vector<std::string>& words, XWatch& watch, double seconds) {
  const Process program(words);
  watch.Await(program.started());
  watch.Focus();
  Sleep(2);
  const Process::Usage before = program.Used();
  Sleep(seconds);
  const Process::Usage after = program.Used();
  return {static_cast<double>(after.nanoseconds - before.nanoseconds) / 1e6,
          static_cast<double>(after.switches - before.switches),
          static_cast<double>(after.ticks - before.ticks)};
}

void MeasureIdle(double seconds, XWatch& watch) {
  const Idle empty = IdleOf({KOLVANE_EMPTY_WINDOW}, watch, seconds);
  const Idle terminal = IdleOf({KOLVANE_PROGRAM}, watch, seconds);
  const std::string claim =
      "idle window with the keyboard focus, " + std::to_string(std::lround(seconds)) + " s: ";
  const char* const baseline = "empty Qt window with a text pane";
  PrintAtMost({(claim + "processor time").c_str(), baseline, "ms"}, empty.milliseconds, terminal.milliseconds,
              0);
  PrintAtMost({(claim + "clock ticks").c_str(), baseline, "ticks"}, empty.ticks, terminal.ticks, 0);
  PrintAtMost({(claim + "wake-ups").c_str(), baseline, ""}, empty.wake_ups, terminal.wake_ups, 0);
}

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  using namespace kolvane::bench;
  // Separate settings and caches for the measurement, kept between the rounds.
  const kolvane::base::TempFolder home;
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
    setenv(name, home.Path(name).c_str(), 1), std::filesystem::create_directory(home.Path(name));
  std::filesystem::permissions(home.Path("XDG_RUNTIME_DIR"), std::filesystem::perms::owner_all);
  setenv("QT_QPA_PLATFORM", "xcb", 1);
  XWatch watch;
  MeasureStart(argc > 1 ? std::atoi(argv[1]) : 15, watch);
  MeasureIdle(argc > 2 ? std::atof(argv[2]) : 10, watch);
}
