#include "terminal/connect_commands.h"

#include <gtest/gtest.h>

#include "base/pattern.h"
#include "terminal/connect_bench.h"

namespace kolvane::terminal {
namespace {

class ConnectCommandsTest : public testing::Test, protected ConnectBench {};

TEST_F(ConnectCommandsTest, StartsNotConnected) {
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
  EXPECT_EQ(connect.StatusText(), "Nicht verbunden");
}

TEST_F(ConnectCommandsTest, ConnectChangesOnlyFlagAndToolTip) {
  connect.Connect();
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "Open", "LastError"}));
  EXPECT_TRUE(device_state.connected);
  EXPECT_EQ(Button(), "0 21 Verbindung trennen");
  EXPECT_EQ(pane.text, "");
  EXPECT_EQ(view.changes, 1);
  EXPECT_EQ(connect.StatusText(), "TCP/IP: 10.0.0.7, Port 7");
}

// A host that opens its device may process events, and so does a wait for a modem.
TEST_F(ConnectCommandsTest, AnAttemptIsNotReentered) {
  device.on_open = [this] {
    EXPECT_TRUE(connect.connecting());
    connect.Connect();
    connect.Press();
  };
  connect.Press();
  EXPECT_EQ(device.CountCalls("Open"), 1u);
  EXPECT_FALSE(connect.connecting());
  EXPECT_EQ(Button(), "1 20 Verbindung trennen");
  connect.Press();
  connect.Connect();
  EXPECT_EQ(device.CountCalls("Open"), 2u);
}

TEST_F(ConnectCommandsTest, AFailedConnectShowsItsMessage) {
  device.open_result = {-12, "Gerät antwortet nicht"};
  connect.Connect();
  EXPECT_FALSE(device_state.connected);
  EXPECT_EQ(prompt.errors, Lines{"Fehler beim Verbindungsaufbau: Gerät antwortet nicht (-12)"});
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
  EXPECT_EQ(view.changes, 1);
}

TEST_F(ConnectCommandsTest, AFailedConnectClearsTheFlagOfAnOlderConnection) {
  connect.Connect();
  device.open_result = {-1, "-1"};
  connect.Connect();
  EXPECT_FALSE(device_state.connected);
  EXPECT_EQ(Button(), "0 21 Verbindung trennen");
}

TEST_F(ConnectCommandsTest, ACodeOfZeroOrMoreIsASuccess) {
  device.open_result = {4, "4"};
  connect.Connect();
  EXPECT_TRUE(device_state.connected);
  EXPECT_EQ(prompt.errors, Lines{});
}

TEST_F(ConnectCommandsTest, DisconnectChangesOnlyFlagAndToolTip) {
  connect.Connect();
  device.calls.clear();
  connect.Disconnect();
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "Close", "LastError"}));
  EXPECT_FALSE(device_state.connected);
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
  EXPECT_EQ(pane.text, "");
  EXPECT_EQ(view.changes, 2);
}

TEST_F(ConnectCommandsTest, AFailedDisconnectStaysConnected) {
  connect.Connect();
  device.close_result = {-6, "-6"};
  connect.Disconnect();
  EXPECT_TRUE(device_state.connected);
  EXPECT_EQ(prompt.errors, Lines{"Fehler beim Verbindungsabbau: -6 (-6)"});
  EXPECT_EQ(Button(), "0 21 Verbindung trennen");
}

TEST_F(ConnectCommandsTest, FlushReportsTheCount) {
  connect.Flush();
  EXPECT_EQ(pane.lines, Lines{});
  device.flushed = 0;
  connect.Flush();
  device.flushed = 1234;
  connect.Flush();
  EXPECT_EQ(device.calls, Lines(3, "FlushInput"));
  EXPECT_EQ(pane.lines, (Lines{"Empfangspuffer gelöscht (0 Bytes)", "Empfangspuffer gelöscht (1234 Bytes)"}));
}

TEST_F(ConnectCommandsTest, MenuFollowsConnectionAndMode) {
  for (const std::int16_t mode : std::initializer_list<std::int16_t>{0, 1, 3}) {
    device_state.OperMode = mode;
    EXPECT_EQ(connect.Menu(), (ConnectionMenu{.configure = false, .connect = true, .disconnect = false}));
  }
  device_state.OperMode = 2;
  EXPECT_EQ(connect.Menu(), (ConnectionMenu{.configure = true, .connect = true, .disconnect = false}));
  device_state.connected = true;
  EXPECT_EQ(connect.Menu(), (ConnectionMenu{.configure = false, .connect = false, .disconnect = true}));
}

TEST_F(ConnectCommandsTest, StatusTextFollowsTheDescription) {
  ConnectCommands offline(device, device_state, output, prompt, view,
                          {.description = [] { return std::string(); }});
  device_state.connected = true;
  EXPECT_EQ(offline.StatusText(), "");
  device_state.connected = false;
  EXPECT_EQ(offline.StatusText(), "Nicht verbunden");
}

TEST_F(ConnectCommandsTest, LinesCarryTheSystemsDateAndTime) {
  ConnectCommands commands(device, device_state, output, prompt, view,
                           {.description = [] { return std::string("USB:  4711"); }});
  commands.Press();
  ASSERT_EQ(pane.lines.size(), 1u);
  const base::Pattern line(".*[0-9]{2}.*[0-9]{2}.*  Verbindung hergestellt mit USB:  4711");
  EXPECT_TRUE(line.Matches(pane.lines[0])) << pane.lines[0];
}

}  // namespace
}  // namespace kolvane::terminal
