#include "terminal/receive_controls.h"

#include <gtest/gtest.h>

#include <functional>

#include "device/fake_device.h"
#include "pane/fake_pane.h"
#include "terminal/session_fakes.h"
#include "terminal/texts.h"
#include "terminal/thrown_by.h"

namespace kolvane::terminal {
namespace {

/// Keeps what it was last shown, and may emit signals like a list whose index the program sets.
class FakeView final : public ReceiveControlsView {
 public:
  void ShowReceiveControls(const ReceiveShown& shown, bool count_visible) override {
    count_shown = count_visible;
    ++times;
    if (answer_back) answer_back(shown);
  }
  std::function<void(const ReceiveShown&)> answer_back;
  bool count_shown = false;
  int times = 0;
};

class ReceiveControlsTest : public testing::Test {
 protected:
  /// Settings and lists in one line: mode/flag/terminator, then what the lists show and whether BinChars is
  /// visible.
  std::string State() const {
    const ReceiveShown& shown = state.shown;
    return std::to_string(state.receive.mode) + "/" + std::to_string(state.receive.binary_display) + "/" +
           device::Escaped(state.receive.receive_terminator) + " " +
           std::string(texts::kReceiveModes.at(static_cast<std::size_t>(shown.mode))) + "/" +
           std::string(texts::kReceiveFormats.at(static_cast<std::size_t>(shown.format))) + "/" +
           shown.receive_terminator + (view.count_shown ? " +count" : "");
  }

