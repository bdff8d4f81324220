#include "script/runner.h"

#include <gtest/gtest.h>

#include "script/run_bench.h"
#include "terminal/texts.h"

namespace kolvane::script {
namespace {

class RunnerTest : public testing::Test, protected RunBench {
 protected:
  CommandList& list = core.list;
  Runner& runner = core.runner;
};

TEST_F(RunnerTest, AnEmptyListEndsAtOnce) {
  runner.Play();
  EXPECT_EQ(host.locks, (std::vector<bool>{true, false}));
  EXPECT_EQ(list.current_row(), 1025);
  EXPECT_EQ(script.run.ScriptRunning, 0);
  EXPECT_EQ(device.calls, Lines{});
  EXPECT_EQ(pane.text, "");
}

TEST_F(RunnerTest, SendsEachRowShowsItAndReadsTheAnswer) {
  device.text_answers = {"1\r\n", "2\r\n"};
  Play("A|  B C  ");
  EXPECT_EQ(Sent(), "A|B C");
  EXPECT_EQ(pane.lines, (Lines{"A", "1", "B C", "2"}));
  EXPECT_EQ(pane.kinds,
            (std::vector{LineKind::kCommand, LineKind::kAnswer, LineKind::kCommand, LineKind::kAnswer}));
  EXPECT_FALSE(runner.outcome().list_error);
  EXPECT_FALSE(runner.outcome().exchange_failed);
}

TEST_F(RunnerTest, ReportsTheStartAndTheEndOfEachRow) {
  host.at_yield = [this] { EXPECT_EQ(host.row_starts, host.yields); };
  Play("A|$GOTO x|never|x:|B");
  EXPECT_GT(host.row_starts, 3);
  EXPECT_EQ(host.row_starts, host.yields);
}

TEST_F(RunnerTest, ShowsNoCommandsWithoutTheOption) {
  state.options.show_commands = false;
  device.text_answers = {"1\r\n"};
  Play("A");
  EXPECT_EQ(pane.lines, Lines{"1"});
}

TEST_F(RunnerTest, CommentsEmptyRowsAndSpacesAreNotSent) {
  Play("'A|||   |  'B|label:");
  EXPECT_EQ(Sent(), "label:");
}

TEST_F(RunnerTest, HighlightsOnlyTheRowBeingExecuted) {
  Lines seen;
  host.at_yield = [&] {
    if (host.yields <= 3) seen.push_back(ListText(list));
  };
  Play("'A|'B|");
  EXPECT_EQ(seen, (Lines{">*'A|'B", "'A|>*'B", "'A|'B"}));
  EXPECT_EQ(ListText(list), "'A|'B");
  EXPECT_EQ(host.yields, 1024);
}

TEST_F(RunnerTest, AListIsInUseFromStartToEnd) {
  bool in_use = true;
  host.at_yield = [&] { in_use &= list.InUse() && !list.ClearCommandScriptGrid(); };
  Play("'A");
  EXPECT_TRUE(in_use);
  EXPECT_FALSE(list.InUse());
  EXPECT_EQ(ListText(list), "'A");
}

TEST_F(RunnerTest, RepeatsABlockOnceMoreThanItsCount) {
  Play("$REPEAT 2|A|$ENDREPEAT|B");
  EXPECT_EQ(Sent(), "A|A|A|B");
  device.calls.clear();
  Play("$REPEAT 0|A|$ENDREPEAT|$REPEAT -3|B|$ENDREPEAT");
  EXPECT_EQ(Sent(), "A|B");
}

TEST_F(RunnerTest, RepeatsBlocksWithinBlocks) {
  Play("$REPEAT 1|A|$REPEAT 1|B|$ENDREPEAT|$ENDREPEAT|C");
  EXPECT_EQ(Sent(), "A|B|B|A|B|B|C");
  EXPECT_EQ(script.interpreter.RepeatLevel, 0);
}

TEST_F(RunnerTest, ContinuesAfterASurplusEndRepeat) {
  Play("$ENDREPEAT|A|$REPEAT 1|B|$ENDREPEAT|C");
  EXPECT_EQ(Sent(), "A|B|B|C");
  EXPECT_EQ(script.interpreter.RepeatLevel, -1);
}

TEST_F(RunnerTest, SkipsTheRowsOfAFailedCondition) {
  Play("$IFEQUAL x|A|$REPEAT 5|  $endif  |B");
  EXPECT_EQ(Sent(), "B");
  EXPECT_EQ(script.interpreter.IfDepth, 0);
  EXPECT_EQ(script.interpreter.RepeatLevel, 0);
}

TEST_F(RunnerTest, ExecutesTheRowsOfAConditionThatHolds) {
  Play("$IFEQUAL ,|A|$ENDIF|B");
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(script.interpreter.IfDepth, 0);
}

TEST_F(RunnerTest, OnlyTheBareWordEndsACondition) {
  Play("$IFEQUAL x|A|$ENDIF x|$ENDIF,|B|$ENDIF|C");
  EXPECT_EQ(Sent(), "C");
}

TEST_F(RunnerTest, AFailedConditionInsideAnotherLastsUntilTheOuterEnds) {
  Play("$IFEQUAL ,|A|$IFEQUAL x|B|$ENDIF|C|$ENDIF|D");
  EXPECT_EQ(Sent(), "A|D");
}

TEST_F(RunnerTest, ASkippedConditionIsNotCountedSoItsEndEndsTheOuterOne) {
  Play("$IFEQUAL x|A|$IFEQUAL ,|B|$ENDIF|C|$ENDIF|D");
  EXPECT_EQ(Sent(), "C|D");
  EXPECT_EQ(script.interpreter.IfDepth, -1);
}

TEST_F(RunnerTest, BelowDepthZeroAFailedConditionSkipsNothing) {
  Play("$ENDIF|$IFEQUAL x|A|$ENDIF|B");
  EXPECT_EQ(Sent(), "A|B");
}

TEST_F(RunnerTest, OpenLoopsAndConditionsAreKeptForTheNextRun) {
  Play("$REPEAT 3|$IFEQUAL x|A");
  EXPECT_EQ(script.interpreter.RepeatLevel, 1);
  EXPECT_TRUE(script.interpreter.SkipRows);
  Play("B|$ENDIF|C");
  EXPECT_EQ(Sent(), "C");
}

TEST_F(RunnerTest, JumpsContinueAfterTheLabel) {
  Play("$GOTO over|A|'OVER:|OVER:|B");
  EXPECT_EQ(Sent(), "B");
}

TEST_F(RunnerTest, StopRowEndsTheRun) {
  Play("A|$STOP|B");
  EXPECT_EQ(Sent(), "A");
  EXPECT_FALSE(runner.outcome().list_error);
  EXPECT_EQ(*list.HighlightOf(2), kRunningRow);
}

TEST_F(RunnerTest, AnErrorEndsTheRunAndStaysMarked) {
  Play("A|$FOO|B");
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(prompt.errors, Lines{"Fehler in Befehlsliste (Zeile 2): Unbekannter $ Befehl"});
  EXPECT_EQ(ListText(list), "A|!$FOO|B");
  EXPECT_TRUE(runner.outcome().list_error);
  Play("A");
  EXPECT_FALSE(runner.outcome().list_error);
}

TEST_F(RunnerTest, ACounterThatOverflowsIsAnErrorOfItsRow) {
  script.interpreter.IfDepth = -32768;
  Play("A|$ENDIF|B");
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(prompt.errors, Lines{"Fehler in Befehlsliste (Zeile 2): Überlauf"});
  EXPECT_TRUE(runner.outcome().list_error);
}

TEST_F(RunnerTest, ATimeoutThatIsNotANumberIsAnErrorOfItsRow) {
  state.shown.timeout = "bald";
  Play("'|A|B");
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(prompt.errors, Lines{"Fehler in Befehlsliste (Zeile 2): " +
                                 terminal::texts::AnswerToCome("Timeout (ms): Typen unverträglich")});
  EXPECT_EQ(ListText(list), "'|!A|B");
  EXPECT_EQ(script.run.ScriptRunning, 0);
  EXPECT_EQ(host.locks, (std::vector<bool>{true, false}));
}

TEST_F(RunnerTest, CommandsThatEndTheExchangeAreNotAnswered) {
  Play("STP|X");
  EXPECT_EQ(pane.lines[1], "Die laufende Meßwerterfassung wurde beendet");
  EXPECT_EQ(device.CountCalls("ReadText"), 1u);
}

TEST_F(RunnerTest, ContinuesAfterFailedAnswersAndReportsThem) {
  Play("A|B");
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(pane.lines, (Lines{"A", "Zeitüberschreitung", "B", "Zeitüberschreitung"}));
  EXPECT_TRUE(runner.outcome().exchange_failed);
  EXPECT_FALSE(runner.outcome().list_error);
}

TEST_F(RunnerTest, ReportsAWriteError) {
  device.write_result = {-3, "kaputt"};
  device.text_answers = {"1\r\n"};
  Play("A");
  EXPECT_TRUE(runner.outcome().exchange_failed);
  EXPECT_EQ(pane.text, "\r\nWrite error: kaputt\r\nA\r\n1");
}

TEST_F(RunnerTest, ReportsAFailedConnection) {
  device_state.connected = false;
  device.open_result = {-1, "niemand da"};
  Play("A");
  EXPECT_EQ(Sent(), "");
  EXPECT_TRUE(runner.outcome().exchange_failed);
  EXPECT_EQ(device.CountCalls("Open"), 1u);
}

TEST_F(RunnerTest, DelayAndConditionSeeTheSameStatus) {
  library.results["Delay"] = {-4};
  Play("$DELAY 5|$IFERR|A|$ENDIF");
  EXPECT_EQ(library.calls, Lines{"Delay(5)"});
  EXPECT_EQ(Sent(), "A");
}

TEST_F(RunnerTest, SilenceHidesLinesButSendsThem) {
  device.text_answers = {"1\r\n", "2\r\n"};
  Play("$SILENT ON|A|$SILENT OFF|B");
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(pane.lines, (Lines{"B", "2"}));
}

TEST_F(RunnerTest, RecordsShownLinesWhileAutoLogIsOn) {
  device.text_answers = {"1\r\n", "2\r\n"};
  Play("$AUTOLOG ON|A|$AUTOLOG OFF|B");
  EXPECT_EQ(log.lines, (Lines{"A", "1"}));
}

TEST_F(RunnerTest, ARowThatTheDeviceWouldMisunderstandIsAnError) {
  Play("A|MEAS:RES 5 Ω|B");
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(prompt.errors,
            Lines{"Fehler in Befehlsliste (Zeile 2): Das Zeichen „Ω“ kann nicht gesendet werden"});
  EXPECT_EQ(ListText(list), "A|!MEAS:RES 5 Ω|B");
  EXPECT_TRUE(core.runner.outcome().list_error);
}

TEST_F(RunnerTest, ANulIsAnErrorOnlyForThePortLibrary) {
  using namespace std::string_view_literals;
  Play("A|B\0C|D"sv);
  EXPECT_EQ(Sent(), "A|B\0C|D"sv);
  EXPECT_EQ(prompt.errors, Lines{});
  device.calls.clear();
  device_state.OperMode = device::operating_mode::kPortLibrary;
  Play("A|B\0C|D"sv);
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(prompt.errors,
            Lines{"Fehler in Befehlsliste (Zeile 2): Das Zeichen „<00>“ kann nicht gesendet werden"});
}

TEST_F(RunnerTest, CommentsMayHoldAnyCharacter) {
  Play("' 5 Ω|A µ");
  EXPECT_EQ(Sent(), "A µ");
  EXPECT_EQ(prompt.errors, Lines{});
}

TEST_F(RunnerTest, KnowsTheRowThatItExecutedLast) {
  EXPECT_EQ(core.runner.last_row(), 0);
  Play("A|B|'|");
  EXPECT_EQ(core.runner.last_row(), 2);
  Play("A|$STOP|B");
  EXPECT_EQ(core.runner.last_row(), 2);
  Play("A|$GOTO nowhere|B");
  EXPECT_EQ(core.runner.last_row(), 2);
  Play("'");
  EXPECT_EQ(core.runner.last_row(), 0);
}

}  // namespace
}  // namespace kolvane::script
