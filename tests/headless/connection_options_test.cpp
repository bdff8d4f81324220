
#include <gtest/gtest.h>

#include <variant>

#include "device/fake_device.h"
#include "device/resource_name.h"
#include "headless/terminal.h"

namespace kolvane::headless {
namespace {

struct NoView final : terminal::ReceiveControlsView {
  void ShowReceiveControls(const terminal::ReceiveShown&, bool) override {}
};

struct OptionsTest : testing::Test {
  void Apply() { ApplyTerminalOptions(options, controls, state.terminal); }
  const terminal::ReceiveSettings& receive() const { return state.terminal.receive; }

  CommandRunOptions options;
  RunState state;
  device::FakeDevice device;
  NoView view;
  terminal::ReceiveControls controls{state.terminal.receive, state.terminal.shown, device, view};
};

TEST_F(OptionsTest, WithoutOptionsOnlyTheOutputChanges) {
  state.terminal.receive.send_terminator = "\r";
  Apply();
  EXPECT_EQ(receive().mode, terminal::receive_mode::kTerminator);
  EXPECT_EQ(receive().receive_terminator, "\r\n");
  EXPECT_EQ(receive().send_terminator, "\r");
  EXPECT_EQ(state.terminal.shown.timeout, "3000");
  EXPECT_FALSE(state.terminal.options.show_commands);
  EXPECT_FALSE(state.terminal.options.show_response_times);
}

TEST_F(OptionsTest, AModeSetsItsTerminatorUnlessOneIsGiven) {
  options.ReceiveMode = AnswerEnd::kGap;
  Apply();
  EXPECT_EQ(receive().mode, terminal::receive_mode::kAuto);
  EXPECT_EQ(receive().receive_terminator, "");
  options.ReceiveMode = AnswerEnd::kTerminator;
  Apply();
  EXPECT_EQ(receive().receive_terminator, "\r\n");
  options.ReceiveTerminator = "\xA7";
  options.SendTerminator = "";
  Apply();
  EXPECT_EQ(receive().receive_terminator, "§");
  EXPECT_EQ(receive().send_terminator, "");
}

TEST_F(OptionsTest, ARequestedModeReplacesAStoredBinaryFormat) {
  state.terminal.shown.format = terminal::receive_format::kBinary;
  options.ReceiveMode = AnswerEnd::kTerminator;
  Apply();
  EXPECT_EQ(state.terminal.shown.format, terminal::receive_format::kAscii);
}

TEST_F(OptionsTest, BinaryEndsAtAGapOrAsRequested) {
  options.Binary = true;
  Apply();
  EXPECT_EQ(receive().mode, terminal::receive_mode::kAuto);
  EXPECT_EQ(receive().binary_display, 1);
  options.ReceiveMode = AnswerEnd::kCount;
  options.Count = 1025;
  Apply();
  EXPECT_EQ(receive().mode, terminal::receive_mode::kCount);
  EXPECT_EQ(receive().binary_display, 1);
  EXPECT_EQ(state.terminal.shown.count, "1025");
}

TEST_F(OptionsTest, TheTimeoutAppliesToConnectingAndToAnswers) {
  options.TimeoutMs = 250;
  Apply();
  ApplyConnectionOptions(options, state.connection);
  EXPECT_EQ(state.terminal.shown.timeout, "250");
  EXPECT_EQ(state.connection.timeout_ms, 250);
}

TEST_F(OptionsTest, LineParametersReplaceStoredOnes) {
  state.connection.port_code = device::port_code::kCom2Rs485;
  state.connection.baud = 9600;
  ApplyConnectionOptions(options, state.connection);
  EXPECT_EQ(state.connection.baud, 9600);
  EXPECT_EQ(state.connection.parity, 1);
  options.Baud = 115200;
  options.Parity = SerialParity::kOdd;
  options.DataBits = 7;
  options.StopBits = 2;
  ApplyConnectionOptions(options, state.connection);
  EXPECT_EQ(state.connection.baud, 115200);
  EXPECT_EQ(state.connection.parity, 2);
  EXPECT_EQ(state.connection.data_bits, 7);
  EXPECT_EQ(state.connection.stop_bits, 2);
}

TEST_F(OptionsTest, LineParametersDoNotChangeOtherPorts) {
  options.Baud = 115200;
  options.Parity = SerialParity::kOdd;
  options.DataBits = 7;
  options.StopBits = 2;
  options.TimeoutMs = 250;
  for (const char* name : {"LPT1", "LPT2", "GPIB0::5::INSTR", "TCPIP::localhost::5025::SOCKET"}) {
    device::ApplyResource(std::get<device::Resource>(device::ParseResourceName(name)), state.connection);
    const device::ConnectionParameters before = state.connection;
    ApplyConnectionOptions(options, state.connection);
    EXPECT_EQ(state.connection.baud, before.baud) << name;
    EXPECT_EQ(state.connection.parity, before.parity) << name;
    EXPECT_EQ(state.connection.data_bits, before.data_bits) << name;
    EXPECT_EQ(state.connection.stop_bits, before.stop_bits) << name;
    EXPECT_EQ(state.connection.timeout_ms, 250) << name;
  }
}

}  // namespace
}  // namespace kolvane::headless
