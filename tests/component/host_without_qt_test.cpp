// A host that does not use Qt; only the code here that closes the window does.

#include <gtest/gtest.h>

#include <QApplication>

#include <clocale>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "base/loopback.h"
#include "base/temp_folder.h"
#include "component/closing_host.h"
#include "kolvane/CommandRun.h"
#include "kolvane/MainClass.h"
#include "kolvane/Shell.h"

namespace kolvane {
namespace {

class HostWithoutQtTest : public testing::Test {
 protected:
  HostWithoutQtTest() {
    TerminalOptions options;
    options.SettingsFile = folder_.Path("kolvane.ini");
    terminal_.SetOptions(options);
  }

  base::TempFolder folder_;
  MainClass terminal_;
};

TEST_F(HostWithoutQtTest, CannotUnloadBeforeTheFirstWindow) { EXPECT_FALSE(terminal_.CanUnload().ToBool()); }

TEST_F(HostWithoutQtTest, OpensTheTerminalTwiceAndLeavesNothing) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  std::setlocale(LC_ALL, "C");
  for (int i = 0; i < 2; ++i) {
    const auto host = std::make_shared<ClosingHost>();
    terminal_.InitTerminal(host);
    terminal_.OpenTerminal(1, 0);
    EXPECT_TRUE(host->had_application);
    EXPECT_FALSE(host->caret_blinks) << "an idle window would keep the processor awake";
    EXPECT_EQ(host->locale, "C") << "the host's numbers and texts keep their form";
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
    EXPECT_EQ(host.use_count(), 1);
  }
  EXPECT_TRUE(terminal_.CanUnload().ToBool());
}

TEST_F(HostWithoutQtTest, OnAThreadOtherThanTheMainOneItIsRefused) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  const auto host = std::make_shared<ClosingHost>();
  terminal_.InitTerminal(host);
  std::string error;
  std::thread([&] {
    try {
      terminal_.OpenTerminal(1, 0);
    } catch (const std::runtime_error& thrown) {
      error = thrown.what();
    }
  }).join();
  EXPECT_EQ(error,
            "OpenTerminal was called on another thread than the main one, in a process without an "
            "application object");
  EXPECT_FALSE(host->had_application);
  terminal_.OpenTerminal(1, 0);
  EXPECT_TRUE(host->had_application);
}

TEST_F(HostWithoutQtTest, OpensAgainAfterItsEventLoopsWereEnded) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  const auto host = std::make_shared<ClosingHost>();
  host->on_shown = [] { QCoreApplication::exit(0); };
  terminal_.InitTerminal(host);
  terminal_.OpenTerminal(1, 0);
  bool shown = false;
  host->on_shown = [&] {
    shown = true;
    QApplication::closeAllWindows();
  };
  terminal_.InitTerminal(host);
  terminal_.OpenTerminal(1, 0);
  EXPECT_TRUE(shown) << "the first terminal's end does not end the second";
}

TEST_F(HostWithoutQtTest, GetsAnErrorIfNoPlatformWorks) {
  for (const char* platform : {"nonsense", "nonsense;alike", ";", "linuxfb:fb=/dev/null"}) {
    setenv("QT_QPA_PLATFORM", platform, 1);
    try {
      terminal_.OpenTerminal(2, 0);
      ADD_FAILURE() << platform;
    } catch (const NoDisplay& error) {
      EXPECT_EQ(std::string(error.what()),
                std::string("no display: nothing works of what QT_QPA_PLATFORM names: ") + platform);
    }
  }
}

TEST_F(HostWithoutQtTest, TakesTheFirstPlatformThatWorks) {
  setenv("QT_QPA_PLATFORM", "nonsense;OffScreen", 1);
  const auto host = std::make_shared<ClosingHost>();
  terminal_.InitTerminal(host);
  terminal_.OpenTerminal(1, 0);
  EXPECT_TRUE(host->had_application);
}

TEST_F(HostWithoutQtTest, GetsAnErrorWithoutADisplay) {
  for (const char* variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) unsetenv(variable);
  EXPECT_THROW(terminal_.OpenTerminal(2, 0), std::runtime_error);
}

TEST(RunWithoutWindow, KeepsTheHostsEnvironmentWhileItRuns) {
  setenv("KOLVANE_PORT_LIBRARY", KOLVANE_COMPLETE_LIBRARY, 1);
  unsetenv("KOLVANE_COM1");
  int asked = 0;
  CommandRunOptions options;
  options.Connect = "ASRL/dev/ttyUSB9::INSTR";
  options.StopRequested = [&asked] {
    EXPECT_EQ(std::getenv("KOLVANE_COM1"), nullptr);
    ++asked;
    return true;
  };
  EXPECT_EQ(SendCommands({"X"}, options), CommandRunStatus::kStopped);
  EXPECT_GT(asked, 0);
  unsetenv("KOLVANE_PORT_LIBRARY");
}

