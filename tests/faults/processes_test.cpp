// Influences from outside the program: signals, limits, other users, other clocks and languages.

#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "devlnk/status.h"
#include "faults/privileges.h"
#include "faults/shim_run.h"
#include "faults/window_program.h"

namespace kolvane::faults {
namespace {

using Words = std::vector<std::string>;

class Processes : public testing::Test {
 protected:
  Words List(const std::string& rows, const FaultyInstrument& instrument, const char* timeout_ms = "20000") {
    base::WriteBytes(folder_.Path("a.CMD"), rows);
    return {"run",   folder_.Path("a.CMD"), "--connect", instrument.Resource(), "--timeout", timeout_ms,
            "--log", folder_.Path("a.LOG")};
  }
  std::string Log() const { return base::ReadBytes(folder_.Path("a.LOG")); }

  base::TempFolder folder_;
};

class OnPort : public Processes, public testing::WithParamInterface<Port> {};
INSTANTIATE_TEST_SUITE_P(Ports, OnPort, testing::ValuesIn(kPorts),
                         [](const auto& port) { return NameOf(port.param); });

constexpr std::string_view kBytesWaiting = "kolvane: 14 Bytes warten\n";

TEST_P(OnPort, Row18TheInstrumentGoesInTheMiddleOfAList) {
  FaultyInstrument instrument(GetParam(), [](Wire& wire) {
    wire.Send("part of an ans");
    return After::kEnd;
  });
  const app::Outcome outcome = app::RunProgram(List("ONE\r\nFAULT\r\nTHREE\r\n", instrument),
                                               {.environment = instrument.Environment()});
  const std::string end = GetParam() == Port::kTcp ? "-40" : "-41";
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(outcome.out, "ONE\n" + end + "\n" + end + "\n");
  const std::string words =
      "kolvane: " + end +
      (end == "-40" ? ": Verbindung vom Gerät geschlossen\n" : ": Verbindung abgerissen\n");
  // A line that disappears may lose its last bytes.
  std::string reported = outcome.err;
  if (reported.ends_with(kBytesWaiting)) reported.resize(reported.size() - kBytesWaiting.size());
  EXPECT_EQ(reported, words + "kolvane: Write error: " + end + "\n" + words);
  EXPECT_EQ(Log(), "ONE\r\n" + end + "\r\n" + end + "\r\n");
}

TEST_P(OnPort, Row22NoCarrierInTheMiddleOfAList) {
  FaultyInstrument instrument(GetParam(), [](Wire& wire) {
    wire.Send("\r\nNO CARRIER\r\n");
    while (wire.Line()) {
    }
    return After::kEnd;
  });
  const app::Outcome outcome = app::RunProgram(List("ONE\r\nFAULT\r\nTWO\r\nTHREE\r\n", instrument, "500"),
                                               {.environment = instrument.Environment()});
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(outcome.out, "ONE\n\nNO CARRIER\n-30\n");
  EXPECT_EQ(Log(), "ONE\r\n\r\nNO CARRIER\r\n-30\r\n");
}

class Signalled : public Processes, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(Signals, Signalled, testing::Values(SIGTERM, SIGHUP, SIGINT, SIGKILL),
                         [](const auto& number) {
                           return std::string("Signal") + std::to_string(number.param);
                         });

TEST_P(Signalled, Row29TheLogHoldsWholeLinesAndTheConnectionIsClosed) {
  FaultyInstrument instrument(Port::kTcp, [](Wire& wire) {
    wire.AwaitEndOfFault();
    wire.Send("FAULT\r\n");
    return After::kContinue;
  });
  app::Program program(List("ONE\r\nFAULT\r\nTHREE\r\n", instrument));
  instrument.AwaitFault();
  program.Signal(GetParam());
  instrument.EndFault();
  const app::Outcome outcome = program.Wait();
  const bool killed = GetParam() == SIGKILL;
  EXPECT_EQ(outcome.status, killed ? -SIGKILL : 1);
  EXPECT_EQ(outcome.out, killed ? "ONE\n" : "ONE\nFAULT\n");
  EXPECT_EQ(Log(), killed ? "ONE\r\n" : "ONE\r\nFAULT\r\n");
  instrument.AwaitEnds(1);
  EXPECT_EQ(instrument.lines(), (Words{"ONE", "FAULT"}));
}

TEST_F(Processes, Row29AMessageBeforeTheWindowEndsByTheSignalToo) {
  std::filesystem::create_directories(folder_.Path("config/Kolvane"));
  base::WriteBytes(folder_.Path("config/") + kSettingsFile, "[TERMINAL]\nRCVMODE=none\n");
  bool hung = false;
  const app::Outcome outcome = WindowProgram(folder_.Path("config"), folder_.Path("")).End(&hung);
  EXPECT_FALSE(hung);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("[TERMINAL] RCVMODE=none"), std::string::npos) << outcome.err;
}

// Small numbers of descriptors are too few; from some number on they are enough.
TEST_F(Processes, Row28TooFewDescriptors) {
  FaultyInstrument instrument(Port::kTcp, NoFault);
  bool enough = false;
  for (int number = 3; number < 40 && !enough; ++number) {
    SCOPED_TRACE(number);
    std::filesystem::remove(folder_.Path("a.LOG"));
    app::Program program(List("ONE\r\nTWO\r\n", instrument),
                         {.wrapper = {"prlimit", "--nofile=" + std::to_string(number)}});
    const app::Outcome outcome = program.Wait();
    ASSERT_GE(outcome.status, 0);
    enough = outcome.status == 0 && outcome.err.empty();
    EXPECT_EQ(enough, outcome.out + Log() == "ONE\nTWO\nONE\r\nTWO\r\n");
  }
  EXPECT_TRUE(enough);
}

TEST_F(Processes, Row28TooLittleAddressSpace) {
  FaultyInstrument instrument(Port::kTcp, NoFault);
  bool enough = false;
  for (int mebibytes = 16; mebibytes < 1024 && !enough; mebibytes += 8) {
    SCOPED_TRACE(mebibytes);
    const app::Outcome outcome =
        app::RunProgram(List("ONE\r\nTWO\r\n", instrument),
                        {.wrapper = {"prlimit", "--as=" + std::to_string(std::int64_t{mebibytes} << 20)}});
    ASSERT_GE(outcome.status, 0) << outcome.err;
    enough = outcome.status == 0;
    EXPECT_EQ(outcome.err.empty(), enough);
  }
  EXPECT_TRUE(enough);
}

TEST_F(Processes, Row21ALineOfSomebodyElse) {
  if (!CanRunAsNobody()) GTEST_SKIP() << kCannotRunAsNobody;
  base::Pty pty;
  const Words words = {"send", "ONE", "--connect", "ASRL" + pty.node() + "::INSTR"};
  ASSERT_EQ(chmod(pty.node().c_str(), 0600), 0);
  app::Outcome outcome = app::RunProgram(words, {.wrapper = kAsNobody});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "kolvane: Fehler beim Verbindungsaufbau: -12 (-12): keine Berechtigung\n");
  ASSERT_EQ(chmod(pty.node().c_str(), 0666), 0);
  ASSERT_EQ(ioctl(pty.slave(), TIOCEXCL), 0);
  outcome = app::RunProgram(words, {.wrapper = kAsNobody});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err,
            "kolvane: Fehler beim Verbindungsaufbau: -13 (-13): von einem anderen Programm benutzt\n");
}

