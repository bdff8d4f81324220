#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

class Serial : public testing::Test {
 protected:
  void SetUp() override { QDX_SetTimeout(20'000); }
  void TearDown() override { QDX_ClosePort(); }

  std::int32_t Open(std::int32_t baud = 9600, const char* parity = "n") {
    return OpenNode(pty_.node(), baud, parity);
  }
  std::int32_t OpenNode(const std::string& node, std::int32_t baud = 9600, const char* parity = "n") {
    setenv("KOLVANE_COM1", node.c_str(), 1);
    return QDX_OpenPort(1, baud, parity, 8, 1, 512);
  }
  termios Settings() {
    termios settings{};
    tcgetattr(pty_.slave(), &settings);
    return settings;
  }

  base::Pty pty_;
};

/// Drops root's rights while it lives; the tests may run with or without them.
class UnprivilegedUser {
 public:
  UnprivilegedUser() : before_(geteuid()) { EXPECT_TRUE(before_ != 0 || seteuid(65534) == 0); }
  ~UnprivilegedUser() { EXPECT_EQ(seteuid(before_), 0); }

 private:
  uid_t before_;
};

TEST_F(Serial, AChosenNodeHoldsForTheNextOpeningOfItsPort) {
  constexpr std::int32_t kNoNode = Code(Status::kNoSuchNode);
  setenv("KOLVANE_COM1", "/nowhere", 1);
  setenv("KOLVANE_COM2", "/nowhere", 1);
  const auto open = [](std::int16_t port) { return QDX_OpenPort(port, 9600, "n", 8, 1, 512); };
  EXPECT_EQ(QDX_SetNode(1, pty_.node().c_str()), 0);
  EXPECT_EQ(open(2), kNoNode);
  EXPECT_EQ(open(10), kNoNode);
  EXPECT_EQ(open(1), 0);
  ASSERT_EQ(write(pty_.master(), "up\n", 3), 3);
  EXPECT_EQ(Answer(), "up");
  EXPECT_EQ(open(1), kNoNode);
  EXPECT_EQ(QDX_SetNode(20, pty_.node().c_str()), 0);
  EXPECT_EQ(QDX_SetNode(20, "/elsewhere"), 0);
  EXPECT_EQ(QDX_SetNode(20, pty_.node().c_str()), 0);
  EXPECT_EQ(open(20), 0);
  EXPECT_EQ(QDX_SetNode(1, pty_.node().c_str()), 0);
  EXPECT_EQ(QDX_SetNode(1, nullptr), 0);
  EXPECT_EQ(open(1), kNoNode);
  unsetenv("KOLVANE_COM2");
}

TEST_F(Serial, TheLineIsRawWhileOpenAndAsItWasAfterwards) {
  const termios before = Settings();
  ASSERT_NE(before.c_lflag & ECHO, 0u);
  ASSERT_EQ(Open(19'200), 0);
  EXPECT_EQ(Settings().c_lflag, 0u);
  EXPECT_EQ(Settings().c_oflag, 0u);
  const termios open = Settings();
  EXPECT_EQ(cfgetospeed(&open), static_cast<speed_t>(B19200));
  QDX_ClosePort();
  const termios after = Settings();
  EXPECT_EQ(after.c_iflag, before.c_iflag);
  EXPECT_EQ(after.c_oflag, before.c_oflag);
  EXPECT_EQ(after.c_cflag, before.c_cflag);
  EXPECT_EQ(after.c_lflag, before.c_lflag);
  EXPECT_EQ(after.c_cc[VMIN], before.c_cc[VMIN]);
  EXPECT_EQ(after.c_cc[VTIME], before.c_cc[VTIME]);
}

TEST_F(Serial, SettingsAreRestoredAlthoughThePartnerNeverRead) {
  const termios before = Settings();
  ASSERT_EQ(Open(), 0);
  QDX_SetTimeout(10);
  EXPECT_EQ(QDX_WritePort(std::string(100'000, 'x').c_str()), Code(Status::kWriteTimeout));
  EXPECT_EQ(QDX_ClosePort(), 0);
  EXPECT_EQ(Settings().c_lflag, before.c_lflag);
}

TEST_F(Serial, EveryRateOfTheDriverIsPossible) {
  for (const std::int32_t baud : {1, 50, 300, 12'345, 115'200, 4'000'000}) EXPECT_EQ(Open(baud), 0) << baud;
  EXPECT_EQ(Open(0), Code(Status::kInvalidArgument));
  EXPECT_EQ(Open(-9600), Code(Status::kInvalidArgument));
}

TEST_F(Serial, ParityIsOneOfThreeLettersOrNothing) {
  for (const char* parity : {"n", "e", "o", "E", ""}) EXPECT_EQ(Open(9600, parity), 0) << parity;
  EXPECT_EQ(Open(9600, nullptr), 0);
  for (const char* parity : {"x", "ne", " "})
    EXPECT_EQ(Open(9600, parity), Code(Status::kInvalidArgument)) << parity;
}

TEST_F(Serial, BytesFromBeforeOpeningAreNotAnAnswer) {
  ASSERT_EQ(write(pty_.master(), "stale\n", 6), 6);
  ASSERT_EQ(Open(), 0);
  ASSERT_EQ(write(pty_.master(), "fresh\n", 6), 6);
  EXPECT_EQ(Answer(), "fresh");
}

TEST_F(Serial, BothPortsHaveTheirOwnNodes) {
  const base::Pty second;
  setenv("KOLVANE_COM2", second.node().c_str(), 1);
  for (const auto port : {std::int16_t{2}, std::int16_t{20}}) {
    ASSERT_EQ(QDX_OpenPort(port, 9600, "n", 8, 1, 512), 0);
    ASSERT_EQ(write(second.master(), "two\n", 4), 4);
    EXPECT_EQ(Answer(), "two");
  }
}

TEST_F(Serial, TheLineIsHeldExclusivelyUntilItIsClosed) {
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(flock(pty_.slave(), LOCK_EX | LOCK_NB), -1);
  EXPECT_EQ(errno, EWOULDBLOCK);
  int exclusive = 0;
  ASSERT_EQ(ioctl(pty_.slave(), TIOCGEXCL, &exclusive), 0);
  EXPECT_NE(exclusive, 0);
  QDX_ClosePort();
  EXPECT_EQ(flock(pty_.slave(), LOCK_EX | LOCK_NB), 0);
  ASSERT_EQ(ioctl(pty_.slave(), TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 0);
}

TEST_F(Serial, AClosedLineIsFreeEvenIfAForkedProcessHasItsDescriptors) {
  ASSERT_EQ(Open(), 0);
  const pid_t child = fork();
  if (child == 0) {
    pause();
    _exit(0);
  }
  QDX_ClosePort();
  EXPECT_EQ(flock(pty_.slave(), LOCK_EX | LOCK_NB), 0);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
}

TEST_F(Serial, AForkedProcessLeavesTheLineAsItIs) {
  ASSERT_EQ(Open(38'400), 0);
  const termios before = Settings();
  const pid_t child = fork();
  if (child == 0) {
    QDX_ClosePort();
    _exit(0);
  }
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  const termios after = Settings();
  EXPECT_EQ(cfgetospeed(&after), cfgetospeed(&before));
  EXPECT_EQ(flock(pty_.slave(), LOCK_EX | LOCK_NB), -1);
}

TEST_F(Serial, ALineThatAnotherProgramLocksIsBusy) {
  ASSERT_EQ(flock(pty_.slave(), LOCK_EX | LOCK_NB), 0);
  EXPECT_EQ(Open(), Code(Status::kBusy));
  ASSERT_EQ(flock(pty_.slave(), LOCK_UN), 0);
  EXPECT_EQ(Open(), 0);
}

TEST_F(Serial, ALineThatAnotherProgramHoldsExclusivelyIsBusy) {
  ASSERT_EQ(chmod(pty_.node().c_str(), 0666), 0);
  ASSERT_EQ(ioctl(pty_.slave(), TIOCEXCL), 0);
  const UnprivilegedUser user;
  EXPECT_EQ(Open(), Code(Status::kBusy));
}

TEST_F(Serial, NodesThatAreNotSerialLinesAreDistinguished) {
  const auto folder = std::filesystem::temp_directory_path();
  const std::string file = folder / ("devlnk_node_" + std::to_string(getpid()));
  close(creat(file.c_str(), 0));
  EXPECT_EQ(OpenNode(file + ".missing"), Code(Status::kNoSuchNode));
  EXPECT_EQ(OpenNode(file + "/below"), Code(Status::kNoSuchNode));
  EXPECT_EQ(OpenNode(std::string(10'000, 'x')), Code(Status::kNoSuchNode));
  EXPECT_EQ(OpenNode(folder), Code(Status::kWrongNode));
  EXPECT_EQ(OpenNode("/dev/null"), Code(Status::kWrongNode));
  {
    const UnprivilegedUser user;
    EXPECT_EQ(OpenNode(file), Code(Status::kPermissionDenied));
  }
  std::filesystem::remove(file);
}

TEST_F(Serial, APseudoTerminalWithoutItsOtherEndIsNotADevice) {
  pty_.CloseMaster();
  EXPECT_EQ(Open(), Code(Status::kNoSuchNode));
}

TEST_F(Serial, TheLineMayEndWhileItIsOpen) {
  ASSERT_EQ(Open(), 0);
  pty_.CloseSlave();
  pty_.CloseMaster();
  EXPECT_EQ(AnswerStatus(), Code(Status::kConnectionLost));
  EXPECT_EQ(QDX_ClosePort(), 0);
}

}  // namespace
}  // namespace kolvane::devlnk
