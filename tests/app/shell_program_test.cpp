// `kolvane shell`, at a terminal and through a pipe.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sched.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <latch>
#include <optional>

#include "app/instrument.h"
#include "app/program.h"
#include "base/descriptor.h"
#include "base/loopback.h"
#include "base/temp_folder.h"

namespace kolvane::app {
namespace {

/// The program at its own terminal.
class Terminal {
 public:
  Terminal(std::vector<std::string> arguments, std::map<std::string, std::string> environment,
           std::vector<std::string> wrapper = {}) {
    int master = -1;
    int slave = -1;
    const winsize size{50, 200, 0, 0};
    EXPECT_EQ(openpty(&master, &slave, nullptr, nullptr, &size), 0);
    master_ = base::Descriptor(master);
    slave_ = base::Descriptor(slave);
    EXPECT_EQ(fcntl(master, F_SETFL, O_NONBLOCK), 0);
    program_.emplace(std::move(arguments), LaunchOptions{.environment = std::move(environment),
                                                         .output = slave_.get(),
                                                         .input = slave_.get(),
                                                         .wrapper = std::move(wrapper)});
  }

  /// Takes output meanwhile: the program reads no keys while it cannot write.
  void Type(std::string_view keys) {
    for (pollfd entry{master_.get(), POLLIN | POLLOUT, 0}; !keys.empty() && poll(&entry, 1, 20'000) == 1;) {
      if ((entry.revents & POLLIN) != 0 && !Receive()) break;
      const ssize_t typed = write(master_.get(), keys.data(), keys.size());
      if (typed > 0) keys.remove_prefix(static_cast<std::size_t>(typed));
    }
    EXPECT_EQ(keys, "");
  }
  /// Waits for output that contains `text`; returns and discards all output so far.
  std::string Await(std::string_view text) {
    pollfd entry{master_.get(), POLLIN, 0};
    while (seen_.find(text) == seen_.npos && poll(&entry, 1, 20'000) == 1 && Receive()) {
    }
    EXPECT_NE(seen_.find(text), seen_.npos) << "for '" << text << "' in '" << seen_ << "'";
    const std::size_t end = std::min(seen_.find(text), seen_.size() - text.size()) + text.size();
    const std::string before = seen_.substr(0, end);
    seen_.erase(0, end);
    return before;
  }
  Program& program() { return *program_; }
  bool Echoes() const {
    termios mode{};
    return tcgetattr(slave_.get(), &mode) == 0 && (mode.c_lflag & ECHO) != 0;
  }
  void Resize(const winsize& size) {
    EXPECT_EQ(ioctl(master_.get(), TIOCSWINSZ, &size), 0);
    program_->Signal(SIGWINCH);
  }
  /// What the user's shell does around a suspended program.
  void SuspendAndContinue() {
    termios mode{};
    EXPECT_EQ(tcgetattr(slave_.get(), &mode), 0);
    mode.c_lflag |= ICANON | ECHO;
    mode.c_cc[VINTR] = '\x03';
    EXPECT_EQ(tcsetattr(slave_.get(), TCSADRAIN, &mode), 0);
    program_->Signal(SIGCONT);
    while (Echoes()) sched_yield();
  }

 private:
  // False at the end of the output.
  bool Receive() {
    char piece[4096];
    const ssize_t got = read(master_.get(), piece, sizeof piece);
    if (got > 0) seen_.append(piece, static_cast<std::size_t>(got));
    return got > 0;
  }

  base::Descriptor master_;
  base::Descriptor slave_;
  std::string seen_;
  std::optional<Program> program_;
};

struct ShellTest : testing::Test {
  std::vector<std::string> Words(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"shell", "--connect", instrument.Resource(), "--timeout", "60000"});
    return options;
  }
  Terminal Start(std::vector<std::string> options = {}, const std::string& terminal = "dumb") {
    return Terminal(Words(std::move(options)), {{"XDG_STATE_HOME", folder.path()}, {"TERM", terminal}});
  }
  Outcome Pipe(std::string_view lines, std::vector<std::string> words) {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    base::Descriptor writer(ends[1]);
    const base::Descriptor reader(ends[0]);
    EXPECT_EQ(base::WriteAll(writer.get(), lines), 0);
    EXPECT_TRUE(writer.Close());
    return RunProgram(std::move(words), {.folder = folder.path(), .input = reader.get()});
  }
  std::string Prompt() const { return "127.0.0.1:" + std::to_string(instrument.port()) + "> "; }