TEST_F(Processes, Row30TheClockGoesBackAtEachLook) {
  FaultyInstrument instrument(Port::kTcp, NoFault);
  std::map<std::string, std::string> environment =
      ShimEnvironment({"clock", "back", false}, 1, folder_.Path("hit"));
  Words words = List("ONE\r\nFAULT\r\nTHREE\r\n", instrument, "200");
  words.insert(words.end(), {"--verbose", "--show-times"});
  app::Program program(words, {.environment = environment});
  EXPECT_TRUE(program.EndsWithin(30'000));
  const app::Outcome outcome = program.Wait();
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("hit")));
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(Log(), "ONE\r\n-30\r\nTHREE\r\n");
  EXPECT_EQ(outcome.out.find("dt = -"), std::string::npos) << outcome.out;
}

TEST_F(Processes, Row30AnotherMonotonicClock) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may have separate clocks";
  FaultyInstrument instrument(Port::kTcp, NoFault);
  app::Program program(List("ONE\r\nFAULT\r\nTHREE\r\n", instrument, "200"),
                       {.wrapper = {"unshare", "-T", "--monotonic", "2000000000", "--fork"}});
  EXPECT_TRUE(program.EndsWithin(30'000));
  const app::Outcome outcome = program.Wait();
  if (outcome.status == 1 && outcome.out.empty()) GTEST_SKIP() << "no separate clocks: " << outcome.err;
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(Log(), "ONE\r\n-30\r\nTHREE\r\n");
}

// Polls: the kernel's event for it would also consume the end of the process.
void AwaitState(pid_t process, char state) {
  for (std::string stat; stat.find(std::string(") ") + state) == std::string::npos;) {
    stat = base::ReadBytes("/proc/" + std::to_string(process) + "/stat");
    sched_yield();
  }
}

// An answer that arrived while it was stopped counts, although the time-out is over.
TEST_P(OnPort, Row30StoppedAndContinued) {
  FaultyInstrument instrument(GetParam(), [](Wire& wire) {
    wire.AwaitEndOfFault();
    wire.Send("while it was stopped\r\n");
    return After::kContinue;
  });
  app::Program program(List("ONE\r\nFAULT\r\nTHREE\r\n", instrument, "1000"),
                       {.environment = instrument.Environment()});
  instrument.AwaitFault();
  program.Signal(SIGSTOP);
  AwaitState(program.id(), 'T');
  instrument.EndFault();
  EXPECT_FALSE(program.EndsWithin(1200));
  program.Signal(SIGCONT);
  const app::Outcome outcome = program.Wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "ONE\nwhile it was stopped\nTHREE\n");
  EXPECT_EQ(Log(), "ONE\r\nwhile it was stopped\r\nTHREE\r\n");
}

