// Runs that end early.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <latch>

#include "app/instrument.h"
#include "app/program.h"
#include "base/descriptor.h"
#include "base/temp_folder.h"
#include "integration/modem.h"

namespace kolvane::app {
namespace {

struct RunStopTest : testing::Test {
  std::vector<std::string> Words(const std::string& rows, const Instrument& instrument) {
    base::WriteBytes(folder.Path("a.CMD"), rows);
    return {"run", folder.Path("a.CMD"), "--connect", instrument.Resource(), "--timeout", "60000"};
  }

  base::TempFolder folder;
};

class StoppedBySignalTest : public RunStopTest, public testing::WithParamInterface<int> {};

TEST_P(StoppedBySignalTest, TheCurrentRowIsGivenUpAndTheRunEnds) {
  std::latch finished(1);
  Instrument instrument([&](const std::string& line) {
    if (line == "B") finished.wait();
    return Echo(line);
  });
  std::vector<std::string> words = Words("A\nB\nC\n", instrument);
  words.insert(words.end(), {"--log", folder.Path("a.LOG")});
  Program program(words);
  instrument.AwaitLines(2);
  program.Signal(GetParam());
  const Outcome outcome = program.Wait();
  finished.count_down();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "A\n-60\n");
  EXPECT_EQ(outcome.err, "kolvane: -60: abgebrochen\nkolvane: Der Ablauf wurde abgebrochen.\n");
  EXPECT_EQ(base::ReadBytes(folder.Path("a.LOG")), "A\r\n-60\r\n");
  instrument.AwaitClose();
  EXPECT_EQ(instrument.lines(), (std::vector<std::string>{"A", "B"}));
}

INSTANTIATE_TEST_SUITE_P(Signals, StoppedBySignalTest, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_F(RunStopTest, ASignalThatItsStarterIgnoresStaysIgnored) {
  std::latch finished(1);
  Instrument instrument([&](const std::string& line) {
    if (line == "B") finished.wait();
    return Echo(line);
  });
  Program program(Words("A\nB\nC\n", instrument),
                  {.wrapper = {"sh", "-c", "trap '' INT; exec \"$0\" \"$@\""}});
  instrument.AwaitLines(2);
  program.Signal(SIGINT);
  program.Signal(SIGTERM);
  const Outcome outcome = program.Wait();
  finished.count_down();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kolvane: -60: abgebrochen\nkolvane: Der Ablauf wurde abgebrochen.\n");
}

TEST_F(RunStopTest, CommandsAreStoppedTheSameWay) {
  std::latch finished(1);
  Instrument instrument([&](const std::string& line) {
    finished.wait();
    return Echo(line);
  });
  Program program({"send", "A", "B", "--connect", instrument.Resource(), "--timeout", "60000"});
  instrument.AwaitLines(1);
  program.Signal(SIGINT);
  const Outcome outcome = program.Wait();
  finished.count_down();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "-60\n");
}

TEST_F(RunStopTest, DiallingIsGivenUp) {
  integration::Modem modem(integration::Answers{{"AT2", "CONNECT\r\n"}});
  std::filesystem::create_directory(folder.Path("Kolvane"));
  base::WriteBytes(folder.Path("Kolvane/Kolvane.ini"), "[PORT]\nPORT=0\nRSTIMO=60\n");
  base::WriteBytes(folder.Path("MODEM.INI"), "AT1\r\nAT2\r\n");
  Program program({"send", "X", "--folder", folder.path()},
                  {.environment = {{"XDG_CONFIG_HOME", folder.path()}, {"KOLVANE_COM1", modem.node()}}});
  modem.AwaitLines(1);
  program.Signal(SIGTERM);
  program.AwaitHandled(SIGTERM);
  modem.SendUnasked("OK\r\n");
  const Outcome outcome = program.Wait();
  EXPECT_EQ(outcome.status, 3) << "no connection was made";
  EXPECT_EQ(outcome.err, "kolvane: Der Ablauf wurde abgebrochen.\n");
  EXPECT_EQ(modem.AwaitLines(1), std::vector<std::string>{"AT1"});
}

TEST_F(RunStopTest, AnEndlessLoopWithoutCommandsStopsToo) {
  Instrument instrument(Echo);
  Program program(Words("A\n$REPEAT 2147483647\n$ENDREPEAT\n", instrument));
  instrument.AwaitLines(1);
  program.Signal(SIGINT);
  EXPECT_EQ(program.Wait().status, 1);
}

TEST_F(RunStopTest, AnotherSignalEndsTheProgramAtOnce) {
  std::latch ended(1);
  Instrument instrument([&](const std::string& line) {
    ended.wait();
    return Echo(line);
  });
  Program program(Words("A\nB\n", instrument));
  instrument.AwaitLines(1);
  program.Signal(SIGINT);
  program.AwaitHandled(SIGINT);
  program.Signal(SIGINT);
  EXPECT_EQ(program.Wait().status, -SIGINT);
  ended.count_down();
}

TEST_F(RunStopTest, AListFromAPipeIsPlayed) {
  Instrument instrument(Echo);
  std::vector<std::string> words = Words("", instrument);
  words[1] = folder.Path("pipe");
  ASSERT_EQ(mkfifo(words[1].c_str(), 0600), 0);
  Program program(words);
  {
    const base::Descriptor writer(open(words[1].c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_EQ(write(writer.get(), "A\nB\n", 4), 4);
  }
  const Outcome outcome = program.Wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "A\nB\n");
}

TEST_F(RunStopTest, AWaitForAListStopsToo) {
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  Program program({"run", pipe, "--connect", "OFFLINE"});
  // open returns once the program has opened the pipe, too.
  const base::Descriptor writer(open(pipe.c_str(), O_WRONLY | O_CLOEXEC));
  program.Signal(SIGTERM);
  ASSERT_TRUE(program.EndsWithin(20'000));
  const Outcome outcome = program.Wait();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "kolvane: Der Ablauf wurde abgebrochen.\n");
}

TEST_F(RunStopTest, AReaderThatClosesThePipeEndsTheRunQuietly) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  Instrument instrument(Echo);
  close(ends[0]);
  Program program(Words("A\nB\nC\n", instrument), {.output = ends[1]});
  close(ends[1]);
  const Outcome outcome = program.Wait();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "");
  instrument.AwaitClose();
  EXPECT_EQ(instrument.lines(), std::vector<std::string>{"A"});
}

TEST_F(RunStopTest, AFullDiskEndsTheRunWithAMessage) {
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  Instrument instrument(Echo);
  const Outcome outcome = RunProgram(Words("A\nB\n", instrument), {.output = full});
  close(full);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "kolvane: Die Standardausgabe kann nicht geschrieben werden: Der Datenträger ist voll.\n");
  EXPECT_EQ(instrument.lines(), std::vector<std::string>{"A"});
}

