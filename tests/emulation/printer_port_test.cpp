// Parallel ports through libdevlnk.so, at a node that behaves as the kernel's.

#include <gtest/gtest.h>
#include <linux/parport.h>
#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <cstdlib>

#include "devlnk/port_test.h"
#include "emulation/printer_port_driver.h"

namespace kolvane::emulation {
namespace {

using devlnk::Answer;
using devlnk::AnswerStatus;
using devlnk::Code;
using devlnk::Status;
using Calls = std::vector<std::string>;

constexpr std::int32_t kNibble = 1;
constexpr std::int32_t kBit8 = 2;
constexpr std::int32_t kByte = 3;
constexpr std::int32_t kEpp = 4;
constexpr std::int32_t kInterlink = 95;

class PrinterPortTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(IsEmulated());
    unsetenv("KOLVANE_LPT1");
    setenv("XDG_CONFIG_HOME", "/nonexistent", 1);
    system_.AddNode("ppdev", "parport0");
    system_.Attach("parport0", driver_);
    QDX_SetTimeout(20'000);
  }
  void TearDown() override { QDX_ClosePort(); }

  std::int32_t Open(std::int32_t mode) {
    if (const std::int32_t status = QDX_EnableNTPortIO(90); status < 0) return status;
    const std::int32_t status = QDX_OpenPort(90, mode, "", 8, 1, 512);
    return status < 0 ? status : QDX_SelectDevice(7);
  }
  /// One exchange in the mode, from opening to closing.
  Calls CallsOf(std::int32_t mode) {
    EXPECT_EQ(Open(mode), 0);
    EXPECT_EQ(QDX_WritePort("MSV?\n"), 0);
    EXPECT_EQ(Answer(), "MSV?");
    EXPECT_EQ(QDX_ClosePort(), 0);
    return driver_.calls();
  }

  PrinterPortDriver driver_;
  EmulatedSystem system_;
};

std::string Mode(const char* verb, int mode) { return verb + std::to_string(mode); }

TEST_F(PrinterPortTest, NibbleModeIsAgreedAndTurnsForEachCommand) {
  EXPECT_EQ(CallsOf(kNibble), (Calls{"claim", Mode("negotiate ", IEEE1284_MODE_NIBBLE),
                                     Mode("negotiate ", IEEE1284_MODE_COMPAT), "write MSV?",
                                     Mode("negotiate ", IEEE1284_MODE_NIBBLE),
                                     Mode("negotiate ", IEEE1284_MODE_COMPAT), "release"}));
}

TEST_F(PrinterPortTest, ByteModeIsAgreedAndTurnsForEachCommand) {
  EXPECT_EQ(CallsOf(kByte),
            (Calls{"claim", Mode("negotiate ", IEEE1284_MODE_BYTE), Mode("negotiate ", IEEE1284_MODE_COMPAT),
                   "write MSV?", Mode("negotiate ", IEEE1284_MODE_BYTE),
                   Mode("negotiate ", IEEE1284_MODE_COMPAT), "release"}));
}

TEST_F(PrinterPortTest, Bit8ModeIsSetWithoutNegotiation) {
  EXPECT_EQ(
      CallsOf(kBit8),
      (Calls{"claim", Mode("set ", IEEE1284_MODE_BYTE), Mode("set ", IEEE1284_MODE_COMPAT), "write MSV?",
             Mode("set ", IEEE1284_MODE_BYTE), Mode("set ", IEEE1284_MODE_COMPAT), "release"}));
}

TEST_F(PrinterPortTest, EppModeIsAgreedOnce) {
  EXPECT_EQ(CallsOf(kEpp), (Calls{"claim", Mode("negotiate ", IEEE1284_MODE_EPP), "write MSV?",
                                  Mode("negotiate ", IEEE1284_MODE_COMPAT), "release"}));
}

TEST_F(PrinterPortTest, InterlinkModeIsSetOnce) {
  EXPECT_EQ(CallsOf(kInterlink), (Calls{"claim", Mode("set ", IEEE1284_MODE_EPP), "write MSV?",
                                        Mode("set ", IEEE1284_MODE_COMPAT), "release"}));
}

TEST_F(PrinterPortTest, AnAnswerMayComeByteByByte) {
  driver_.SetPiece(1);
  for (const std::int32_t mode : {kNibble, kByte, kEpp}) {
    ASSERT_EQ(Open(mode), 0);
    EXPECT_EQ(QDX_WritePort("one\r\ntwo\r\n"), 0);
    EXPECT_EQ(Answer(), "one\r\n") << mode;
    EXPECT_EQ(Answer(5, 0), "two\r\n") << mode;
  }
}

TEST_F(PrinterPortTest, ASilentInstrumentTimesOutAndStaysUsable) {
  ASSERT_EQ(Open(kEpp), 0);
  ASSERT_EQ(QDX_SetTimeout(1), 0);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  ASSERT_EQ(QDX_SetTimeout(20'000), 0);
  EXPECT_EQ(QDX_WritePort("X\n"), 0);
  EXPECT_EQ(Answer(), "X");
}

TEST_F(PrinterPortTest, FlushingCountsDiscardedBytes) {
  ASSERT_EQ(Open(kEpp), 0);
  EXPECT_EQ(QDX_WritePort("old\n"), 0);
  EXPECT_EQ(QDX_FlushInQueue(), 4);
  EXPECT_EQ(QDX_WritePort("new\n"), 0);
  EXPECT_EQ(Answer(), "new");
}

TEST_F(PrinterPortTest, AModeThatTheInstrumentRefusesIsNamed) {
  driver_.RefuseMode(IEEE1284_MODE_EPP, ENXIO);
  EXPECT_EQ(Open(kEpp), Code(Status::kModeRefused));
  EXPECT_EQ(Open(kInterlink), Code(Status::kModeRefused));
  driver_.RefuseMode(IEEE1284_MODE_NIBBLE, EIO);
  EXPECT_EQ(Open(kNibble), Code(Status::kModeRefused)) << "no device answers";
  EXPECT_EQ(driver_.calls().back(), "release");
  EXPECT_EQ(Open(kByte), 0);
}

TEST_F(PrinterPortTest, AModeThatThePortLacksIsNamed) {
  driver_.SetAbilities(PARPORT_MODE_PCSPP);
  EXPECT_EQ(Open(kByte), Code(Status::kModeRefused));
  EXPECT_EQ(Open(kBit8), Code(Status::kModeRefused));
  EXPECT_EQ(Open(kNibble), 0);
}

TEST_F(PrinterPortTest, APortThatAnotherProgramHoldsIsBusy) {
  driver_.Refuse(PPCLAIM, EAGAIN);
  EXPECT_EQ(Open(kEpp), Code(Status::kBusy));
}

TEST_F(PrinterPortTest, APortThatVanishesIsLost) {
  ASSERT_EQ(Open(kNibble), 0);
  driver_.Unplug();
  EXPECT_EQ(QDX_WritePort("X\n"), Code(Status::kConnectionLost));
  EXPECT_EQ(AnswerStatus(), Code(Status::kConnectionLost));
}

TEST_F(PrinterPortTest, TheSecondPortIsMissing) {
  unsetenv("KOLVANE_LPT2");
  EXPECT_EQ(QDX_OpenPort(91, kEpp, "", 8, 1, 512), Code(Status::kNoSuchNode));
}

}  // namespace
}  // namespace kolvane::emulation
