// Several instruments on one line.

#include <gtest/gtest.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <thread>
#include <utility>
#include <vector>

#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

/// Instruments on a bus, each with an address: they hear every line, and the one whose address leads it
/// ("5:") answers.
class Bus {
 public:
  explicit Bus(std::vector<int> addresses) : addresses_(std::move(addresses)) {
    setenv("KOLVANE_COM1", pty_.node().c_str(), 1);
    thread_ = std::thread([this] { Serve(); });
  }
  ~Bus() {
    pty_.CloseSlave();
    thread_.join();
  }
  int line() const { return pty_.slave(); }

 private:
  // Ends when the last descriptor of the other side is closed.
  void Serve() {
    std::string line;
    for (char c = 0; read(pty_.master(), &c, 1) == 1;) {
      line += c;
      if (c == '\n') Answer(std::exchange(line, {}));
    }
  }
  void Answer(const std::string& line) const {
    for (const int address : addresses_) {
      const std::string prefix = std::to_string(address) + ":";
      if (!line.starts_with(prefix)) continue;
      const std::string answer = "from " + std::to_string(address) + " " + line.substr(prefix.size());
      ASSERT_EQ(write(pty_.master(), answer.data(), answer.size()), static_cast<ssize_t>(answer.size()));
    }
  }

  std::vector<int> addresses_;
  base::Pty pty_;
  std::thread thread_;
};

class Rs485 : public testing::Test {
 protected:
  void SetUp() override { QDX_SetTimeout(20'000); }
  void TearDown() override { QDX_ClosePort(); }
  std::int32_t Open() { return QDX_OpenPort(10, 9600, "n", 8, 1, 512); }
  std::string Ask(std::int16_t address, const std::string& command) {
    EXPECT_EQ(QDX_SelectDevice(address), 0);
    EXPECT_EQ(QDX_WritePort((std::to_string(address) + ":" + command + "\n").c_str()), 0);
    return Answer();
  }
};

TEST_F(Rs485, EachInstrumentAnswersToItsAddress) {
  const Bus bus({0, 5, 31});
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(Ask(5, "A"), "from 5 A");
  EXPECT_EQ(Ask(31, "B"), "from 31 B");
  EXPECT_EQ(Ask(0, "C"), "from 0 C");
  EXPECT_EQ(Ask(5, "D"), "from 5 D");
  QDX_ClosePort();
}

TEST_F(Rs485, SelectingSendsNothing) {
  const Bus bus({5});
  ASSERT_EQ(Open(), 0);
  for (const auto address : std::vector<std::int16_t>{0, 5, 31}) EXPECT_EQ(QDX_SelectDevice(address), 0);
  EXPECT_EQ(QDX_WritePort("5:only\n"), 0);
  EXPECT_EQ(Answer(), "from 5 only");
  EXPECT_EQ(QDX_SelectDevice(32), Code(Status::kInvalidArgument));
  EXPECT_EQ(QDX_SelectDevice(-1), Code(Status::kInvalidArgument));
  QDX_ClosePort();
}

TEST_F(Rs485, AnUnusedAddressTimesOutAndSpoilsNothing) {
  const Bus bus({5});
  ASSERT_EQ(Open(), 0);
  ASSERT_EQ(QDX_SelectDevice(7), 0);
  EXPECT_EQ(QDX_WritePort("7:A\n"), 0);
  ASSERT_EQ(QDX_SetTimeout(1), 0);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  ASSERT_EQ(QDX_SetTimeout(20'000), 0);
  EXPECT_EQ(Ask(5, "B"), "from 5 B");
  QDX_ClosePort();
}

TEST_F(Rs485, ALineWithoutRs485SupportWorksToo) {
  const Bus bus({5});
  serial_rs485 settings{};
  ASSERT_EQ(ioctl(bus.line(), TIOCGRS485, &settings), -1);
  ASSERT_EQ(errno, ENOTTY);
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(Ask(5, "A"), "from 5 A");
  QDX_ClosePort();
}

}  // namespace
}  // namespace kolvane::devlnk
