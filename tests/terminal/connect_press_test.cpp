#include <gtest/gtest.h>

#include "terminal/connect_bench.h"

namespace kolvane::terminal {
namespace {

constexpr char kConnectedLine[] = "20.11.2026 08:05:09  Verbindung hergestellt mit TCP/IP: 10.0.0.7, Port 7";
constexpr char kDisconnectedLine[] = "20.11.2026 08:05:09  Verbindung getrennt von TCP/IP: 10.0.0.7, Port 7";

class ConnectPressTest : public testing::Test, protected ConnectBench {};

TEST_F(ConnectPressTest, ConnectsAndDisconnectsInTurn) {
  connect.Press();
  EXPECT_TRUE(device_state.connected);
  EXPECT_EQ(Button(), "1 20 Verbindung trennen");
  connect.Press();
  EXPECT_FALSE(device_state.connected);
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
  EXPECT_EQ(pane.lines, (Lines{kConnectedLine, kDisconnectedLine}));
  EXPECT_EQ(pane.kinds, (std::vector{LineKind::kNotice, LineKind::kNotice}));
  EXPECT_EQ(view.changes, 2);
}

TEST_F(ConnectPressTest, AFailedConnectDoesNotChangeTheButton) {
  device.open_result = {-2, "-2"};
  connect.Press();
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
  EXPECT_EQ(pane.text, "");
  EXPECT_EQ(prompt.errors.size(), 1u);
}

TEST_F(ConnectPressTest, AFailedDisconnectDoesNotChangeTheButton) {
  connect.Press();
  device.close_result = {-6, "-6"};
  connect.Press();
  EXPECT_EQ(Button(), "1 20 Verbindung trennen");
  EXPECT_EQ(pane.lines, Lines{kConnectedLine});
  EXPECT_EQ(prompt.errors, Lines{"Fehler beim Verbindungsabbau: -6 (-6)"});
}

TEST_F(ConnectPressTest, TheTagDecidesRatherThanTheConnection) {
  connect.Press();
  connect.Disconnect();
  EXPECT_EQ(Button(), "1 20 Verbindung aufbauen");
  connect.Press();
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
  EXPECT_EQ(device.CountCalls("Close"), 2u);
  EXPECT_EQ(pane.lines, (Lines{kConnectedLine, kDisconnectedLine}));
}

TEST_F(ConnectPressTest, AHostsOpenDeviceIsFirstConnectedAgain) {
  device_state.connected = true;
  connect.ShowConnected();
  EXPECT_EQ(Button(), "0 20 Verbindung trennen");
  EXPECT_EQ(device.calls, Lines{});
  EXPECT_EQ(view.changes, 1);
  connect.Press();
  EXPECT_EQ(device.CountCalls("Open"), 1u);
  EXPECT_EQ(Button(), "1 20 Verbindung trennen");
  connect.Press();
  EXPECT_EQ(Button(), "0 21 Verbindung aufbauen");
}

TEST_F(ConnectPressTest, SilentModeHidesOnlyTheLines) {
  state.output.SilentMode = true;
  connect.Press();
  EXPECT_EQ(pane.text, "");
  EXPECT_EQ(Button(), "1 20 Verbindung trennen");
}

}  // namespace
}  // namespace kolvane::terminal
