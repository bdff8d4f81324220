#include <gtest/gtest.h>

#include <cstdlib>

#include "integration/live_terminal.h"

namespace kolvane::integration {
namespace {

constexpr char kShort[] = "60";

TEST(Fault, ASilentInstrumentRunsIntoTheTimeoutAndTheLateAnswerCanBeFlushed) {
  LiveTerminal terminal(Line::kTcp, {});
  terminal.state.shown.timeout = kShort;
  terminal.Ask("WAIT? 150");
  EXPECT_LT(terminal.Status(), 0);
  EXPECT_EQ(terminal.state.last_answer.text, std::to_string(terminal.Status()));
  terminal.state.shown.timeout = "5000";
  // The late "0" is read first, then the next command's answer; a flush puts the dialogue back in step.
  EXPECT_EQ(terminal.Ask("ECHO eins"), "0");
  EXPECT_EQ(terminal.Ask("ECHO zwei"), "eins");
  terminal.controls.PickMode(1);
  terminal.Ask("ECHO drei");
  terminal.core.device.FlushInput();
  terminal.controls.PickMode(0);
  terminal.state.shown.timeout = "5000";
  EXPECT_EQ(terminal.Ask("ECHO vier"), "vier");
}

TEST(Fault, ASlowDripIsNotCutShort) {
  amplifier::Options options;
  options.transmission.drip_ms = 5;
  LiveTerminal terminal(Line::kTcp, options);
  EXPECT_EQ(terminal.Ask("ECHO ganz langsam"), "ganz langsam");
}

TEST(Fault, TheTimeoutIsATotalDeadline) {
  amplifier::Options options;
  options.transmission.drip_ms = 40;
  LiveTerminal terminal(Line::kTcp, options);
  terminal.state.shown.timeout = "100";
  terminal.Ask("ECHO viel zu langsam");
  EXPECT_LT(terminal.Status(), 0);
}

TEST(Fault, AConnectionClosedInTheMiddleOfAnAnswerIsAFailureAndCanBeOpenedAgain) {
  amplifier::Options options;
  options.behaviour.close_mid_answer = 2;
  LiveTerminal terminal(Line::kTcp, options);
  EXPECT_EQ(terminal.Ask("ECHO eins"), "eins");
  terminal.Ask("ECHO zwei drei vier");
  EXPECT_LT(terminal.Status(), 0);
  terminal.core.connect.Press();
  terminal.core.connect.Press();
  EXPECT_TRUE(terminal.device.connected);
  EXPECT_EQ(terminal.Ask("ECHO wieder da"), "wieder da");
}

TEST(Fault, AResetIsAFailureNeverASignal) {
  amplifier::Options options;
  options.behaviour.reset_after = 1;
  LiveTerminal terminal(Line::kTcp, options);
  EXPECT_EQ(terminal.Ask("ECHO eins"), "eins");
  for (int i = 0; i < 3; ++i) terminal.Ask("ECHO zwei");
  EXPECT_LT(terminal.Status(), 0);
}

TEST(Fault, ARefusedConnectionIsOneMessage) {
  LiveTerminal terminal(Line::kTcp, {});
  terminal.core.connect.Press();
  terminal.parameters.ip_address = "127.0.0.1";
  terminal.parameters.ip_port = 1;
  terminal.core.connect.Press();
  ASSERT_EQ(terminal.prompt.errors.size(), 1u);
  EXPECT_TRUE(terminal.prompt.errors[0].starts_with("Fehler beim Verbindungsaufbau: -"));
  EXPECT_FALSE(terminal.device.connected);
}

TEST(Fault, KindsWithoutTheirDeviceReportItAndStayClosed) {
  setenv("KOLVANE_GPIB_LIBRARY", "/nowhere/libgpib.so.0", 1);
  setenv("KOLVANE_LPT1", "/nowhere/parport0", 1);
  LiveTerminal terminal(Line::kTcp, {});
  terminal.core.connect.Press();
  for (const std::int16_t code :
       {device::port_code::kGpib, device::port_code::kUsb, device::port_code::kLpt1}) {
    terminal.parameters.port_code = code;
    terminal.core.connect.Press();
    EXPECT_FALSE(terminal.device.connected) << code;
  }
  ASSERT_EQ(terminal.prompt.errors.size(), 3u);
  for (const std::string& error : terminal.prompt.errors)
    EXPECT_TRUE(error.starts_with("Fehler beim Verbindungsaufbau: -")) << error;
}

}  // namespace
}  // namespace kolvane::integration
