#include <gtest/gtest.h>
#include <unistd.h>

#include "terminal/session_bench.h"

namespace kolvane::terminal {
namespace {

/// A clock that the device's pauses advance.
struct PausedClock final : base::Clock {
  explicit PausedClock(const device::FakeDevice& device) : device_(device) {}
  double Seconds() const override { return static_cast<double>(device_.paused_ms) / 1000; }
  const device::FakeDevice& device_;
};

class ReconnectTest : public testing::Test, protected SessionBench {
 protected:
  ReconnectTest() {
    output.SetStateView(&shown_);
    connect.ReconnectAfterLoss(state.extras.reconnect, timeout_ms_, clock_);
    state.extras.reconnect = true;
  }
  void LoseConnection() {
    device.read_error = {-40, "-40", "Verbindung vom Gerät geschlossen"};
    session.SendCommand("A?");
    session.GetAnswer();
    device.calls.clear();
  }

  RecordedState shown_;
  std::int32_t timeout_ms_ = 3000;
  PausedClock clock_{device};
};

TEST_F(ReconnectTest, ALossIsReported) {
  LoseConnection();
  EXPECT_EQ(shown_.line.Text(), "Verbindung verloren");
  EXPECT_TRUE(device_state.connected);
}

TEST_F(ReconnectTest, WithoutItNothingChanges) {
  state.extras.reconnect = false;
  LoseConnection();
  EXPECT_EQ(session.SendCommand("B?"), Sent::kWritten);
  EXPECT_EQ(device.CountCalls("Open"), 0u);
}

TEST_F(ReconnectTest, TheNextCommandConnectsFirst) {
  LoseConnection();
  EXPECT_EQ(session.SendCommand("B?"), Sent::kWritten);
  EXPECT_EQ(device.CountCalls("Close"), 1u);
  EXPECT_EQ(device.CountCalls("Open"), 1u);
  EXPECT_EQ(device.CountCalls("Write"), 1u);
  EXPECT_EQ(shown_.line.Text(), "");
  EXPECT_FALSE(connect.lost());
  EXPECT_TRUE(pane.lines.back().find("Verbindung hergestellt mit") != std::string::npos);
}

TEST_F(ReconnectTest, AConnectionThatHasEndedIsDetected) {
  connect.Press();
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  device.wait_descriptor = ends[0];
  EXPECT_EQ(session.SendCommand("A?"), Sent::kWritten);
  EXPECT_EQ(device.CountCalls("Open"), 1u) << "the connection still stands";
  close(ends[1]);
  device.read_error = {-40, "-40"};
  device.on_open = [&] { device.wait_descriptor = -1; };
  EXPECT_EQ(session.SendCommand("B?"), Sent::kWritten);
  EXPECT_EQ(device.CountCalls("Open"), 2u);
  close(ends[0]);
}

TEST_F(ReconnectTest, UnreadBytesDoNotHideThatItHasEnded) {
  connect.Press();
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  device.wait_descriptor = ends[0];
  device.waiting = [] { return 5; };
  device.on_open = [&] { device.wait_descriptor = -1; };
  EXPECT_EQ(session.SendCommand("A?"), Sent::kWritten);
  EXPECT_EQ(device.CountCalls("Open"), 1u) << "the connection still stands";
  close(ends[1]);
  EXPECT_TRUE(session.EnsureConnected());
  EXPECT_EQ(device.CountCalls("Open"), 1u) << "a read without a command takes them first";
  EXPECT_EQ(session.SendCommand("B?"), Sent::kWritten);
  EXPECT_EQ(device.CountCalls("Open"), 2u);
  close(ends[0]);
}

TEST_F(ReconnectTest, AReadTakesWhatCameBeforeTheLoss) {
  connect.Press();
  device.waiting = [] { return 5; };
  connect.NoteLoss();
  EXPECT_TRUE(session.EnsureConnected());
  EXPECT_EQ(device.CountCalls("Open"), 1u);
  device.waiting = [] { return 0; };
  EXPECT_TRUE(session.EnsureConnected());
  EXPECT_EQ(device.CountCalls("Open"), 2u);
}

TEST_F(ReconnectTest, OnePressOfThePlugConnects) {
  connect.Press();
  LoseConnection();
  connect.Press();
  EXPECT_EQ(device.CountCalls("Open"), 1u);
  EXPECT_EQ(Button(), "1 20 Verbindung trennen");
}

TEST_F(ReconnectTest, ThePlugOffersToConnectAfterAFailure) {
  connect.Press();
  LoseConnection();
  device.open_result = {-22, "-22", "Verbindung abgelehnt"};
  connect.Press();
  EXPECT_FALSE(device_state.connected);
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
}

TEST_F(ReconnectTest, AWordThatDisconnectsDoesNotConnect) {
  connect.Press();
  device.write_result = {-41, "-41", "Verbindung abgerissen"};
  session.SendCommand("DCL");
  session.PostSendCheck("DCL");
  EXPECT_EQ(device.CountCalls("Open"), 1u);
  EXPECT_FALSE(device_state.connected);
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
}

TEST_F(ReconnectTest, TriesAgainAfterPausesThatDouble) {
  LoseConnection();
  int attempts = 0;
  device.open_result = {-22, "-22"};
  device.on_open = [&] {
    if (++attempts == 3) device.last_error = {};
  };
  EXPECT_EQ(session.SendCommand("B?"), Sent::kWritten);
  EXPECT_EQ(attempts, 3);
  EXPECT_EQ(device.paused_ms, 1500);
}

TEST_F(ReconnectTest, GivesUpAfterTheTimeout) {
  LoseConnection();
  device.open_result = {-22, "-22", "Verbindung abgelehnt"};
  EXPECT_EQ(session.SendCommand("B?"), Sent::kNotConnected);
  EXPECT_EQ(device.paused_ms, 3000);
  EXPECT_FALSE(device_state.connected);
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
  EXPECT_EQ(prompt.errors, Lines{"Fehler beim Verbindungsaufbau: -22 (-22)"});
}

TEST_F(ReconnectTest, EndsWhenThePauseIsGivenUp) {
  LoseConnection();
  device.open_result = {-22, "-22"};
  device.pause_result = {-60, "-60"};
  EXPECT_EQ(session.SendCommand("B?"), Sent::kNotConnected);
  EXPECT_EQ(device.CountCalls("Open"), 1u);
}

TEST_F(ReconnectTest, TheStatesTextStaysUntilAnAnswerIsReceived) {
  device.read_error = {-30, "-30", "keine Antwort innerhalb des Timeouts"};
  session.GetAnswer();
  EXPECT_EQ(shown_.line.Text(), "-30: keine Antwort innerhalb von 3000 ms");
  EXPECT_EQ(pane.remarks, Lines{"-30: keine Antwort innerhalb von 3000 ms"});
  EXPECT_EQ(pane.lines, Lines{"-30"});
  device.text_answers = {"1\r\n"};
  session.GetAnswer();
  EXPECT_EQ(shown_.line.Text(), "");
}

TEST_F(ReconnectTest, UnreadBytesAreReported) {
  device.waiting = [] { return 12; };
  session.ReportBytesWaiting();
  EXPECT_EQ(shown_.line.Text(), "12 Bytes warten");
  device.flushed = 12;
  session.Flush();
  EXPECT_EQ(shown_.line.Text(), "");
}

TEST_F(ReconnectTest, ReceivedBytesAreDiscardedFirstIfWanted) {
  state.flush_first = true;
  session.SendCommand("A?");
  EXPECT_EQ(device.calls.front(), "FlushInput");
  EXPECT_EQ(pane.lines, Lines{}) << "without a line in the pane";
}

}  // namespace
}  // namespace kolvane::terminal
