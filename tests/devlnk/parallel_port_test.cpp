#include "devlnk/parallel_port.h"

#include <gtest/gtest.h>
#include <linux/parport.h>

#include <array>
#include <cerrno>
#include <cstdlib>

#include "devlnk/fake_node.h"

namespace kolvane::devlnk {
namespace {

using Calls = std::vector<std::string>;

class ParallelPort : public testing::Test {
 protected:
  void SetUp() override { script_.answers["PPGETMODES"] = PARPORT_MODE_PCSPP | PARPORT_MODE_TRISTATE; }
  Status Open(ParallelMode mode) {
    channel_.reset();
    script_.calls.clear();
    Opened opened = OpenParallelNode(MakeFakeNode(script_), mode);
    channel_ = std::move(opened.channel);
    return opened.status;
  }
  void OpenAndClearCalls(ParallelMode mode) {
    ASSERT_EQ(Open(mode), Status::kOk);
    script_.calls.clear();
  }
  Received Read(std::int32_t milliseconds = 20'000) {
    Deadline deadline(milliseconds);
    return channel_->Read(room_, deadline);
  }
  Status Write(std::string_view bytes, std::int32_t milliseconds = 20'000) {
    Deadline deadline(milliseconds);
    return channel_->Write(bytes, deadline);
  }
  std::string ReadText() { return {room_.data(), Read().bytes}; }