TEST(RunWithoutWindow, LeavesTheHostsEnvironmentAsItWas) {
  CommandRunOptions options;
  options.Connect = "ASRL/nonexistent/line::INSTR";
  unsetenv("KOLVANE_COM1");
  EXPECT_EQ(SendCommands({"X"}, options), CommandRunStatus::kNotConnected);
  EXPECT_EQ(std::getenv("KOLVANE_COM1"), nullptr);
  setenv("KOLVANE_COM1", "/dev/ttyUSB7", 1);
  EXPECT_EQ(SendCommands({"X"}, options), CommandRunStatus::kNotConnected);
  EXPECT_STREQ(std::getenv("KOLVANE_COM1"), "/dev/ttyUSB7");
  unsetenv("KOLVANE_COM1");
}

class RunForAHost : public testing::Test {
 protected:
  RunForAHost() {
    options_.Connect = "OFFLINE";
    options_.OnLine = [this](LineKind kind, const std::string& line) { lines_.emplace_back(kind, line); };
  }

  std::vector<LineKind> Kinds() const {
    std::vector<LineKind> kinds;
    for (const auto& [kind, line] : lines_) kinds.push_back(kind);
    return kinds;
  }

  CommandRunOptions options_;
  std::vector<std::pair<LineKind, std::string>> lines_;
};

TEST_F(RunForAHost, PassesEachLineWithItsKind) {
  options_.ShowCommands = options_.ShowTimes = options_.Verbose = true;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(SendCommands({"MSV?"}, options_), CommandRunStatus::kDone);
  EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(Kinds(), (std::vector{LineKind::kNotice, LineKind::kCommand, LineKind::kAnswer, LineKind::kTime,
                                  LineKind::kNotice}));
  EXPECT_EQ(lines_[1].second, "MSV?");
  EXPECT_TRUE(lines_[2].second.starts_with("Test mode answer at ")) << lines_[2].second;
}

TEST_F(RunForAHost, PassesErrorsFromBeforeTheRun) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(RunCommandList("/nonexistent.CMD", options_), CommandRunStatus::kUsage);
  options_.Connect = "NOWHERE";
  EXPECT_EQ(SendCommands({"MSV?"}, options_), CommandRunStatus::kUsage);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(Kinds(), (std::vector{LineKind::kError, LineKind::kError}));
  EXPECT_NE(lines_[0].second.find("/nonexistent.CMD"), std::string::npos);
}

TEST_F(RunForAHost, EndsByTheExceptionOfTheFunction) {
  int handed = 0;
  options_.OnLine = [&](LineKind, const std::string& line) {
    ++handed;
    throw std::logic_error(line);
  };
  EXPECT_THROW(SendCommands({"ONE", "TWO"}, options_), std::logic_error);
  EXPECT_EQ(handed, 1);
}

TEST_F(RunForAHost, EndsByTheExceptionOfTheOtherFunction) {
  options_.Verbose = true;
  options_.StopRequested = []() -> bool { throw std::logic_error("no"); };
  EXPECT_THROW(SendCommands({"ONE"}, options_), std::logic_error);
  EXPECT_EQ(Kinds(), (std::vector{LineKind::kNotice, LineKind::kNotice})) << "connected and disconnected";
}

// The port library is waiting when the function is called for the sixth time.
class RunWhoseWaitThrows : public RunForAHost {
 protected:
  RunWhoseWaitThrows() {
    options_.Connect = "TCPIP::127.0.0.1::" + std::to_string(silent_.port()) + "::SOCKET";
    options_.TimeoutMs = 60'000;
    options_.StopRequested = [this] {
      if (++calls_ == 6) throw std::logic_error("no");
      return false;
    };
  }

  const base::Listener silent_;
  int calls_ = 0;
};

TEST_F(RunWhoseWaitThrows, EndsDuringAnAnswer) {
  options_.ShowCommands = true;
  EXPECT_THROW(SendCommands({"ONE", "TWO"}, options_), std::logic_error);
  EXPECT_EQ(calls_, 6);
  for (const auto& [kind, line] : lines_) EXPECT_NE(line, "TWO");
}

TEST_F(RunWhoseWaitThrows, EndsAShellByTheExceptionOfItsFunction) {
  ShellHost host;
  std::swap(host.GiveUp, options_.StopRequested);
  int lines = 0;
  host.ReadLine = [&lines](const std::string&, std::string& line) {
    line = "ONE";
    return ++lines <= 2 ? ShellInput::kLine : ShellInput::kEnd;
  };
  EXPECT_THROW(RunShell(host, options_), std::logic_error);
  EXPECT_EQ(calls_, 6);
  EXPECT_EQ(lines, 1);
}

TEST_F(RunWhoseWaitThrows, EndsDuringADelay) {
  const base::TempFolder folder;
  folder.Write("delay.CMD", "$DELAY 60000\r\n$DELAY 60000\r\n");
  EXPECT_THROW(RunCommandList(folder.Path("delay.CMD"), options_), std::logic_error);
  EXPECT_EQ(calls_, 6);
}

}  // namespace
}  // namespace kolvane
