// The program where it cannot show its window, or not write what it was asked for.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "app/program.h"
#include "base/temp_folder.h"

namespace kolvane::app {
namespace {

constexpr char kNoDisplay[] = "kolvane: no display: DISPLAY and WAYLAND_DISPLAY name none that answers\n";

void ExpectNoDisplay(const std::map<std::string, std::string>& environment) {
  const Outcome outcome = RunProgram({}, {.environment = environment});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, kNoDisplay);
}

TEST(NoWindow, NothingNamesADisplay) { ExpectNoDisplay({}); }

TEST(NoWindow, NobodyIsThereUnderTheNameOfADisplay) {
  const base::TempFolder folder;
  const std::string runtime = folder.Path(".");
  ExpectNoDisplay({{"WAYLAND_DISPLAY", "wayland-0"}, {"XDG_RUNTIME_DIR", runtime}});
  ExpectNoDisplay({{"WAYLAND_DISPLAY", folder.Path("socket")}});
  ExpectNoDisplay({{"WAYLAND_DISPLAY", "."}, {"XDG_RUNTIME_DIR", runtime}});
  ExpectNoDisplay({{"QT_QPA_PLATFORM", "wayland;xcb"},
                   {"WAYLAND_DISPLAY", "wayland-0"},
                   {"XDG_RUNTIME_DIR", runtime},
                   {"DISPLAY", folder.Path("no-server")}});
}

TEST(NoWindow, TheModesOfHostsNeedAHostsDevice) {
  for (const char* mode : {"0", "1"}) {
    const Outcome outcome = RunProgram({"--mode", mode});
    EXPECT_EQ(outcome.status, 1) << mode;
    EXPECT_EQ(outcome.err, "kolvane: Kein Geräteobjekt übergeben\n") << mode;
  }
}

TEST(NoWindow, AFailureToWriteHelpOrVersionIsOne) {
  for (const char* option : {"--help", "--version"}) {
    const int full = open("/dev/full", O_WRONLY);
    EXPECT_EQ(RunProgram({option}, {.output = full}).status, 1) << option;
    close(full);
    EXPECT_EQ(RunProgram({option}).status, 0) << option;
  }
}

}  // namespace
}  // namespace kolvane::app
