#include <gtest/gtest.h>

#include "script/run_bench.h"

namespace kolvane::script {
namespace {

class RunControlTest : public testing::Test, protected RunBench {
 protected:
  /// Runs `rows` and calls `action` after row `row`.
  void PlayWithActionAt(std::string_view rows, int row, std::function<void()> action) {
    host.at_yield = [this, row, action = std::move(action)] {
      if (list.current_row() == row) action();
    };
    Play(rows);
  }

  CommandList& list = core.list;
  Runner& runner = core.runner;
};

TEST_F(RunControlTest, BreakEndsTheRunAfterTheRowBeingExecuted) {
  PlayWithActionAt("A|B|C", 2, [this] { runner.Break(); });
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(ListText(list), "A|>*B|C");
  EXPECT_FALSE(runner.running());
  EXPECT_EQ(host.locks, (std::vector<bool>{true, false}));
}

TEST_F(RunControlTest, ALockThatFailsHalfwayIsReleased) {
  host.lock_fails = true;
  EXPECT_THROW(Play("A"), std::bad_alloc);
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(host.locks, (std::vector<bool>{true, false}));
  EXPECT_FALSE(runner.running());
}

TEST_F(RunControlTest, StopDoesTheSameAndClearsTheRow) {
  PlayWithActionAt("A|B|C", 2, [this] { runner.Stop(); });
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(ListText(list), "A|>B|C");
  EXPECT_TRUE(script.run.StopRequested);
}

TEST_F(RunControlTest, PlayStartsAgainAtTheFirstRow) {
  PlayWithActionAt("A|B|C", 2, [this] { runner.Break(); });
  host.at_yield = {};
  runner.Play();
  EXPECT_EQ(Sent(), "A|B|A|B|C");
  EXPECT_EQ(ListText(list), "A|B|C");
}

TEST_F(RunControlTest, PlayClearsEarlierStopAndBreak) {
  runner.Stop();
  runner.Break();
  Play("A");
  EXPECT_EQ(Sent(), "A");
  EXPECT_FALSE(script.run.StopRequested);
  EXPECT_FALSE(script.run.BreakRequested);
}

TEST_F(RunControlTest, PlayAndStepDuringARunDoNothing) {
  PlayWithActionAt("A|B", 1, [this] {
    runner.Play();
    runner.SingleStep();
    runner.RunCommandList(0);
  });
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(host.locks, (std::vector<bool>{true, false}));
}

TEST_F(RunControlTest, PlayDuringAMessageOfAStepDoesNothing) {
  FillList(list, "$FOO|B");
  prompt.at_error = [this] { runner.Play(); };
  runner.SingleStep();
  EXPECT_EQ(host.locks, std::vector<bool>{});
  EXPECT_EQ(prompt.errors.size(), 1u);
}

TEST_F(RunControlTest, AnEditDuringAMessageIsKept) {
  prompt.at_error = [this] { list.SetText(1, "B"); };
  Play("A|$FOO");
  EXPECT_EQ(ListText(list), "B|!$FOO");
}

TEST_F(RunControlTest, AClosingFrontEndEndsTheRunForGood) {
  PlayWithActionAt("A|B|C", 2, [this] { runner.Abort(); });
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(host.locks, (std::vector<bool>{true, false}));
  runner.Play();
  runner.SingleStep();
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_FALSE(script.run.StopRequested);
}

TEST_F(RunControlTest, AfterAJumpWithinYieldTheRunContinuesThere) {
  PlayWithActionAt("A|B|C", 1, [this] { list.SetCurrentRow(2); });
  EXPECT_EQ(Sent(), "A|C");
}

TEST_F(RunControlTest, RecordsCommandsSentByHandWhileTheButtonIsDown) {
  EXPECT_FALSE(core.recorder.Recording());
  EXPECT_EQ(core.recorder.button().image, 14);
  core.recorder.Toggle();
  EXPECT_TRUE(core.recorder.Recording());
  EXPECT_EQ(script.record.tag, 1);
  EXPECT_EQ(core.recorder.button().image, 16);
  core.recorder.AddToScript("A");
  EXPECT_EQ(ListText(list), ">A");
  core.recorder.Toggle();
  EXPECT_EQ(script.record.tag, 0);
  EXPECT_EQ(core.recorder.button().image, 14);
}

TEST_F(RunControlTest, ReportsThatTheListIsFull) {
  list.SetText(1024, "x");
  core.recorder.AddToScript("A");
  EXPECT_EQ(prompt.errors, Lines{"Die Befehlsliste ist voll. Der Befehl wurde nicht aufgezeichnet."});
}

TEST_F(RunControlTest, ShowsTheResponseTimeOfAnAnswer) {
  state.options.show_response_times = true;
  device.text_answers = {"1\r\n"};
  clock.seconds = {1, 1.0125};
  Play("A");
  EXPECT_EQ(pane.text, "\r\nA\r\n1(dt = 12,5 ms)\r\n");
  EXPECT_EQ(pane.caret_back, 0);
}

TEST_F(RunControlTest, TimesAreDoublesAndAlsoShownWithoutTheEcho) {
  state.options = {.show_commands = false, .show_response_times = true};
  device.text_answers = {"1\r\n"};
  clock.seconds = {1000000, 1000000.0001234};
  Play("A");
  EXPECT_EQ(pane.text, "\r\n1(dt = 0,123 ms)\r\n");
}

TEST_F(RunControlTest, OnlyAnswersAreTimed) {
  state.options.show_response_times = true;
  Play("$CLEAR|STP|'|$REPEAT 1|$ENDREPEAT");
  EXPECT_EQ(pane.text, "\r\nSTP\r\nDie laufende Meßwerterfassung wurde beendet");
}

TEST_F(RunControlTest, SilenceDoesNotHideResponseTimes) {
  state.options.show_response_times = true;
  clock.seconds = {0, 0.001};
  Play("$SILENT ON|A");
  EXPECT_EQ(pane.text, "(dt = 1 ms)\r\n");
}

}  // namespace
}  // namespace kolvane::script