  TerminalState state;
  device::FakeDevice device;
  pane::FakePane pane;
  FakeLog log;
  Output output{state.output, pane, log};
  FakeView view;
  ReceiveControls controls{state.receive, state.shown, device, view};
};

TEST_F(ReceiveControlsTest, PickedModesSetTerminatorAndCount) {
  controls.PickMode(1);
  EXPECT_EQ(State(), "1/0/ Auto/ASCII/Kein");
  controls.PickMode(2);
  EXPECT_EQ(State(), "2/0/ Anzahl Zeichen/ASCII/Kein +count");
  EXPECT_EQ(device.calls, Lines{});
  controls.PickMode(0);
  EXPECT_EQ(State(), "0/0/\\r\\n Endezeichen/ASCII/CRLF");
  EXPECT_EQ(device.calls, Lines{"SetTimeout 3000"});
  EXPECT_EQ(view.times, 3);
}

TEST_F(ReceiveControlsTest, PickedFormatsSetModeAndTerminator) {
  controls.PickFormat(1);
  EXPECT_EQ(State(), "1/1/ Auto/Binär/Kein");
  controls.PickFormat(0);
  EXPECT_EQ(State(), "0/0/\\r\\n Auto/ASCII/CRLF");
  EXPECT_EQ(device.calls, Lines{});
}

TEST_F(ReceiveControlsTest, TheSameItemPickedAgainActsAgain) {
  controls.PickFormat(0);
  EXPECT_EQ(State(), "0/0/\\r\\n Auto/ASCII/CRLF");
  controls.PickMode(1);
  EXPECT_EQ(State(), "1/0/ Auto/ASCII/Kein");
}

TEST_F(ReceiveControlsTest, ModesDoNotChangeTheDisplayFlag) {
  controls.PickFormat(1);
  controls.PickMode(2);
  EXPECT_EQ(State(), "2/1/ Anzahl Zeichen/Binär/Kein +count");
  controls.PickMode(0);
  EXPECT_EQ(State(), "0/1/\\r\\n Endezeichen/ASCII/CRLF");
  controls.PickMode(2);
  EXPECT_EQ(State(), "2/1/ Anzahl Zeichen/ASCII/Kein +count");
}

TEST_F(ReceiveControlsTest, AFormatHidesTheCount) {
  controls.PickMode(2);
  controls.PickFormat(1);
  EXPECT_EQ(State(), "1/1/ Auto/Binär/Kein");
  controls.PickMode(2);
  controls.PickFormat(0);
  EXPECT_EQ(State(), "0/0/\\r\\n Auto/ASCII/CRLF");
}

TEST_F(ReceiveControlsTest, SignalsOfListsSetByTheProgramChangeNothing) {
  view.answer_back = [this](const ReceiveShown& shown) {
    controls.PickMode(shown.mode);
    controls.PickFormat(shown.format);
    controls.EditReceiveTerminator("59");
    controls.EditSendTerminator("x");
    controls.EditTimeout("1");
    controls.EditCount("77");
  };
  controls.PickFormat(0);
  EXPECT_EQ(State(), "0/0/\\r\\n Auto/ASCII/CRLF");
  controls.PickMode(2);
  EXPECT_EQ(State(), "2/0/ Anzahl Zeichen/ASCII/Kein +count");
  EXPECT_EQ(view.times, 2);
  EXPECT_EQ(state.receive.send_terminator, "\n");
  EXPECT_EQ(state.shown.timeout, "3000");
  EXPECT_EQ(state.shown.count, "1");
  controls.EditCount("4");
  EXPECT_EQ(state.shown.count, "4");
}

TEST_F(ReceiveControlsTest, IndexesOutsideTheListsAreIgnored) {
  for (const int index : {-1, 3}) controls.PickMode(index);
  for (const int index : {-1, 2}) controls.PickFormat(index);
  EXPECT_EQ(State(), "0/0/\\r\\n Endezeichen/ASCII/CRLF");
  EXPECT_EQ(view.times, 0);
}

TEST_F(ReceiveControlsTest, ModeZeroWithAnInvalidTimeoutIsSetBeforeItThrows) {
  controls.PickMode(2);
  controls.EditTimeout("bald");
  EXPECT_EQ(ThrownBy([&] { controls.PickMode(0); }), Kind::kTypeMismatch);
  EXPECT_EQ(State(), "0/0/\\r\\n Endezeichen/ASCII/CRLF");
  EXPECT_EQ(device.calls, Lines{});
  controls.PickMode(1);
  EXPECT_EQ(State(), "1/0/ Auto/ASCII/Kein");
}

TEST_F(ReceiveControlsTest, EditedTerminatorsFollowTheirRules) {
  controls.EditReceiveTerminator("LF");
  EXPECT_EQ(State(), "0/0/\\n Endezeichen/ASCII/LF");
  controls.EditReceiveTerminator("59");
  EXPECT_EQ(State(), "0/0/; Endezeichen/ASCII/59");
  controls.EditReceiveTerminator("59x");
  EXPECT_EQ(State(), "0/0/; Endezeichen/ASCII/59x");
  controls.EditReceiveTerminator("Kein");
  EXPECT_EQ(State(), "0/0/ Endezeichen/ASCII/Kein");
  controls.EditSendTerminator("ENDE");
  EXPECT_EQ(state.receive.send_terminator, "ENDE");
  EXPECT_EQ(state.shown.send_terminator, "ENDE");
  controls.EditSendTerminator("13");
  EXPECT_EQ(state.receive.send_terminator, "\r");
  EXPECT_EQ(view.times, 0);
}

TEST_F(ReceiveControlsTest, AnInvalidCodeKeepsTheTerminator) {
  EXPECT_EQ(ThrownBy([&] { controls.EditReceiveTerminator("256"); }), Kind::kInvalidArgument);
  EXPECT_EQ(State(), "0/0/\\r\\n Endezeichen/ASCII/256");
  EXPECT_EQ(ThrownBy([&] { controls.EditSendTerminator("-1"); }), Kind::kInvalidArgument);
  EXPECT_EQ(state.receive.send_terminator, "\n");
  EXPECT_EQ(state.shown.send_terminator, "-1");
}

TEST_F(ReceiveControlsTest, LoadShowsTheSettingsAsTheyAre) {
  state.receive = {.mode = 0, .binary_display = 1, .receive_terminator = ";", .send_terminator = ""};
  state.shown.timeout = "250";
  device.flushed = 12;
  controls.Load(output);
  EXPECT_EQ(State(), "0/1/; Endezeichen/Binär/;");
  EXPECT_EQ(state.shown.send_terminator, "Kein");
  EXPECT_EQ(device.calls, (Lines{"SetTimeout 250", "FlushInput"}));
  EXPECT_EQ(pane.lines, Lines{"Empfangspuffer gelöscht (12 Bytes)"});
}

TEST_F(ReceiveControlsTest, LoadSetsTheGapOfModeOne) {
  state.receive.mode = 1;
  state.receive.receive_terminator = "";
  controls.Load(output);
  EXPECT_EQ(State(), "1/0/ Auto/ASCII/Kein");
  EXPECT_EQ(device.calls, (Lines{"SetTimeout 50", "FlushInput"}));
  EXPECT_EQ(pane.lines, Lines{});
}

TEST_F(ReceiveControlsTest, LoadShowsTheCountInModeTwo) {
  state.receive = {.mode = 2, .binary_display = 1, .receive_terminator = "", .send_terminator = "\r"};
  controls.Load(output);
  EXPECT_EQ(State(), "2/1/ Anzahl Zeichen/Binär/Kein +count");
  EXPECT_EQ(state.shown.send_terminator, "CR");
  EXPECT_EQ(device.calls.front(), "SetTimeout 3000");
}

TEST_F(ReceiveControlsTest, LoadIgnoresSignalsOfTheControlsItFills) {
  state.receive.receive_terminator = "5";
  view.answer_back = [this](const ReceiveShown& shown) {
    controls.EditReceiveTerminator(shown.receive_terminator);
    controls.PickMode(shown.mode);
  };
  controls.Load(output);
  EXPECT_EQ(State(), "0/0/5 Endezeichen/ASCII/5");
}

TEST_F(ReceiveControlsTest, LoadRefusesValuesThatTheListsLack) {
  state.receive.mode = 3;
  EXPECT_EQ(ThrownBy([&] { controls.Load(output); }), Kind::kInvalidArgument);
  state.receive.mode = 0;
  state.receive.binary_display = 2;
  EXPECT_EQ(ThrownBy([&] { controls.Load(output); }), Kind::kInvalidArgument);
  state.receive.binary_display = 0;
  state.shown.timeout = "";
  EXPECT_EQ(ThrownBy([&] { controls.Load(output); }), Kind::kTypeMismatch);
  EXPECT_EQ(device.calls, Lines{});
}

}  // namespace
}  // namespace kolvane::terminal