TEST_F(Processes, Row31LocalesChangeNothing) {
  for (const char* locale : {"C", "C.UTF-8", "de_DE.UTF-8", "nonsense"}) {
    SCOPED_TRACE(locale);
    FaultyInstrument instrument(Port::kTcp, NoFault);
    std::filesystem::remove(folder_.Path("a.LOG"));
    const app::Outcome outcome = app::RunProgram(List("Gr\xF6\xDF\x65 1.5\r\nFAULT\r\n", instrument, "250"),
                                                 {.environment = {{"LC_ALL", locale}, {"LANG", locale}}});
    EXPECT_EQ(outcome.status, 4);
    EXPECT_EQ(outcome.out, "Größe 1.5\n-30\n");
    EXPECT_EQ(Log(), "Gr\xF6\xDF\x65 1.5\r\n-30\r\n");
    const app::Outcome window =
        WindowProgram(folder_.Path("config"), folder_.Path(""), {.environment = {{"LC_ALL", locale}}}).End();
    EXPECT_EQ(window.status, 0) << window.err;
  }
}

TEST_F(Processes, Row31NoHomeFolder) {
  Words wrapper = {"env", "-u", "HOME", "-u", "XDG_CONFIG_HOME", "-u", "XDG_DATA_HOME"};
  // Root would find a home in the root folder.
  if (geteuid() == 0 && !CanRunAsNobody()) GTEST_SKIP() << kCannotRunAsNobody;
  if (geteuid() == 0) wrapper.insert(wrapper.end(), kAsNobody.begin(), kAsNobody.end());
  EXPECT_EQ(app::RunProgram({"send", "ONE", "--connect", "OFFLINE"}, {.wrapper = wrapper}).status, 0);
  bool hung = false;
  const app::Outcome outcome = WindowProgram("", "/nonexistent", {.wrapper = wrapper}).End(&hung);
  EXPECT_FALSE(hung);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST_F(Processes, Row31ACurrentFolderThatIsGone) {
  const std::string script = "mkdir gone && cd gone && rmdir ../gone && exec \"$@\"";
  const app::LaunchOptions gone{.folder = folder_.Path(""), .wrapper = {"sh", "-c", script, "sh"}};
  EXPECT_EQ(app::RunProgram({"send", "ONE", "--connect", "OFFLINE"}, gone).status, 0);
  bool hung = false;
  const app::Outcome outcome = WindowProgram(folder_.Path("config"), folder_.Path("own"), gone).End(&hung);
  EXPECT_FALSE(hung);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
}

}  // namespace
}  // namespace kolvane::faults
