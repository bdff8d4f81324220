#include "terminal/interactive_send.h"

#include <gtest/gtest.h>

#include "terminal/session_bench.h"
#include "terminal/thrown_by.h"

namespace kolvane::terminal {
namespace {

class FakeRecorder final : public CommandRecorder {
 public:
  bool Recording() const override { return recording; }
  void AddToScript(std::string_view command) override { commands.emplace_back(command); }
  bool recording = false;
  std::vector<std::string> commands;
};

class FakeCommandBox final : public CommandBox {
 public:
  void ShowHistory(const CommandHistory& history, HistoryChange change) override {
    entries.assign(history.entries().begin(), history.entries().end());
    changes.push_back(change);
  }
  std::vector<std::string> entries;
  std::vector<HistoryChange> changes;
};

class InteractiveSendTest : public testing::Test, protected SessionBench {
 protected:
  FakeClock clock;
  FakeRecorder recorder;
  FakeCommandBox box;
  Exchange exchange{session, waits, state.options, output, clock, ","};
  InteractiveSend interactive{exchange, recorder, box};
};

TEST_F(InteractiveSendTest, AnEmptyCommandDoesNothing) {
  recorder.recording = true;
  device_state.connected = false;
  interactive.Send("");
  EXPECT_EQ(device.calls, Lines{});
  EXPECT_EQ(pane.text, "");
  EXPECT_EQ(recorder.commands, Lines{});
  EXPECT_TRUE(box.changes.empty());
}

TEST_F(InteractiveSendTest, SendsEchoesAndAnswersInThisOrder) {
  device.text_answers = {"12.5\r\n"};
  interactive.Send("MSV?1,1");
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "Write MSV?1,1|\\n|0", "LastError", "ClearLastError",
                                 "SetTimeout 3000", "ReadText \\r\\n 16000", "LastError"}));
  EXPECT_EQ(pane.text, "\r\nMSV?1,1\r\n12.5");
  EXPECT_EQ(pane.kinds, (std::vector{LineKind::kCommand, LineKind::kAnswer}));
  EXPECT_EQ(box.entries, Lines{"MSV?1,1"});
}

TEST_F(InteractiveSendTest, EchoesOnlyUnderItsOption) {
  state.options.show_commands = false;
  device.text_answers = {"1\r\n"};
  interactive.Send("A?");
  EXPECT_EQ(pane.text, "\r\n1");
}

TEST_F(InteractiveSendTest, EchoesAfterAWriteError) {
  device.write_result = {-7, "Leitung tot"};
  interactive.Send("A?");
  EXPECT_EQ(pane.text, "\r\nWrite error: Leitung tot\r\nA?\r\nZeitüberschreitung");
}

TEST_F(InteractiveSendTest, RecordsWhileRecordingIsOn) {
  interactive.Send("A?");
  recorder.recording = true;
  interactive.Send("B?");
  interactive.Send("b?");
  EXPECT_EQ(recorder.commands, (Lines{"B?", "b?"}));
}

TEST_F(InteractiveSendTest, ShowsTheTimeBetweenStartAndEnd) {
  state.options.show_response_times = true;
  clock.seconds = {2.0, 2.25};
  device.text_answers = {"1\r\n"};
  interactive.Send("A?");
  EXPECT_EQ(pane.text, "\r\nA?\r\n1(dt = 250 ms)\r\n");
  EXPECT_EQ(pane.caret_back, 1);
  EXPECT_EQ(clock.asked, 1u);
}

TEST_F(InteractiveSendTest, ShowsTheEndTimeWithoutTheEcho) {
  state.options = {.show_commands = false, .show_response_times = true};
  clock.seconds = {2.5};
  device.text_answers = {"1\r\n"};
  interactive.Send("A?");
  EXPECT_EQ(pane.text, "\r\n1(dt = 2500 ms)\r\n");
}

TEST_F(InteractiveSendTest, TimesAreSingleWithTheGivenDecimalSign) {
  state.options = {.show_commands = false, .show_response_times = true};
  clock.seconds = {0.0035};
  interactive.Send("A?");
  EXPECT_TRUE(pane.text.ends_with("(dt = 3,5 ms)\r\n")) << pane.text;

  state.options.show_commands = true;
  clock = {};
  clock.seconds = {100000.000, 100000.005};
  interactive.Send("A?");
  EXPECT_TRUE(pane.text.ends_with("(dt = 8 ms)\r\n")) << pane.text;
}

