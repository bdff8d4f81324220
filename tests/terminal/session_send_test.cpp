#include <gtest/gtest.h>

#include "terminal/session_bench.h"

namespace kolvane::terminal {
namespace {

class SessionSendTest : public testing::Test, protected SessionBench {};

TEST_F(SessionSendTest, ClearsWritesAndAsksForTheError) {
  EXPECT_EQ(session.SendCommand("MSV?1,1"), Sent::kWritten);
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "Write MSV?1,1|\\n|0", "LastError"}));
  EXPECT_EQ(pane.text, "");
}

TEST_F(SessionSendTest, PassesTheCurrentSendTerminator) {
  state.receive.send_terminator = "";
  session.SendCommand("A");
  state.receive.send_terminator = "ENDE\r\n";
  session.SendCommand("Größe?");
  EXPECT_EQ(device.calls[1], "Write A||0");
  EXPECT_EQ(device.calls[4], "Write Größe?|ENDE\\r\\n|0");
}

TEST_F(SessionSendTest, DoesNotEcho) {
  session.SendCommand("IDN?");
  EXPECT_EQ(pane.text, "");
}

TEST_F(SessionSendTest, ShowsAWriteErrorDespiteSilentModeAndNotInTheLog) {
  state.output = {.SilentMode = true, .log_recording = true};
  pane.text = "\r\nIDN?";
  pane.caret_back = 3;
  device.write_result = {-7, "Leitung tot"};
  EXPECT_EQ(session.SendCommand("MSV?"), Sent::kWriteFailed);
  EXPECT_EQ(pane.text, "\r\nIDN?\r\nWrite error: Leitung tot");
  EXPECT_EQ(pane.caret_back, 0);
  EXPECT_EQ(log.lines, Lines{});
}

TEST_F(SessionSendTest, ConnectsOnceWhenNotConnected) {
  device_state.connected = false;
  EXPECT_EQ(session.SendCommand("IDN?"), Sent::kWritten);
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "Open", "LastError", "ClearLastError", "Write IDN?|\\n|0",
                                 "LastError"}));
  EXPECT_EQ(pane.lines, Lines{"20.11.2026 08:05:09  Verbindung hergestellt mit TCP/IP: 10.0.0.7, Port 7"});
}

TEST_F(SessionSendTest, DropsTheCommandWhenConnectingFails) {
  device_state.connected = false;
  device.open_result = {-2, "-2"};
  EXPECT_EQ(session.SendCommand("IDN?"), Sent::kNotConnected);
  EXPECT_EQ(device.CountCalls("Open"), 1u);
  EXPECT_EQ(device.CountCalls("Write"), 0u);
  EXPECT_EQ(prompt.errors, Lines{"Fehler beim Verbindungsaufbau: -2 (-2)"});
  EXPECT_EQ(pane.text, "");
}

TEST_F(SessionSendTest, DropsTheCommandWhenTheButtonWouldDisconnect) {
  device_state.connected = false;
  connect.Press();
  connect.Disconnect();
  device.calls.clear();
  EXPECT_EQ(session.SendCommand("IDN?"), Sent::kNotConnected);
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "Close", "LastError"}));
  EXPECT_EQ(connect.button().tag, 0);
}

TEST_F(SessionSendTest, PostSendCheckPressesTheButtonForLocalAndRestart) {
  device_state.connected = false;
  for (const char* command : {"DCL", "*RST", "PRES?"}) {
    connect.Press();
    ASSERT_TRUE(device_state.connected);
    const PostSendRule rule = session.PostSendCheck(command);
    EXPECT_FALSE(rule.continues) << command;
    EXPECT_FALSE(device_state.connected) << command;
  }
  EXPECT_EQ(device.CountCalls("Close"), 3u);
}

TEST_F(SessionSendTest, PostSendCheckKeepsTheConnectionForOtherCommands) {
  EXPECT_FALSE(session.PostSendCheck("STP").continues);
  EXPECT_TRUE(session.PostSendCheck("IDN?").continues);
  EXPECT_EQ(device.calls, Lines{});
  EXPECT_TRUE(device_state.connected);
}

}  // namespace
}  // namespace kolvane::terminal
