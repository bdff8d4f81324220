// The program without a display, or with an output that cannot be written.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>
#include <QLibraryInfo>

#include "app/program.h"
#include "base/descriptor.h"
#include "base/temp_folder.h"

namespace kolvane::app {
namespace {

constexpr char kNoDisplay[] = "no display: DISPLAY and WAYLAND_DISPLAY name none that answers";
constexpr char kNoWayland[] =
    "no display: Qt's Wayland plug-in is missing (Debian package qt6-wayland), and DISPLAY names no X server "
    "that "
    "answers";

void ExpectNoDisplay(const std::map<std::string, std::string>& environment,
                     const std::string& text = kNoDisplay) {
  const Outcome outcome = RunProgram({}, {.environment = environment});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kolvane: " + text + "\n");
}

bool QtSupportsWayland() {
  const auto folder = QDir(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
  return !folder.entryList({QStringLiteral("libqwayland*")}).isEmpty();
}

TEST(NoWindow, NoVariableNamesADisplay) { ExpectNoDisplay({}); }

TEST(NoWindow, NobodyAnswersUnderTheNameOfADisplay) {
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

TEST(NoWindow, ACompositorThatQtDoesNotSupportIsNamed) {
  if (QtSupportsWayland()) GTEST_SKIP() << "Qt supports Wayland here";
  const base::TempFolder folder;
  const base::Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{AF_UNIX, {}};
  folder.Path("wayland-0").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  const std::map<std::string, std::string> session = {{"WAYLAND_DISPLAY", "wayland-0"},
                                                      {"XDG_RUNTIME_DIR", folder.path()}};
  ExpectNoDisplay(session, kNoWayland);
  auto only_x = session;
  only_x["QT_QPA_PLATFORM"] = "xcb";
  ExpectNoDisplay(only_x);
}

TEST(NoWindow, TheHelpExplainsTheseMessages) {
  const std::string page = base::ReadBytes(KOLVANE_HELP_FOLDER "/pages/meldungen-start.html");
  for (const char* text : {kNoDisplay, kNoWayland})
    EXPECT_NE(page.find("</a>" + std::string(text) + "</h2>"), std::string::npos) << text;
}

TEST(NoWindow, TheModesOfHostsNeedAHostsDevice) {
  for (const char* mode : {"0", "1"}) {
    const Outcome outcome = RunProgram({"--mode", mode});
    EXPECT_EQ(outcome.status, 1) << mode;
    EXPECT_EQ(outcome.err, "kolvane: Kein Geräteobjekt übergeben\n") << mode;
  }
}

TEST(NoWindow, HelpOrVersionThatCannotBeWrittenIsAFailure) {
  for (const char* option : {"--help", "--version"}) {
    const int full = open("/dev/full", O_WRONLY);
    const Outcome outcome = RunProgram({option}, {.output = full});
    EXPECT_EQ(outcome.status, 1) << option;
    EXPECT_EQ(outcome.err, "kolvane: cannot write: No space left on device\n") << option;
    close(full);
    EXPECT_EQ(RunProgram({option}).status, 0) << option;
  }
}

}  // namespace
}  // namespace kolvane::app