// Lines in quick succession share a write; the instrument only continues once the reader has seen them.
TEST_F(RunStopTest, AnswersAreVisibleDuringTheNextExchange) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  const base::Descriptor reader(ends[0]);
  const base::Descriptor writer(ends[1]);
  std::string seen;
  Instrument instrument([&](const std::string& line) {
    while (line == "C" && !seen.ends_with("B\n")) {
      char buffer[64];
      const ssize_t got = read(reader.get(), buffer, sizeof buffer);
      if (got <= 0) break;
      seen.append(buffer, static_cast<std::size_t>(got));
    }
    return Echo(line);
  });
  EXPECT_EQ(RunProgram(Words("A\nB\nC\n", instrument), {.output = writer.get()}).status, 0);
  EXPECT_EQ(seen, "A\nB\n");
}

TEST_F(RunStopTest, AnswersAreVisibleDuringAPause) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  const base::Descriptor reader(ends[0]);
  Instrument instrument(Echo);
  Program program(Words("A\nB\n$DELAY 60000\n", instrument), {.output = ends[1]});
  close(ends[1]);
  std::string seen;
  for (char byte = 0; !seen.ends_with("B\n") && read(reader.get(), &byte, 1) == 1;) seen += byte;
  EXPECT_EQ(seen, "A\nB\n");
  program.Signal(SIGINT);
  EXPECT_EQ(program.Wait().status, 1);
}

}  // namespace
}  // namespace kolvane::app
