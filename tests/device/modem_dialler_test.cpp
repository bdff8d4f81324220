#include "device/open_sequence.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fake_clock.h"
#include "fake_port_library.h"
#include "recording_wait_listener.h"

namespace kolvane::device {
namespace {

class Dialling : public testing::Test {
 protected:
  Dialling() { library.SetTimeout(2000), library.calls.clear(); }

  std::int32_t Dial(const std::vector<std::string>& commands, std::int32_t timeout_s = 60) {
    const Waits::Scope scope(waits, Operation::kConnecting);
    return ModemDialler(library, clock, waits).Dial(commands, timeout_s);
  }
  long Count(const std::string& call) const { return std::ranges::count(library.calls, call); }

  RecordingWaitListener listener;
  FakeClock clock;
  FakePortLibrary library{&clock};
  FakePortLibrarySource source{&library};
  Waits waits{source, clock, listener};
};

TEST(ModemCommands, AreTheNonEmptyLines) {
  using Commands = std::vector<std::string>;
  EXPECT_EQ(ModemCommands(""), Commands{});
  EXPECT_EQ(ModemCommands("\r\n"), Commands{});
  EXPECT_EQ(ModemCommands("ATZ"), Commands{"ATZ"});
  EXPECT_EQ(ModemCommands("\r\nATZ\r\n\r\nATDT 0 12\r\n"), (Commands{"ATZ", "ATDT 0 12"}));
  EXPECT_EQ(ModemCommands("A\nB\rC"), Commands{"A\nB\rC"});
}

TEST_F(Dialling, SendsEachLineAndReadsItsReply) {
  library.replies = {{"OK\r\n"}, {"ATDT42\r\r\n"}, {"CONNECT 9600\r\n"}};
  EXPECT_EQ(Dial({"ATZ", "ATDT42"}), 0);
  EXPECT_EQ(library.calls,
            (std::vector<std::string>{"FlushInQueue()", "WritePort(\"ATZ\r\")", "ReadPort(255, 10)",
                                      "WritePort(\"ATDT42\r\")", "ReadPort(255, 10)", "ReadPort(255, 10)"}));
}

TEST_F(Dialling, TakesConnectInAnyCaseAnywhereInTheReply) {
  for (const char* reply : {"CONNECT", "connect\r\n", "57600 Connect fast"}) {
    library.replies = {{"OK"}, {reply}};
    EXPECT_EQ(Dial({"ATD"}), 0) << reply;
  }
}

TEST_F(Dialling, TheLastLinesOwnReplyCounts) {
  library.replies = {{"CONNECT\r\n"}};
  EXPECT_EQ(Dial({"ATD"}), 0);
  EXPECT_EQ(Count("ReadPort(255, 10)"), 1);
}

TEST_F(Dialling, AnEarlierLinesReplyDoesNot) {
  library.replies = {{"CONNECT"}, {"OK"}};
  EXPECT_EQ(Dial({"ATZ", "ATD"}, 10), -1);
}

TEST_F(Dialling, TakesAFullReply) {
  library.replies = {{"OK"}, {std::string(248, '.') + "CONNECT"}};
  EXPECT_EQ(Dial({"ATD"}), 0);
}

TEST_F(Dialling, WaitsThroughTimeoutsForALateConnect) {
  library.replies = {{"OK"}, {"", -9, 20}, {"", -9, 20}, {"RINGING"}, {"CONNECT", 0, 20}};
  EXPECT_EQ(Dial({"ATD"}, 60), 0);
}

TEST_F(Dialling, GivesUpWhenTheTimeIsOver) {
  const double begin = clock.now;
  EXPECT_EQ(Dial({"ATD"}, 10), -1);
  // The last command's own read, then five of 2 s that fill the 10 s and one that exceeds them.
  EXPECT_DOUBLE_EQ(clock.now - begin, 14);
  EXPECT_EQ(Count("ReadPort(255, 10)"), 7);
}

TEST_F(Dialling, ReadsOnAtTheVeryEndOfTheTime) {
  library.replies = {{"OK"}, {"", -9, 10}, {"CONNECT", 0, 2}};
  EXPECT_EQ(Dial({"ATD"}, 10), 0);
  library.replies = {{"OK"}, {"", -9, 10.5}, {"CONNECT", 0, 2}};
  EXPECT_EQ(Dial({"ATD"}, 10), -1);
}

TEST_F(Dialling, PausesIfReadsFailAtOnce) {
  library.replies.assign(1000, {"", -5, 0});
  EXPECT_EQ(Dial({"ATD"}, 10), -1);
  EXPECT_EQ(Count("Delay(50)"), 201);
}

TEST_F(Dialling, PausesIfReadsReturnNothingAtOnce) {
  library.replies = {{"OK"}, {""}, {"CONNECT"}};
  EXPECT_EQ(Dial({"ATD"}), 0);
  EXPECT_EQ(Count("Delay(50)"), 1);
}

TEST_F(Dialling, EndsIfTheLibraryCannotWait) {
  library.mode = FakePortLibrary::Mode::kFail;
  EXPECT_EQ(Dial({"ATD"}), -1);
  EXPECT_EQ(library.calls.back(), "Delay(50)");
  EXPECT_EQ(library.calls.size(), 5u);
}

TEST_F(Dialling, ReportsEachStepBeforeItBlocks) {
  library.replies = {{"\r\n"}, {"ATDT42\r\r\n"}, {"", -9, 20}, {"RING\xC9\r\n"}, {"CONNECT"}};
  EXPECT_EQ(Dial({"ATZ", "ATDT42"}, 60), 0);
  EXPECT_EQ(listener.steps,
            (std::vector<std::string>{"sent ATZ, last ''", "sent ATDT42, last ''", "60 s left, last 'ATDT42'",
                                      "40 s left, last 'ATDT42'", "40 s left, last 'RINGÉ'"}));
}

TEST_F(Dialling, KeepsTheLastReplyToTheCurrentCommand) {
  library.replies = {{"OK\r\n"}, {"", -9, 20}, {"BUSY\r\n"}, {"", -9, 20}, {"\r\n", 0, 50}};
  EXPECT_EQ(Dial({"ATZ", "ATDT42"}, 60), -1);
  EXPECT_EQ(listener.steps,
            (std::vector<std::string>{"sent ATZ, last ''", "sent ATDT42, last 'OK'", "60 s left, last ''",
                                      "60 s left, last 'BUSY'", "40 s left, last 'BUSY'"}));
}

TEST_F(Dialling, IsGivenUpAfterTheCurrentStep) {
  library.replies = {{"OK"}, {"OK"}, {"", -9, 2}, {"CONNECT"}};
  for (const std::size_t max_steps : {1u, 2u, 3u}) {
    listener.steps.clear();
    listener.max_steps = max_steps;
    EXPECT_EQ(Dial({"ATZ", "ATD"}), -1);
    EXPECT_EQ(listener.steps.size(), max_steps);
    library.replies = {{"OK"}, {"OK"}, {"", -9, 2}, {"CONNECT"}};
  }
}

TEST_F(Dialling, ReportsALineEndWithinAReplyAsASpace) {
  library.replies = {{"ATZ\rOK\r\n"}, {"CONNECT"}};
  EXPECT_EQ(Dial({"ATZ", "ATDT42"}), 0);
  EXPECT_EQ(listener.steps, (std::vector<std::string>{"sent ATZ, last ''", "sent ATDT42, last 'ATZ OK'"}));
}

TEST_F(Dialling, StallsNoLongerThanTheDialTimeout) {
  library.mode = FakePortLibrary::Mode::kStall;
  const double begin = clock.now;
  EXPECT_EQ(Dial({"ATZ", "ATD"}, 10), -1);
  EXPECT_DOUBLE_EQ(clock.now - begin, 8 + 12);
}

}  // namespace
}  // namespace kolvane::device
