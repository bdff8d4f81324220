// `--repeat` and `--every`.

#include <gtest/gtest.h>
#include <signal.h>

#include "app/instrument.h"
#include "app/program.h"
#include "base/temp_folder.h"

namespace kolvane::app {
namespace {

struct RunRepeatTest : testing::Test {
  std::vector<std::string> Send(std::vector<std::string> options) const {
    options.insert(options.begin(), {"send", "A", "B", "--connect", instrument.Resource()});
    return options;
  }
  std::vector<std::string> Run(const std::string& rows, std::vector<std::string> options) const {
    base::WriteBytes(folder.Path("a.CMD"), rows);
    options.insert(options.begin(), {"run", folder.Path("a.CMD"), "--connect", instrument.Resource()});
    return options;
  }

  base::TempFolder folder;
  Instrument instrument{Echo};
};

TEST_F(RunRepeatTest, CommandsAreSentThatOften) {
  const Outcome outcome = RunProgram(Send({"--repeat", "3"}));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "A\nB\nA\nB\nA\nB\n");
}

TEST_F(RunRepeatTest, AListRunsThatOftenOnOneConnection) {
  const Outcome outcome = RunProgram(
      Run("A\r\n$IFERR\r\nX\r\n$ENDIF\r\nB\r\n$STOP\r\nC", {"--repeat", "2", "--every", "1", "--verbose"}));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "A\nB\nA\nB\n");
  EXPECT_EQ(outcome.err.find("hergestellt"), outcome.err.rfind("hergestellt"));
}

TEST_F(RunRepeatTest, RecordsHaveOneHeader) {
  const Outcome outcome = RunProgram(Send({"--repeat", "2", "--format", "csv", "--fields", "1"}));
  EXPECT_EQ(outcome.out, "time,command,field1\n");
}

TEST_F(RunRepeatTest, AnErrorInTheListEndsAllPasses) {
  const Outcome outcome = RunProgram(Run("A\r\n$FALSCH\r\n", {"--repeat", "3"}));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "A\n");
}

TEST_F(RunRepeatTest, AFailedAnswerEndsNoPass) {
  int count = 0;
  Instrument odd([&](const std::string& line) { return ++count == 1 ? "" : line + "\r\n"; });
  base::WriteBytes(folder.Path("a.CMD"), "A\r\n");
  const Outcome outcome = RunProgram(
      {"run", folder.Path("a.CMD"), "--connect", odd.Resource(), "--timeout", "100", "--repeat", "2"});
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(outcome.out, "-30\nA\n");
}

TEST_F(RunRepeatTest, WithOnlyAPeriodASignalEndsIt) {
  Program program(Send({"--every", "1"}));
  instrument.AwaitLines(20);
  program.Signal(SIGINT);
  const Outcome outcome = program.Wait();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kolvane: Der Ablauf wurde abgebrochen.\n");
}

TEST_F(RunRepeatTest, ASignalEndsTheWaitForTheNextPass) {
  std::size_t lines = 0;
  for (const auto& words : {Send({"--every", "2147483647"}), Run("A\r\nB", {"--every", "2147483647"})}) {
    Program program(words);
    instrument.AwaitLines(lines += 2);
    program.Signal(SIGTERM);
    ASSERT_TRUE(program.EndsWithin(20'000));
    const Outcome outcome = program.Wait();
    EXPECT_EQ(outcome.status, 1);
  }
}

}  // namespace
}  // namespace kolvane::app