  NodeScript script_;
  std::unique_ptr<Channel> channel_;
  std::array<char, 64> room_{};
};

TEST(ParallelModes, HaveTheirNumbers) {
  EXPECT_EQ(ParallelModeFrom(1), ParallelMode::kNibble);
  EXPECT_EQ(ParallelModeFrom(2), ParallelMode::kBit8);
  EXPECT_EQ(ParallelModeFrom(3), ParallelMode::kByte);
  EXPECT_EQ(ParallelModeFrom(4), ParallelMode::kEpp);
  EXPECT_EQ(ParallelModeFrom(95), ParallelMode::kInterlink);
  for (const std::int32_t other : {0, -1, 5, 94, 96, 9600}) EXPECT_FALSE(ParallelModeFrom(other)) << other;
}

TEST_F(ParallelPort, IsClaimedWhileOpen) {
  ASSERT_EQ(Open(ParallelMode::kNibble), Status::kOk);
  EXPECT_EQ(script_.calls, (Calls{"PPCLAIM", "PPGETMODES", "PPNEGOT 0"}));
  script_.calls.clear();
  channel_.reset();
  EXPECT_EQ(script_.calls, (Calls{"PPNEGOT 256", "PPRELEASE", "close"}));
}

TEST_F(ParallelPort, EntersEachModeInItsWay) {
  const struct {
    ParallelMode mode;
    const char* entering;
    const char* leaving;
  } cases[] = {{ParallelMode::kNibble, "PPNEGOT 0", "PPNEGOT 256"},
               {ParallelMode::kBit8, "PPSETMODE 1", "PPSETMODE 256"},
               {ParallelMode::kByte, "PPNEGOT 1", "PPNEGOT 256"},
               {ParallelMode::kEpp, "PPNEGOT 64", "PPNEGOT 256"},
               {ParallelMode::kInterlink, "PPSETMODE 64", "PPSETMODE 256"}};
  for (const auto& expected : cases) {
    ASSERT_EQ(Open(expected.mode), Status::kOk);
    EXPECT_EQ(script_.calls.back(), expected.entering);
    script_.calls.clear();
    channel_.reset();
    EXPECT_EQ(script_.calls.front(), expected.leaving);
  }
}

TEST_F(ParallelPort, TurnsBetweenCommandAndAnswer) {
  OpenAndClearCalls(ParallelMode::kByte);
  script_.reads = {{"1"}, {".5\n"}};
  EXPECT_EQ(Write("MSV?\n"), Status::kOk);
  EXPECT_EQ(ReadText(), "1");
  EXPECT_EQ(ReadText(), ".5\n");
  EXPECT_EQ(script_.calls, (Calls{"PPNEGOT 256", "write MSV?\n", "PPNEGOT 1", "read", "read"}));
}

TEST_F(ParallelPort, NeedsNoTurnInEpp) {
  for (const ParallelMode mode : {ParallelMode::kEpp, ParallelMode::kInterlink}) {
    OpenAndClearCalls(mode);
    script_.reads = {{"1\n"}};
    EXPECT_EQ(Write("a"), Status::kOk);
    EXPECT_EQ(ReadText(), "1\n");
    EXPECT_EQ(script_.calls, (Calls{"write a", "read"}));
  }
}

TEST_F(ParallelPort, AsksAgainUntilBytesArrive) {
  OpenAndClearCalls(ParallelMode::kNibble);
  script_.reads = {{"", EAGAIN}, {"", EINTR}, {""}, {"x"}};
  EXPECT_EQ(ReadText(), "x");
  EXPECT_EQ(script_.calls, (Calls{"read", "wait", "PPCLRIRQ", "read", "wait", "PPCLRIRQ", "read", "wait",
                                  "PPCLRIRQ", "read"}));
  EXPECT_EQ(script_.wait_ms, 5) << "without interrupts only asking shows that there are bytes";
}

TEST_F(ParallelPort, AsksOnceIfThereIsNoTimeToWait) {
  OpenAndClearCalls(ParallelMode::kNibble);
  const Received received = Read(0);
  EXPECT_EQ(received.bytes, 0u);
  EXPECT_EQ(received.status, Status::kOk);
  EXPECT_EQ(script_.calls, Calls{"read"});
}

TEST_F(ParallelPort, WritesInPieces) {
  OpenAndClearCalls(ParallelMode::kEpp);
  script_.writes = {{"ab"}, {"", EAGAIN}, {""}};
  EXPECT_EQ(Write("abcd"), Status::kOk);
  EXPECT_EQ(script_.calls, (Calls{"write abcd", "write cd", "wait", "PPCLRIRQ", "write cd", "wait",
                                  "PPCLRIRQ", "write cd"}));
}

TEST_F(ParallelPort, GivesUpAnInstrumentThatAcceptsNothing) {
  OpenAndClearCalls(ParallelMode::kEpp);
  script_.writes = {{"", EAGAIN}};
  EXPECT_EQ(Write("a", 0), Status::kWriteTimeout);
}

TEST_F(ParallelPort, IsLostWhenTheDriverReportsIt) {
  for (const int error : {EIO, ENXIO, ENODEV}) {
    OpenAndClearCalls(ParallelMode::kByte);
    script_.reads = {{"", error}};
    EXPECT_EQ(Read().status, Status::kConnectionLost);
    script_.writes = {{"", error}};
    EXPECT_EQ(Write("a"), Status::kConnectionLost);
    script_.failing["PPNEGOT"] = error;
    EXPECT_EQ(Read().status, Status::kConnectionLost);
    script_.failing.clear();
  }
}

TEST_F(ParallelPort, ReportsThatAModeIsRefused) {
  script_.failing["PPNEGOT"] = EIO;
  EXPECT_EQ(Open(ParallelMode::kNibble), Status::kModeRefused);
  EXPECT_EQ(script_.calls, (Calls{"PPCLAIM", "PPGETMODES", "PPNEGOT 0", "PPRELEASE", "close"}));
  script_.failing["PPNEGOT"] = ENXIO;
  EXPECT_EQ(Open(ParallelMode::kEpp), Status::kModeRefused);
  script_.failing = {{"PPSETMODE", EINVAL}};
  EXPECT_EQ(Open(ParallelMode::kInterlink), Status::kModeRefused);
  script_.failing = {{"PPNEGOT", ENODEV}};
  EXPECT_EQ(Open(ParallelMode::kByte), Status::kNoSuchNode);
}

TEST_F(ParallelPort, NeedsDataLinesThatCanBeReadForSomeModes) {
  script_.answers["PPGETMODES"] = PARPORT_MODE_PCSPP;
  EXPECT_EQ(Open(ParallelMode::kBit8), Status::kModeRefused);
  EXPECT_EQ(Open(ParallelMode::kByte), Status::kModeRefused);
  EXPECT_EQ(Open(ParallelMode::kNibble), Status::kOk);
  EXPECT_EQ(Open(ParallelMode::kEpp), Status::kOk);
  script_.failing["PPGETMODES"] = ENOTTY;
  EXPECT_EQ(Open(ParallelMode::kByte), Status::kOk) << "a driver that does not report its modes is tried";
}

TEST_F(ParallelPort, ReportsWhyItCannotBeClaimed) {
  const struct {
    int error;
    Status status;
  } cases[] = {{EAGAIN, Status::kBusy},
               {EBUSY, Status::kBusy},
               {EIO, Status::kNoSuchNode},
               {ENXIO, Status::kNoSuchNode},
               {ENOTTY, Status::kWrongNode}};
  for (const auto& expected : cases) {
    script_.failing["PPCLAIM"] = expected.error;
    EXPECT_EQ(Open(ParallelMode::kEpp), expected.status) << expected.error;
    EXPECT_EQ(script_.calls, (Calls{"PPCLAIM", "close"}));
  }
}

TEST(OpenParallel, NeedsADriversNodeAndAMode) {
  Deadline deadline(0);
  setenv("KOLVANE_LPT1", "/dev/null", 1);
  EXPECT_EQ(OpenParallel({"LPT1", 1, "", 8, 1}, deadline).status, Status::kWrongNode);
  EXPECT_EQ(OpenParallel({"LPT1", 5, "", 8, 1}, deadline).status, Status::kInvalidArgument);
  setenv("KOLVANE_LPT1", "/dev/nowhere", 1);
  EXPECT_EQ(OpenParallel({"LPT1", 95, "", 8, 1}, deadline).status, Status::kNoSuchNode);
}

}  // namespace
}  // namespace kolvane::devlnk
