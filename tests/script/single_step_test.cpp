#include <gtest/gtest.h>

#include "script/run_bench.h"

namespace kolvane::script {
namespace {

class SingleStepTest : public testing::Test, protected RunBench {
 protected:
  /// The list after each of `steps` steps.
  Lines Steps(int steps) {
    Lines seen;
    for (int step = 0; step < steps; ++step) {
      core.runner.SingleStep();
      seen.push_back(ListText(list));
    }
    return seen;
  }

  CommandList& list = core.list;
  InterpreterState& now = script.interpreter;
};

TEST_F(SingleStepTest, ExecutesTheCurrentRowAndShowsTheNext) {
  FillList(list, "A|'x||B");
  EXPECT_EQ(Steps(1), Lines{"A|>*'x||B"});
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(Steps(3), (Lines{"A|'x|>*|B", "A|'x||>*B", "A|'x||B"}));
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(list.current_row(), 5);
  EXPECT_EQ(host.locks, std::vector<bool>{});
  EXPECT_EQ(host.yields, 0);
}

TEST_F(SingleStepTest, ExecutesWhicheverRowIsCurrent) {
  FillList(list, "A|B|C");
  list.SetCurrentRow(2);
  EXPECT_EQ(Steps(1), Lines{"A|B|>*C"});
  EXPECT_EQ(Sent(), "B");
}

TEST_F(SingleStepTest, BeforeTheFirstRowThereIsNothingToExecute) {
  FillList(list, "A");
  list.SetCurrentRow(0);
  EXPECT_EQ(Steps(1), Lines{">*A"});
  EXPECT_EQ(Sent(), "");
}

TEST_F(SingleStepTest, FollowsLoops) {
  FillList(list, "$REPEAT 1|A|$ENDREPEAT|B");
  EXPECT_EQ(Steps(5),
            (Lines{"$REPEAT 1|>*A|$ENDREPEAT|B", "$REPEAT 1|A|>*$ENDREPEAT|B", "$REPEAT 1|>*A|$ENDREPEAT|B",
                   "$REPEAT 1|A|>*$ENDREPEAT|B", "$REPEAT 1|A|$ENDREPEAT|>*B"}));
  EXPECT_EQ(Sent(), "A|A");
}

TEST_F(SingleStepTest, FollowsJumps) {
  FillList(list, "$GOTO x|A|x:|B");
  EXPECT_EQ(Steps(1), Lines{"$GOTO x|A|x:|>*B"});
}

TEST_F(SingleStepTest, SkipsTheRowsOfAFailedCondition) {
  FillList(list, "$IFEQUAL x|A|$REPEAT 2|$endif|B");
  EXPECT_EQ(Steps(1), Lines{"$IFEQUAL x|A|$REPEAT 2|$endif|>*B"});
  EXPECT_EQ(now.IfDepth, 0);
  EXPECT_FALSE(now.SkipRows);
  EXPECT_EQ(now.RepeatLevel, 0);
}

TEST_F(SingleStepTest, AConditionThatNeverEndsLeadsPastTheLastRow) {
  FillList(list, "$IFEQUAL x|A");
  Steps(1);
  EXPECT_EQ(list.current_row(), 1025);
  EXPECT_TRUE(now.SkipRows);
  Steps(1);
  EXPECT_FALSE(now.SkipRows);
  EXPECT_EQ(now.IfDepth, 0);
  EXPECT_EQ(list.current_row(), 1);
  EXPECT_EQ(Sent(), "");
}

TEST_F(SingleStepTest, PastTheLastRowLoopsEndAndTheFirstRowIsNext) {
  FillList(list, "A");
  list.SetCurrentRow(1024);
  now.RepeatLevel = 2;
  now.IfDepth = 1;
  Steps(1);
  EXPECT_EQ(list.current_row(), 1025);
  EXPECT_EQ(now.RepeatLevel, 2);
  EXPECT_EQ(Steps(1), Lines{">A"});
  EXPECT_EQ(now.RepeatLevel, 0);
  EXPECT_EQ(now.IfDepth, 0);
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(Steps(1), Lines{"A"});
  EXPECT_EQ(Sent(), "A");
}

TEST_F(SingleStepTest, AStopRowLeadsPastTheLastRow) {
  FillList(list, "$STOP|A");
  EXPECT_EQ(Steps(1), Lines{"$STOP|A"});
  EXPECT_EQ(list.current_row(), 1025);
  EXPECT_EQ(Steps(1), Lines{">$STOP|A"});
}

TEST_F(SingleStepTest, AnErrorStaysMarkedAndLeadsPastTheLastRow) {
  FillList(list, "A|$FOO|B");
  list.SetCurrentRow(2);
  EXPECT_EQ(Steps(1), Lines{"A|!$FOO|B"});
  EXPECT_EQ(list.current_row(), 1025);
  EXPECT_EQ(prompt.errors, Lines{"Fehler in Befehlsliste (Zeile 2): Unbekannter $ Befehl"});
  EXPECT_TRUE(core.runner.outcome().list_error);
}

TEST_F(SingleStepTest, AfterStopAStepExecutesItsRowAndEndsLoopsAndConditions) {
  FillList(list, "$REPEAT 3|A|B");
  Steps(1);
  core.runner.Stop();
  EXPECT_EQ(ListText(list), "$REPEAT 3|>A|B");
  now.SkipRows = false;
  now.IfDepth = 4;
  EXPECT_EQ(Steps(1), Lines{"$REPEAT 3|A|>B"});
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(now.RepeatLevel, 0);
  EXPECT_EQ(now.IfDepth, 0);
  EXPECT_TRUE(script.run.StopRequested);
}

TEST_F(SingleStepTest, BreakDoesNotAffectSteps) {
  FillList(list, "A|B");
  core.runner.Break();
  EXPECT_EQ(Steps(1), Lines{"A|>*B"});
}

TEST_F(SingleStepTest, StepsOnFromTheRowWhereABreakEndedTheRun) {
  host.at_yield = [this] {
    if (list.current_row() == 2) core.runner.Break();
  };
  Play("A|B|C");
  EXPECT_EQ(Steps(1), Lines{"A|B|>*C"});
  EXPECT_EQ(Sent(), "A|B|B");
}

TEST_F(SingleStepTest, TheListIsInUseDuringAStep) {
  FillList(list, "$FOO");
  bool in_use = false;
  prompt.at_error = [&] { in_use = list.InUse(); };
  Steps(1);
  EXPECT_TRUE(in_use);
  EXPECT_FALSE(list.InUse());
}

TEST_F(SingleStepTest, ACounterThatOverflowsWhileRowsAreSkippedIsAnErrorOfItsRow) {
  FillList(list, "A|B|$ENDIF|C");
  now.SkipRows = true;
  now.IfDepth = -32768;
  Steps(1);
  EXPECT_EQ(prompt.errors, Lines{"Fehler in Befehlsliste (Zeile 3): Überlauf"});
  EXPECT_EQ(list.current_row(), 1025);
}

}  // namespace
}  // namespace kolvane::script