  base::TempFolder folder;
  std::latch answered{1};
  Instrument instrument{[this](const std::string& line) {
    if (line == "WAIT") answered.wait();
    return line + "\r\n";
  }};
};

TEST_F(ShellTest, RowsFromAPipeGetNoPrompts) {
  base::WriteBytes(folder.Path("two rows.CMD"), "X\r\nY\r\n");
  const Outcome outcome = Pipe(
      "A\n  B  \n\n' comment\n$REPEAT 1\nC\n$ENDREPEAT\n$RUN two rows.CMD\n$SILENT ON\nD\n$silent off\nE,7\n"
      "$SPLITPARAMS\n$GETPARAM 2\n$IFEQUAL 7\nF\n$ENDIF\n",
      Words());
  EXPECT_EQ(outcome.out, "A\nB\nC\nC\nX\nY\nE,7\nF\n");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(ShellTest, InputThatCannotBeReadIsAFailure) {
  const base::Descriptor input = base::OpenDescriptor(folder.path(), O_RDONLY | O_CLOEXEC);
  const Outcome outcome = RunProgram(Words(), {.input = input.get()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kolvane: cannot read standard input: Is a directory\n");
}

TEST_F(ShellTest, ErrorsDoNotEndTheShell) {
  base::WriteBytes(folder.Path("bad.CMD"), "A\r\n$NEIN\r\nB\r\n");
  const Outcome outcome = Pipe(
      "$NEIN\nA\n$RUN bad.CMD\n$RUN none.CMD\n$RUN \"\n$IFERR\n$NEIN\n$ENDIF\n$GETPARAM 1\nC\n", Words());
  EXPECT_EQ(outcome.out, "A\nA\nC\n");
  EXPECT_EQ(outcome.err,
            "kolvane: Unbekannter $ Befehl\n"
            "kolvane: Fehler in Befehlsliste (Zeile 2): Unbekannter $ Befehl\n"
            "kolvane: cannot read the command list 'none.CMD': No such file or directory\n"
            "kolvane: cannot read the command list '\"': No such file or directory\n"
            "kolvane: Index außerhalb des gültigen Bereichs\n");
  EXPECT_EQ(outcome.status, 4);
}

TEST_F(ShellTest, WhatIsLeftOpenDoesNotDecideAboutLaterRows) {
  base::WriteBytes(folder.Path("open.CMD"), "$IFEQUAL x\r\nA\r\n");
  EXPECT_EQ(Pipe("$RUN open.CMD\nB\n", Words()).out, "B\n");
  EXPECT_EQ(Pipe("$ENDIF\n$IFEQUAL x\nA\n$ENDIF\nB\n", Words()).out, "B\n");
  std::string errors;
  for (int time = 0; time < 17; ++time) errors += "$REPEAT 1\n$NEIN\n$ENDREPEAT\n";
  EXPECT_EQ(Pipe(errors + "$REPEAT 1\nA\n$ENDREPEAT\n", Words()).out, "A\nA\n");
}

TEST_F(ShellTest, SpacesBeforeRunAreIgnoredAsBeforeAnyRow) {
  base::WriteBytes(folder.Path("a.CMD"), "A\r\n");
  const Outcome outcome = Pipe("  $RUN a.CMD\n", Words());
  EXPECT_EQ(outcome.out, "A\n");
  EXPECT_EQ(outcome.err, "");
}

TEST_F(ShellTest, OpenLoopsRunAtTheEndOfAPipe) { EXPECT_EQ(Pipe("$REPEAT 1\nA\n", Words()).out, "A\n"); }

TEST_F(ShellTest, MoreRowsThanAListHoldsAreRefused) {
  std::string rows = "$REPEAT 1\n";
  for (int row = 0; row < 1024; ++row) rows += "A\n";
  const Outcome outcome = Pipe(rows + "B\n", Words());
  EXPECT_EQ(outcome.out, "B\n");
  EXPECT_EQ(outcome.err, "kolvane: more than 1024 rows belong together\n");
}

TEST_F(ShellTest, TheChoiceOfAnswersHoldsForTheWholeSession) {
  Instrument silent([](const std::string& line) { return line.ends_with('?') ? line + "\r\n" : ""; });
  const Outcome outcome = Pipe("$ANSWERS QUERIES\nA\nB?\nC\n", {"shell", "--connect", silent.Resource()});
  EXPECT_EQ(outcome.out, "B?\n");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(ShellTest, TakesTheOptionsOfSend) {
  const Outcome outcome = Pipe("A\n", Words({"--show-commands", "--format", "csv", "--fields", "2"}));
  EXPECT_EQ(outcome.out, "time,command,field1,field2\n");
}

TEST_F(ShellTest, ALostConnectionIsMadeAgain) {
  Instrument instrument_that_ends([](const std::string& line) { return line == "END" ? "" : line + "\r\n"; });
  const Outcome outcome = Pipe("A\nDCL\nB\n", {"shell", "--connect", instrument_that_ends.Resource()});
  EXPECT_EQ(outcome.out, "A\nB\n");
}

TEST_F(ShellTest, WithoutAConnectionTheShellEnds) {
  EXPECT_EQ(Pipe("A\n", {"shell", "--connect", "127.0.0.1:1"}).status, 3);
}

TEST_F(ShellTest, ATerminalShowsConnectionAndAnswers) {
  Terminal terminal = Start();
  terminal.Await("Ctrl+D ends");
  terminal.Await(Prompt());
  terminal.Type("Größe?\n");
  terminal.Await("Größe?\r\n");
  terminal.Await("Größe?\r\n" + Prompt());
  terminal.Type("DCL\n");
  terminal.Await(" (disconnected)> ");
  terminal.Type("\x04");
  EXPECT_EQ(terminal.program().Wait().status, 0);
  EXPECT_TRUE(terminal.Echoes()) << "the terminal is as it was";
  EXPECT_EQ(base::ReadBytes(folder.Path("Kolvane/shell-history")), "Größe?\nDCL\n");
}

// The terminal itself turns a Ctrl+D that it gets before the shell does into this character.
TEST_F(ShellTest, CtrlSpaceLeavesTheNextKeyItsMeaning) {
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type(std::string("\0\x04", 2));
  EXPECT_EQ(terminal.program().Wait().status, 0);
}

class ShellKeyTest : public ShellTest, public testing::WithParamInterface<const char*> {};

TEST_P(ShellKeyTest, GivesUpAWait) {
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("WAIT\n");
  instrument.AwaitLines(1);
  terminal.Type(GetParam());
  terminal.Await("-60\r\n");
  terminal.Await(Prompt());
  answered.count_down();
  terminal.Type("\x04");
  EXPECT_EQ(terminal.program().Wait().status, 4);
}

TEST_P(ShellKeyTest, GivesUpASlowFirstConnection) {
  const base::FullListener full;
  Terminal terminal({"shell", "--connect", "127.0.0.1:" + std::to_string(full.port()), "--timeout", "60000"},
                    {{"XDG_STATE_HOME", folder.path()}, {"TERM", "dumb"}});
  // Without echo, the program reads the keys, no longer the terminal.
  while (terminal.Echoes()) sched_yield();
  terminal.Type(GetParam());
  const Outcome outcome = terminal.program().Wait();
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "kolvane: Fehler beim Verbindungsaufbau: -60 (-60): abgebrochen\n");
  EXPECT_TRUE(terminal.Echoes()) << "the terminal is as it was";
}

INSTANTIATE_TEST_SUITE_P(Keys, ShellKeyTest, testing::Values("\x1B", "\x03"));

TEST_F(ShellTest, CtrlCGivesUpAListThatNeverEnds) {
  base::WriteBytes(folder.Path("a.CMD"), "A\n$REPEAT 2147483647\n$DELAY 0\n$ENDREPEAT\n");
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("$RUN " + folder.Path("a.CMD") + "\n");
  instrument.AwaitLines(1);
  terminal.Type("\x03");
  terminal.Await(Prompt());
  terminal.Type("B\n");
  terminal.Await("B\r\nB\r\n");
}

TEST_F(ShellTest, CtrlCGivesUpALine) {
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("$REPEAT 2\n");
  terminal.Await("... ");
  terminal.Type("half\x03");
  terminal.Await(Prompt());
  terminal.Type("B\n\x04");
  EXPECT_EQ(terminal.program().Wait().status, 0);
  EXPECT_EQ(instrument.lines(), std::vector<std::string>{"B"});
}

TEST_F(ShellTest, AnEmptyLineEndsNothing) {
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("\n");
  terminal.Await(Prompt());
  terminal.Type("A\n");
  terminal.Await("A\r\nA\r\n");
}

TEST_F(ShellTest, PastedLinesAreSentOneAfterTheOther) {
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("A\nB\nC\n");
  terminal.Await("C\r\nC\r\n");
  EXPECT_EQ(instrument.lines(), (std::vector<std::string>{"A", "B", "C"}));
}

TEST_F(ShellTest, TabCompletes) {
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("$SIL\t");
  std::string shown = terminal.Await("ENT ");
  terminal.Type("O\t");
  shown += terminal.Await("$SILENT OFF\r\n");
  terminal.Await("$SILENT O");
  EXPECT_EQ(shown.find('\a'), shown.npos) << "it beeps only if there is nothing to complete";
  terminal.Type("N\nMSV? 1\nMS\t\n\x04");
  EXPECT_EQ(terminal.program().Wait().status, 0);
  EXPECT_EQ(instrument.lines(), (std::vector<std::string>{"MSV? 1", "MSV?"}));
}

TEST_F(ShellTest, TabCompletesACommandThatTheHistoryAlsoHolds) {
  std::filesystem::create_directory(folder.Path("Kolvane"));
  base::WriteBytes(folder.Path("Kolvane/shell-history"), "$SILENT\n");
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("$SIL\t");
  EXPECT_EQ(terminal.Await("ENT ").find('\a'), std::string::npos) << "there is only one";
}

TEST_F(ShellTest, TheHistoryOfEarlierSessionsIsAvailable) {
  std::filesystem::create_directory(folder.Path("Kolvane"));
  base::WriteBytes(folder.Path("Kolvane/shell-history"), "OLD\n");
  Terminal terminal = Start({}, "xterm");
  terminal.Await(std::to_string(instrument.port()) + ">\x1B[0m ");
  terminal.Type("\x1B[A\n");
  instrument.AwaitLines(1);
  EXPECT_EQ(instrument.lines(), std::vector<std::string>{"OLD"});
}

TEST_F(ShellTest, ColoursAreOnlyForTerminalsThatHaveThem) {
  Terminal plain = Start();
  EXPECT_EQ(plain.Await(Prompt()).find('\x1B'), std::string::npos);
  Terminal colored = Start({}, "xterm");
  colored.Await("\x1B[1m" + Prompt().substr(0, Prompt().size() - 1) + "\x1B[0m ");
}

TEST_F(ShellTest, ALineIsDrawnAgainForANewSize) {
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("Größe");
  terminal.Await("Größe");
  for (const winsize& size : {winsize{10, 90, 0, 0}, winsize{10, 120, 0, 0}, winsize{10, 100, 0, 0}}) {
    terminal.Resize(size);
    terminal.Await(Prompt() + "Größe");
  }
  terminal.Type("?\n");
  terminal.Await("Größe?\r\n" + Prompt());
  EXPECT_EQ(instrument.lines(), std::vector<std::string>{"Gr\xF6\xDF"
                                                         "e?"});
}

// Text and cursor may lie in rows that no longer exist.
TEST_F(ShellTest, ALongLineSurvivesATinyTerminal) {
  Terminal terminal = Start({}, "xterm");
  terminal.Await(std::to_string(instrument.port()) + ">\x1B[0m ");
  const std::string part(300, 'A');
  for (int round = 0; round < 20; ++round) {
    terminal.Type(part);
    terminal.Resize({static_cast<unsigned short>(round % 2 == 0 ? 1 : 60),
                     static_cast<unsigned short>(round % 3 == 0 ? 3 : 200), 0, 0});
  }
  terminal.Type("\x03");
  terminal.Await("^C\r");
  terminal.Type("B\n\x04");
  EXPECT_EQ(terminal.program().Wait().status, 0);
  EXPECT_EQ(instrument.lines(), std::vector<std::string>{"B"});
}

TEST_F(ShellTest, ALineCanBeSuspendedSeveralTimes) {
  Terminal terminal = Start();
  terminal.Await(Prompt());
  for (const char* typed : {"A", "B"}) {
    terminal.Type(typed);
    terminal.Await(typed);
    terminal.SuspendAndContinue();
    terminal.Await(Prompt());
  }
  terminal.Type("C\n");
  terminal.Await("ABC\r\n" + Prompt());
}

TEST_F(ShellTest, CtrlCStillGivesUpAWaitThatWasSuspended) {
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("WAIT\n");
  instrument.AwaitLines(1);
  terminal.SuspendAndContinue();
  terminal.Type("\x03");
  terminal.Await("-60\r\n");
  terminal.Await(Prompt());
  answered.count_down();
}

TEST_F(ShellTest, CtrlCGivesUpReadingAListFromAPipe) {
  ASSERT_EQ(mkfifo(folder.Path("a.CMD").c_str(), 0600), 0);
  const base::Descriptor writer = base::OpenDescriptor(folder.Path("a.CMD"), O_RDWR | O_CLOEXEC);
  Terminal terminal = Start();
  terminal.Await(Prompt());
  terminal.Type("$RUN " + folder.Path("a.CMD") + "\n");
  terminal.Await("a.CMD\r\n");
  terminal.Type("\x03");
  terminal.Await(Prompt());
  terminal.Type("\x04");
  const Outcome outcome = terminal.program().Wait();
  EXPECT_EQ(outcome.err, "kolvane: Der Ablauf wurde abgebrochen.\n");
  EXPECT_EQ(outcome.status, 4);
}

TEST_F(ShellTest, ASignalEndsIt) {
  for (const bool waiting : {false, true}) {
    Terminal terminal = Start();
    terminal.Await(Prompt());
    if (waiting) terminal.Type("WAIT\n");
    if (waiting) instrument.AwaitLines(1);
    terminal.program().Signal(SIGTERM);
    EXPECT_EQ(terminal.program().Wait().status, 1);
    EXPECT_TRUE(terminal.Echoes());
  }
  answered.count_down();
}

TEST_F(ShellTest, AnIgnoredSignalStaysIgnored) {
  Terminal terminal(Words(), {{"XDG_STATE_HOME", folder.path()}, {"TERM", "dumb"}},
                    {"sh", "-c", "trap '' HUP; exec \"$0\" \"$@\""});
  terminal.Await(Prompt());
  terminal.program().Signal(SIGHUP);
  terminal.Type("A\n");
  terminal.Await("A\r\n" + Prompt());
  terminal.Type("\x04");
  EXPECT_EQ(terminal.program().Wait().status, 0);
}

}  // namespace
}  // namespace kolvane::app