TEST_F(InteractiveSendTest, AFailedAnswerIsAlsoTimed) {
  state.options.show_response_times = true;
  clock.seconds = {1, 4};
  interactive.Send("A?");
  EXPECT_EQ(pane.text, "\r\nA?\r\nZeitüberschreitung(dt = 3000 ms)\r\n");
}

TEST_F(InteractiveSendTest, TimesAppearInSilentModeAndAreNotLogged) {
  state.options.show_response_times = true;
  state.output = {.SilentMode = true, .log_recording = true};
  device.text_answers = {"1\r\n"};
  interactive.Send("A?");
  EXPECT_EQ(pane.text, "(dt = 0 ms)\r\n");
  EXPECT_EQ(log.lines, Lines{});
}

TEST_F(InteractiveSendTest, ALineIsLoggedWhileRecordingIsOn) {
  state.options.show_response_times = true;
  state.output.log_recording = true;
  device.text_answers = {"1\r\n"};
  interactive.Send("A?");
  EXPECT_EQ(log.lines, (Lines{"A?", "1"}));
}

TEST_F(InteractiveSendTest, ARestartDisconnectsAndReadsNothing) {
  device_state.connected = false;
  connect.Press();
  device.calls.clear();
  pane = {};
  state.options.show_response_times = true;
  interactive.Send("*RST");
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "Write *RST|\\n|0", "LastError", "ClearLastError", "Close",
                                 "LastError"}));
  EXPECT_EQ(pane.lines,
            (Lines{"*RST", "20.11.2026 08:05:09  Verbindung getrennt von TCP/IP: 10.0.0.7, Port 7",
                   "Geräte Restart ausgeführt - die Verbindung wurde getrennt"}));
  EXPECT_EQ(pane.kinds, (std::vector{LineKind::kCommand, LineKind::kNotice, LineKind::kNotice}));
  EXPECT_FALSE(device_state.connected);
}

TEST_F(InteractiveSendTest, StopShowsItsMessageAndStaysConnected) {
  interactive.Send("stp");
  EXPECT_EQ(pane.lines, (Lines{"stp", "Die laufende Meßwerterfassung wurde beendet"}));
  EXPECT_EQ(device.CountCalls("ReadText"), 0u);
  EXPECT_TRUE(device_state.connected);
}

TEST_F(InteractiveSendTest, WithoutAConnectionItStillEchoesAndReads) {
  device_state.connected = false;
  device.open_result = {-2, "-2"};
  interactive.Send("A?");
  EXPECT_EQ(device.CountCalls("Open"), 1u);
  EXPECT_EQ(device.CountCalls("Write"), 0u);
  EXPECT_EQ(device.CountCalls("ReadText"), 1u);
  EXPECT_EQ(pane.lines, (Lines{"A?", "Zeitüberschreitung"}));
  EXPECT_EQ(box.entries, Lines{"A?"});
}

TEST_F(InteractiveSendTest, KeepsARepeatedCommandOnceButShowsTheBoxEachTime) {
  interactive.Send("Größe?");
  interactive.Send("GRÖßE?");
  EXPECT_EQ(box.entries, Lines{"Größe?"});
  ASSERT_EQ(box.changes.size(), 2u);
  EXPECT_TRUE(box.changes[0].inserted);
  EXPECT_FALSE(box.changes[1].inserted);
}

TEST_F(InteractiveSendTest, AConversionErrorIsThrownAfterEverythingElse) {
  state.options.show_response_times = true;
  state.shown.timeout = "bald";
  EXPECT_EQ(ThrownBy([&] { interactive.Send("A?"); }), Kind::kTypeMismatch);
  EXPECT_EQ(device.CountCalls("Write"), 1u);
  EXPECT_EQ(pane.text, "\r\nA?");
  EXPECT_EQ(box.entries, Lines{"A?"});

  state.shown.timeout = "3000";
  device.text_answers = {"1\r\n"};
  interactive.Send("B?");
  EXPECT_EQ(state.last_answer.text, "1");
  EXPECT_EQ(interactive.history().entries().size(), 2u);
}

}  // namespace
}  // namespace kolvane::terminal
