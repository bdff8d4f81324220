#include <gtest/gtest.h>

#include "terminal/receive_controls.h"
#include "terminal/session_bench.h"
#include "terminal/thrown_by.h"

using namespace std::string_literals;

namespace kolvane::terminal {
namespace {

class SessionAnswerTest : public testing::Test, protected SessionBench {};

TEST_F(SessionAnswerTest, ReadsToTheTerminatorWithinTheTimeout) {
  device.text_answers = {"12.5\r\n"};
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "SetTimeout 3000", "ReadText \\r\\n 16000", "LastError"}));
  EXPECT_EQ(pane.lines, Lines{"12.5"});
  EXPECT_EQ(pane.kinds, std::vector{LineKind::kAnswer});
  EXPECT_EQ(state.last_answer.text, "12.5");
}

TEST_F(SessionAnswerTest, UsesTheTimeoutAsTyped) {
  device.text_answers = {"a", "b"};
  state.shown.timeout = " 250,5 ";
  session.GetAnswer();
  state.shown.timeout = "-1";
  session.GetAnswer();
  EXPECT_EQ(device.calls[1], "SetTimeout 250");
  EXPECT_EQ(device.calls[5], "SetTimeout -1");
}

TEST_F(SessionAnswerTest, KeepsTheAnswerWithoutTerminatorAndShowsItTrimmed) {
  device.text_answers = {"12.5 \r\n\0"s};
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "12.5 ");
  EXPECT_EQ(pane.lines, Lines{"12.5"});

  state.receive.receive_terminator = ";";
  device.text_answers = {"7;"};
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "7");
}

TEST_F(SessionAnswerTest, KeepsUmlautsAndFields) {
  device.text_answers = {"Größe,µm,\r\n"};
  session.GetAnswer();
  EXPECT_EQ(pane.lines, Lines{"Größe,µm,"});
  EXPECT_EQ(state.last_answer.Fields(), (std::vector<std::string>{"Größe", "µm", ""}));
}

TEST_F(SessionAnswerTest, AlsoShowsAnEmptyAnswer) {
  device.text_answers = {"\r\n"};
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(pane.text, "\r\n");
  EXPECT_EQ(state.last_answer.Fields(), std::vector<std::string>{""});
}

TEST_F(SessionAnswerTest, ALongAnswerIsKeptWhole) {
  device.text_answers = {std::string(16000, 'x'), "y\r\n"};
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, std::string(16000, 'x'));
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "y");
}

TEST_F(SessionAnswerTest, AReadErrorBecomesTheAnswer) {
  EXPECT_FALSE(session.GetAnswer());
  EXPECT_EQ(pane.lines, Lines{"Zeitüberschreitung"});
  EXPECT_EQ(state.last_answer.text, "Zeitüberschreitung");

  device.read_error = {-9, " mit Rand, und Komma "};
  EXPECT_FALSE(session.GetAnswer());
  EXPECT_EQ(pane.lines.back(), "mit Rand, und Komma");
  EXPECT_EQ(state.last_answer.text, " mit Rand, und Komma ");
}

TEST_F(SessionAnswerTest, AnErrorCodeOfZeroOrMoreIsNotAnError) {
  device.read_error = {3, "3"};
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "");
}

TEST_F(SessionAnswerTest, TheListDecidesWhetherTheFormatIsAscii) {
  device.text_answers = {"1\r\n", "2\r\n"};
  state.receive.binary_display = 1;
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "1");

  state.receive.binary_display = 0;
  state.shown.format = receive_format::kBinary;
  device.calls.clear();
  session.GetAnswer();
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "SetTimeout 3000"}));
  EXPECT_EQ(pane.lines, Lines{"1"});
  EXPECT_EQ(state.last_answer.text, "");
  EXPECT_EQ(state.last_answer.Fields(), std::vector<std::string>{""});
}

TEST_F(SessionAnswerTest, ReadsAfterBinaryAndBackToAscii) {
  struct NoView final : ReceiveControlsView {
    void ShowReceiveControls(const ReceiveShown&, bool) override {}
  } no_view;
  ReceiveControls controls(state.receive, state.shown, device, no_view);
  controls.PickFormat(receive_format::kBinary);
  controls.PickFormat(receive_format::kAscii);
  EXPECT_EQ(state.shown.mode, 1);
  device.text_answers = {"12.5\r\n"};
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "12.5");
}

TEST_F(SessionAnswerTest, AnInvalidTimeoutThrowsBeforeAnythingIsRead) {
  device.text_answers = {"old\r\n", "new\r\n"};
  session.GetAnswer();
  device.calls.clear();
  for (const auto& [text, kind] :
       {std::pair{"", Kind::kTypeMismatch}, {"bald", Kind::kTypeMismatch}, {"2147483648", Kind::kOverflow}}) {
    state.shown.timeout = text;
    EXPECT_EQ(ThrownBy([&] { session.GetAnswer(); }), kind) << text;
  }
  EXPECT_EQ(device.calls, Lines(3, "ClearLastError"));
  EXPECT_EQ(state.last_answer.text, "old");
  EXPECT_EQ(pane.lines, Lines{"old"});

  state.shown.timeout = "2147483647";
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "new");
}

// An answer that has been read is no longer awaited.
TEST_F(SessionAnswerTest, AnInvalidTimeoutReportsWhetherAnAnswerIsPending) {
  const auto what = [this] {
    try {
      session.GetAnswer();
    } catch (const base::RuntimeError& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  device.text_answers = {"first\r\n"};
  session.SendCommand("A?");
  session.GetAnswer();
  state.shown.timeout = "bald";
  EXPECT_EQ(what(), "Timeout (ms): Typen unverträglich");
  session.SendCommand("B?");
  EXPECT_NE(what().find("steht noch aus"), std::string::npos);
  EXPECT_EQ(what(), "Timeout (ms): Typen unverträglich");
}

TEST_F(SessionAnswerTest, AModeThatDoesNotExistReadsNothing) {
  state.receive.mode = 3;
  session.GetAnswer();
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "SetTimeout 3000"}));
  EXPECT_EQ(pane.text, "");
}

TEST_F(SessionAnswerTest, SilentModeKeepsTheAnswerButShowsNothing) {
  state.output = {.SilentMode = true, .log_recording = true};
  device.text_answers = {"1,2\r\n"};
  session.GetAnswer();
  EXPECT_EQ(pane.text, "");
  EXPECT_EQ(log.lines, Lines{});
  EXPECT_EQ(state.last_answer.text, "1,2");
}

TEST_F(SessionAnswerTest, ReadsEvenWithoutAConnection) {
  device_state.connected = false;
  EXPECT_FALSE(session.GetAnswer());
  EXPECT_EQ(device.CountCalls("ReadText"), 1u);
  EXPECT_EQ(device.CountCalls("Open"), 0u);
}

TEST_F(SessionAnswerTest, TwoSessionsDoNotShareAnything) {
  SessionBench other;
  device.text_answers = {"1\r\n"};
  session.GetAnswer();
  EXPECT_EQ(other.state.last_answer.text, "");
  EXPECT_EQ(other.pane.text, "");
}

}  // namespace
}  // namespace kolvane::terminal
