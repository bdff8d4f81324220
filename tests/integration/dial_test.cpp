// Dialling through the real port library, with a modem on a pseudo terminal.

#include <gtest/gtest.h>
#include <sys/file.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>

#include "device/device_io.h"
#include "device/device_state.h"
#include "device/fake_clock.h"
#include "device/loaded_port_library.h"
#include "devlnk/status.h"
#include "integration/modem.h"

namespace kolvane::integration {
namespace {

using Lines = std::vector<std::string>;

constexpr std::int32_t kLongTimeoutMs = 20'000;
constexpr std::int32_t kShortMs = 1;

/// Each step that waits for the connection advances the test's own clock by five seconds.
class DialTest : public testing::Test, private device::WaitListener {
 protected:
  std::int32_t Dial(Modem& modem, const std::string& script, std::int32_t timeout_ms = kLongTimeoutMs) {
    setenv("KOLVANE_PORT_LIBRARY", KOLVANE_PORT_LIBRARY_FILE, 1);
    setenv("KOLVANE_COM1", modem.node().c_str(), 1);
    state_.OperMode = device::operating_mode::kPortLibrary;
    parameters_.port_code = device::port_code::kCom1;
    parameters_.baud = 9600;
    parameters_.data_bits = 8;
    parameters_.timeout_ms = timeout_ms;
    parameters_.modem_script = script;
    parameters_.dial_timeout_s = 60;
    device_.Open();
    return state_.open_step_status;
  }

  std::string Exchange(const std::string& command) {
    std::string answer;
    Bytes bytes;
    device_.Write(command, "\n", 0);
    device_.ReadText("\n", 16000, answer, bytes);
    return answer;
  }

  // The port is closed: nothing can be sent, and the line can be opened by others.
  void ExpectClosed(Modem& modem) {
    EXPECT_EQ(state_.last_result, 0) << "connecting itself counts as done";
    device_.Write("X", "\n", 0);
    EXPECT_EQ(state_.last_result, devlnk::Code(devlnk::Status::kNotOpen));
    EXPECT_EQ(flock(modem.line(), LOCK_EX | LOCK_NB), 0);
  }

  device::DeviceState state_;
  device::ConnectionParameters parameters_;
  device::FakeClock clock_;
  device::LazyPortLibrary library_{""};
  device::Waits waits_{library_, clock_, *this};
  device::DeviceIo device_{state_, parameters_, library_, clock_, waits_};
  std::function<void(const device::DialProgress&)> on_wait_ = [](const auto&) {};
  Lines replies_;

 private:
  bool Dialling(const device::DialProgress& progress) override {
    if (!progress.command.empty()) return true;
    replies_.push_back(progress.reply);
    clock_.Advance(5);
    on_wait_(progress);
    return true;
  }
};

TEST_F(DialTest, EachLineIsSentWithCrAndConnectCompletesTheDialling) {
  Modem modem(Answers{{"ATZ", "\r\nOK\r\n"}, {"ATDT0815", "\r\nCONNECT 9600\r\n"}});
  EXPECT_EQ(Dial(modem, "ATZ\r\nATDT0815"), 0);
  EXPECT_EQ(modem.AwaitLines(2), (Lines{"ATZ", "ATDT0815"}));
  EXPECT_EQ(Exchange("MSV?"), "MSV?\r\n");
  device_.Close();
}

TEST_F(DialTest, TheOnlyReplyMayBeConnect) {
  Modem modem(Answers{{"ATD", "CONNECT\r\n"}});
  EXPECT_EQ(Dial(modem, "ATD"), 0);
  EXPECT_EQ(replies_, Lines{}) << "the reply to the line itself counts";
  device_.Close();
}

TEST_F(DialTest, AnEchoIsNotAnAnswer) {
  Modem modem(Answers{{"ATE1", "\r\nOK\r\n"}, {"ATDT1", "\r\nRINGING\r\n\r\nCONNECT\r\n"}}, true);
  EXPECT_EQ(Dial(modem, "ATE1\r\nATDT1"), 0);
  EXPECT_EQ(Exchange("A"), "A\r\n") << "nothing of the dialogue is left to read";
  device_.Close();
}

TEST_F(DialTest, ALateConnectCounts) {
  Modem modem(Answers{{"ATD", "OK\r\n"}});
  int waits = 0;
  on_wait_ = [&](const auto&) {
    if (++waits == 4) modem.SendUnasked("CONNECT 2400\r\n");
    library_.Library()->SetTimeout(waits < 4 ? kShortMs : kLongTimeoutMs);
  };
  EXPECT_EQ(Dial(modem, "ATD"), 0);
  EXPECT_EQ(waits, 4);
  device_.Close();
}

TEST_F(DialTest, ReadsOnAfterALateAnswerToAnEarlierLine) {
  Modem modem(Answers{{"ATD", "CONNECT\r\n"}});
  on_wait_ = [&](const auto&) { library_.Library()->SetTimeout(kLongTimeoutMs); };
  EXPECT_EQ(Dial(modem, "ATZ\r\nATD", kShortMs), 0);
  device_.Close();
}

class FailingDial : public DialTest, public testing::WithParamInterface<const char*> {};

TEST_P(FailingDial, ClosesThePort) {
  const std::string says = GetParam();
  Modem modem(Answers{{"ATD", says.empty() ? "" : "\r\n" + says + "\r\n"}});
  on_wait_ = [&](const auto&) { library_.Library()->SetTimeout(replies_.size() < 3 ? 200 : kShortMs); };
  EXPECT_EQ(Dial(modem,
                 "ATD"
                 "\r\n",
                 says.empty() ? kShortMs : kLongTimeoutMs),
            -1);
  EXPECT_EQ(replies_.size(), 13u) << "until more than the dial time-out has passed";
  EXPECT_NE(std::find(replies_.begin(), replies_.end(), says), replies_.end());
  ExpectClosed(modem);
}

INSTANTIATE_TEST_SUITE_P(Modem, FailingDial,
                         testing::Values("BUSY", "NO CARRIER", "NO DIALTONE", "ERROR", ""));

TEST_F(DialTest, AHangUpWhileDiallingClosesThePort) {
  auto modem = std::make_unique<Modem>(Answers{{"ATD", "OK\r\n"}});
  on_wait_ = [&](const auto&) { modem.reset(); };
  EXPECT_EQ(Dial(*modem, "ATD"), -1);
  EXPECT_EQ(state_.last_result, 0);
  device_.Write("X", "\n", 0);
  EXPECT_EQ(state_.last_result, devlnk::Code(devlnk::Status::kNotOpen));
}

TEST_F(DialTest, AfterAFailureTheSamePortDialsAgain) {
  Modem modem(Answers{{"ATD1", "BUSY\r\n"}, {"ATD2", "CONNECT\r\n"}});
  on_wait_ = [&](const auto&) { library_.Library()->SetTimeout(kShortMs); };
  EXPECT_EQ(Dial(modem, "ATD1"), -1);
  EXPECT_EQ(Dial(modem, "ATD2"), 0);
  EXPECT_EQ(Exchange("A"), "A\r\n");
  device_.Close();
}

TEST_F(DialTest, WithoutAScriptNothingIsDialled) {
  Modem modem(Answers{});
  EXPECT_EQ(Dial(modem, ""), 0);
  device_.Write("X\r", "", 0);
  EXPECT_EQ(modem.AwaitLines(1), Lines{"X"});
  device_.Close();
}

}  // namespace
}  // namespace kolvane::integration
