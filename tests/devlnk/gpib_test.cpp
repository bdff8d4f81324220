#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <cstdlib>

#include "devlnk/gpib_stand_in.h"
#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

using Calls = std::vector<std::string>;

constexpr int kError = 0x8000;
constexpr int kTimedOut = 0x4000;
constexpr int kSystem = 0;
constexpr int kAborted = 6;

class Gpib : public testing::Test {
 protected:
  void SetUp() override {
    setenv("KOLVANE_GPIB_LIBRARY", GPIB_STAND_IN, 1);
    setenv("KOLVANE_GPIB", "3", 1);
    library_ = dlopen(GPIB_STAND_IN, RTLD_NOW);
    ASSERT_NE(library_, nullptr) << dlerror();
    script_ = reinterpret_cast<GpibScript* (*)()>(dlsym(library_, "StandInScript"))();
    *script_ = {};
    ASSERT_EQ(QDX_SetGPIBCtrlBlock(1, 0, 0, 10, 0, 0, 20'000), 0);
  }
  void TearDown() override {
    QDX_ClosePort();
    dlclose(library_);
  }
  std::int32_t Open() { return QDX_OpenPort(488, 9600, "", 8, 1, 512); }
  void OpenDevice() {
    ASSERT_EQ(Open(), 0);
    ASSERT_EQ(QDX_SelectDevice(5), 0);
    script_->calls.clear();
  }
  std::int32_t SelectWith(int open_error, int clear_error, long system_error = 0) {
    EXPECT_EQ(Open(), 0);
    script_->open_error = open_error;
    script_->clear_error = clear_error;
    script_->system_error = system_error;
    return QDX_SelectDevice(5);
  }

  void* library_ = nullptr;
  GpibScript* script_ = nullptr;
};

TEST_F(Gpib, OpensAndClearsTheDeviceThatIsSelected) {
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(script_->calls, Calls{});
  ASSERT_EQ(QDX_SelectDevice(5), 0);
  EXPECT_EQ(script_->calls, (Calls{"dev 3 5 0 14 1 0", "config 75 6 0", "clr 75"}));
  script_->calls.clear();
  ASSERT_EQ(QDX_SelectDevice(30), 0);
  EXPECT_EQ(script_->calls, (Calls{"onl 75 0", "dev 3 30 0 14 1 0", "config 100 6 0", "clr 100"}));
  script_->calls.clear();
  EXPECT_EQ(QDX_ClosePort(), 0);
  EXPECT_EQ(script_->calls, Calls{"onl 100 0"});
}

TEST_F(Gpib, KnowsNoDeviceAtTheLastAddressOfOtherBuses) {
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(QDX_SelectDevice(31), Code(Status::kInvalidArgument));
  EXPECT_EQ(script_->calls, Calls{});
}

TEST_F(Gpib, TransfersNeedASelectedDevice) {
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(QDX_WritePort("x"), Code(Status::kNotOpen));
  EXPECT_EQ(AnswerStatus(), Code(Status::kNotOpen));
  EXPECT_EQ(QDX_FlushInQueue(), 0);
  EXPECT_EQ(script_->calls, Calls{});
}

TEST_F(Gpib, TakesTheOptionsOfTheControlBlock) {
  ASSERT_EQ(QDX_SetGPIBCtrlBlock(0, 1, 1, 13, 0, 1, 300), 0);
  ASSERT_EQ(Open(), 0);
  ASSERT_EQ(QDX_SelectDevice(0), 0);
  EXPECT_EQ(script_->calls, (Calls{"dev 3 0 0 10 0 7181", "config 70 6 1", "clr 70"}));
}

TEST_F(Gpib, AControlBlockWithTimeoutZeroSetsTheDefault) {
  constexpr char kTenSeconds[] = "dev 3 0 0 13 1 0";  // the driver's next one to 5 s
  ASSERT_EQ(QDX_SetTimeout(50), 0);
  ASSERT_EQ(QDX_SetGPIBCtrlBlock(1, 0, 0, 10, 0, 0, 0), 0);
  ASSERT_EQ(Open(), 0);
  ASSERT_EQ(QDX_SelectDevice(0), 0);
  EXPECT_EQ(script_->calls.front(), kTenSeconds);
}

TEST_F(Gpib, WritesAndReadsOneAnswerAfterTheOther) {
  OpenDevice();
  script_->reads = {{"1.5\r\n2.5\nre"}, {"st\n"}};
  EXPECT_EQ(QDX_WritePort("MSV?\n"), 0);
  EXPECT_EQ(Answer(), "1.5\r\n");
  EXPECT_EQ(Answer(), "2.5");
  EXPECT_EQ(Answer(), "rest");
  EXPECT_EQ(script_->calls, (Calls{"wrt 75 MSV?\n", "rd 75", "rd 75"}));
}

TEST_F(Gpib, ReadsByCountWithoutTerminator) {
  OpenDevice();
  script_->reads = {{"\n\r\n\xFF"}};
  EXPECT_EQ(Answer(3, 0), "\n\r\n");
  EXPECT_EQ(Answer(1, 0), "\xFF");
}

TEST_F(Gpib, SetsTheDriversTimeoutWhenTheCodeOfTheRestChanges) {
  OpenDevice();
  script_->reads = {{"a\n"}, {"b\n"}};
  ASSERT_EQ(QDX_SetTimeout(50), 0);
  EXPECT_EQ(Answer(), "a");
  EXPECT_EQ(Answer(), "b");
  EXPECT_EQ(script_->calls, (Calls{"tmo 75 9", "rd 75", "rd 75"}));
}

TEST_F(Gpib, SetsTheDriversTimeoutBeforeACommand) {
  OpenDevice();
  ASSERT_EQ(QDX_SetTimeout(50), 0);
  EXPECT_EQ(QDX_WritePort("a"), 0);
  EXPECT_EQ(script_->calls, (Calls{"tmo 75 9", "wrt 75 a"}));
}

TEST_F(Gpib, DeliversBytesFromBeforeTheDriversTimeout) {
  OpenDevice();
  script_->reads = {{"12\n", kError | kTimedOut, kAborted}, {"3", kError | kTimedOut, kAborted}, {"4\n"}};
  EXPECT_EQ(Answer(), "12");
  EXPECT_EQ(Answer(), "34");
}

TEST_F(Gpib, WithoutTimeToWaitItAsksNothing) {
  OpenDevice();
  ASSERT_EQ(QDX_SetTimeout(0), 0);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  EXPECT_EQ(script_->calls, Calls{});
}

TEST_F(Gpib, GivesUpASilentDevice) {
  OpenDevice();
  ASSERT_EQ(QDX_SetTimeout(1), 0);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
}

TEST_F(Gpib, WritesTheRestAfterAPart) {
  OpenDevice();
  script_->writes = {{"abc", kError | kTimedOut, kAborted}};
  EXPECT_EQ(QDX_WritePort("abcde"), 0);
  EXPECT_EQ(script_->calls, (Calls{"wrt 75 abcde", "wrt 75 de"}));
}

TEST_F(Gpib, GivesUpADeviceThatAcceptsNothing) {
  OpenDevice();
  ASSERT_EQ(QDX_SetTimeout(0), 0);
  script_->writes = {{"", kError | kTimedOut, kAborted}};
  EXPECT_EQ(QDX_WritePort("a"), Code(Status::kWriteTimeout));
  EXPECT_EQ(QDX_WritePort("b"), 0);
  script_->writes = {{""}};
  EXPECT_EQ(QDX_WritePort("c"), Code(Status::kIoError));
}

TEST_F(Gpib, FlushingClearsTheDevice) {
  OpenDevice();
  script_->reads = {{"a\nleft"}};
  EXPECT_EQ(Answer(), "a");
  EXPECT_EQ(QDX_FlushInQueue(), 4);
  EXPECT_EQ(script_->calls, (Calls{"rd 75", "clr 75"}));
}

TEST_F(Gpib, ADeviceThatNoLongerListensIsLost) {
  OpenDevice();
  script_->writes = {{"", kError, 2}};
  EXPECT_EQ(QDX_WritePort("a"), Code(Status::kConnectionLost));
  EXPECT_EQ(QDX_WritePort("b"), Code(Status::kConnectionLost));
  OpenDevice();
  EXPECT_EQ(QDX_WritePort("c"), 0);
}

TEST_F(Gpib, ALostBoardEndsReadsAfterTheReceivedBytes) {
  OpenDevice();
  script_->reads = {{"a\nb", kError, 14}, {"", kError, kSystem, ENODEV}};
  EXPECT_EQ(Answer(), "a");
  EXPECT_EQ(AnswerStatus(), Code(Status::kConnectionLost));
  OpenDevice();
  script_->reads = {{"", kError, kSystem, ENODEV}};
  EXPECT_EQ(AnswerStatus(), Code(Status::kConnectionLost));
}

TEST_F(Gpib, ReportsWhySelectingFailed) {
  EXPECT_EQ(SelectWith(7, -1), Code(Status::kNoSuchNode)) << "no board";
  EXPECT_EQ(SelectWith(kSystem, -1, ENOENT), Code(Status::kNoSuchNode));
  EXPECT_EQ(SelectWith(kSystem, -1, EACCES), Code(Status::kPermissionDenied));
  EXPECT_EQ(SelectWith(4, -1), Code(Status::kInvalidArgument));
  EXPECT_EQ(SelectWith(11, -1), Code(Status::kNotAvailable));
  EXPECT_EQ(SelectWith(1, -1), Code(Status::kIoError)) << "the board is not the controller";
  EXPECT_EQ(SelectWith(-1, 14), Code(Status::kNoSuchNode)) << "no device on the bus";
  EXPECT_EQ(script_->calls.back(), "onl 75 0");
}

TEST_F(Gpib, NeedsABoardNumber) {
  for (const char* board : {"0", "15"}) {
    setenv("KOLVANE_GPIB", board, 1);
    EXPECT_EQ(Open(), 0) << board;
  }
  for (const char* board : {"16", "-1", "1x", "gpib0", "99999999999"}) {
    setenv("KOLVANE_GPIB", board, 1);
    EXPECT_EQ(Open(), Code(Status::kInvalidArgument)) << board;
  }
}

TEST_F(Gpib, ReportsThatTheDriverIsMissing) {
  for (const char* name : {"/nowhere/libgpib.so.0", "libm.so.6"}) {
    setenv("KOLVANE_GPIB_LIBRARY", name, 1);
    EXPECT_EQ(Open(), Code(Status::kNotAvailable)) << name;
    EXPECT_EQ(QDX_SetGPIBCtrlBlock(1, 0, 1, 255, 0, 1, 0), Code(Status::kNotAvailable)) << name;
  }
}

}  // namespace
}  // namespace kolvane::devlnk
