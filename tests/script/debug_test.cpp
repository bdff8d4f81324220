// Breakpoints, playing from a row and up to one, and what is shown of an interrupted run.
#include <gtest/gtest.h>

#include "script/run_bench.h"
#include "script/watch.h"

namespace kolvane::script {
namespace {

class DebugTest : public testing::Test, protected RunBench {
 protected:
  void PlayTo(int row) { runner.PlayTo(row); }
  std::string Rows() const { return ListText(list); }

  CommandList& list = core.list;
  Runner& runner = core.runner;
};

TEST_F(DebugTest, ARunStopsBeforeABreakpoint) {
  FillList(list, "A|B|C");
  list.ToggleBreakpoint(2);
  runner.Play();
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(Rows(), "A|>*B|C") << "the row is marked as the next one";
  EXPECT_EQ(runner.stopped_before(), 2);
  EXPECT_FALSE(runner.running());
  EXPECT_EQ(host.locks, (std::vector<bool>{true, false}));
}

TEST_F(DebugTest, ItContinuesAfterABreakpoint) {
  FillList(list, "A|B|C");
  list.ToggleBreakpoint(2);
  runner.Play();
  runner.PlayFromHere();
  EXPECT_EQ(Sent(), "A|B|C");
  EXPECT_EQ(runner.stopped_before(), 0);
}

TEST_F(DebugTest, ItContinuesAfterABreakpointInTheFirstRow) {
  FillList(list, "A|B|C");
  list.ToggleBreakpoint(1);
  runner.Play();
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(runner.stopped_before(), 1);
  runner.PlayFromHere();
  EXPECT_EQ(Sent(), "A|B|C");
}

TEST_F(DebugTest, RunningToARowContinuesAfterABreakpointInTheFirstRow) {
  FillList(list, "A|B|C");
  list.ToggleBreakpoint(1);
  runner.PlayTo(3);
  EXPECT_EQ(Sent(), "") << "a run from the start stops there";
  runner.PlayTo(3);
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(runner.stopped_before(), 3);
}

TEST_F(DebugTest, ABreakpointInALoopStopsInEachPass) {
  FillList(list, "$REPEAT 2|A|$ENDREPEAT|B");
  list.ToggleBreakpoint(2);
  runner.Play();
  EXPECT_EQ(Sent(), "");
  runner.PlayFromHere();
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(runner.stopped_before(), 2);
  list.ToggleBreakpoint(2);
  runner.PlayFromHere();
  EXPECT_EQ(Sent(), "A|A|A|B") << "the counters were kept";
}

TEST_F(DebugTest, RowsOfAFailedConditionDoNotStopARun) {
  script.interpreter.ParamValue = "x";
  FillList(list, "$IFEQUAL y|A|$ENDIF|B");
  list.ToggleBreakpoint(2);
  runner.Play();
  EXPECT_EQ(Sent(), "B");
}

TEST_F(DebugTest, ItContinuesAfterBreak) {
  FillList(list, "A|B|C");
  host.at_yield = [this] {
    if (list.current_row() == 2) runner.Break();
  };
  runner.Play();
  EXPECT_EQ(Sent(), "A|B");
  host.at_yield = nullptr;
  runner.PlayFromHere();
  EXPECT_EQ(Sent(), "A|B|C") << "the row being executed was completed";
}

TEST_F(DebugTest, AStopAfterABreakpointEndsWhatTheRunHasChosen) {
  FillList(list, "$ANSWERS QUERIES|A|B");
  list.ToggleBreakpoint(2);
  runner.Play();
  EXPECT_TRUE(state.QueriesOnly());
  runner.Stop();
  EXPECT_FALSE(state.QueriesOnly());
}

TEST_F(DebugTest, AfterBreakAndStopTheCurrentRowIsTheFirst) {
  FillList(list, "A|B|C");
  host.at_yield = [this] {
    if (list.current_row() == 2) runner.Break();
  };
  runner.Play();
  host.at_yield = nullptr;
  runner.Stop();
  EXPECT_EQ(runner.stopped_before(), 0);
  runner.PlayFromHere();
  EXPECT_EQ(Sent(), "A|B|B|C");
}

TEST_F(DebugTest, AnotherRowChosenAfterBreakIsTheFirst) {
  FillList(list, "A|B|C");
  host.at_yield = [this] {
    if (list.current_row() == 2) runner.Break();
  };
  runner.Play();
  host.at_yield = nullptr;
  list.SetCurrentRow(1);
  runner.PlayFromHere();
  EXPECT_EQ(Sent(), "A|B|A|B|C");
}

TEST_F(DebugTest, PlaysFromTheCurrentRow) {
  FillList(list, "A|B|C");
  list.ToggleBreakpoint(2);
  list.SetCurrentRow(2);
  runner.PlayFromHere();
  EXPECT_EQ(Sent(), "B|C") << "its own breakpoint does not stop it";
}

TEST_F(DebugTest, PlaysUpToARow) {
  FillList(list, "A|B|C|D");
  PlayTo(3);
  EXPECT_EQ(Sent(), "A|B");
  EXPECT_EQ(Rows(), "A|B|>*C|D");
  list.SetCurrentRow(4);
  PlayTo(4);
  EXPECT_EQ(Sent(), "A|B|C") << "from the row where the run was interrupted";
  runner.Play();
  EXPECT_EQ(Sent(), "A|B|C|A|B|C|D") << "playing does not stop there again";
}

TEST_F(DebugTest, PlaysUpToARowFromTheRowOfAStep) {
  FillList(list, "A|B|C");
  runner.SingleStep();
  list.SetCurrentRow(3);
  PlayTo(3);
  EXPECT_EQ(Sent(), "A|B");
}

TEST_F(DebugTest, AnotherListHasNoInterruptedRun) {
  FillList(list, "A|B|C");
  PlayTo(3);
  FillList(list, "D|E|F");
  EXPECT_EQ(runner.stopped_before(), 0);
  PlayTo(2);
  EXPECT_EQ(Sent(), "A|B|D");
}

TEST_F(DebugTest, AnErrorLeavesNothingToContinue) {
  FillList(list, "A|$NIX|B");
  list.ToggleBreakpoint(3);
  runner.Play();
  EXPECT_EQ(runner.stopped_before(), 0);
  EXPECT_EQ(list.ErrorOf(2), "Unbekannter $ Befehl");
  EXPECT_EQ(list.ErrorOf(1), "");
  list.ClearLineSelection(2);
  EXPECT_EQ(list.ErrorOf(2), "");
}

TEST_F(DebugTest, ANewListHasNoBreakpoints) {
  list.ToggleBreakpoint(2);
  EXPECT_TRUE(list.HasBreakpoint(2));
  FillList(list, "A|B");
  EXPECT_FALSE(list.HasBreakpoint(2));
  list.ToggleBreakpoint(0);
  EXPECT_FALSE(list.HasBreakpoint(0));
}

std::string WatchText(const std::vector<WatchItem>& items) {
  std::string lines;
  for (const WatchItem& item : items) {
    lines += item.name + "=" + item.value + ";";
    if (!item.children.empty()) lines += "(" + WatchText(item.children) + ")";
  }
  return lines;
}

TEST_F(DebugTest, TheWatchShowsTheStateOfARun) {
  FillList(list, "$REPEAT 9|$REPEAT x|A|$ENDREPEAT|$ENDREPEAT");
  list.ToggleBreakpoint(3);
  runner.Play();
  script.interpreter.ParamValue = "12";
  const auto items = WatchItems(list, script.interpreter,
                                {.fields = {"1", "2"}, .last_result = -3, .silent = true, .log_open = true});
  EXPECT_EQ(WatchText(items),
            "ParamValue=12;Letzte Antwort=2 Teile;(1=1;2=2;)Schleifen=2;(Zeile 1=1 von 10;Zeile 2=1 von 1;)"
            "Offene Bedingungen=0;Zeilen werden übergangen=nein;Status=-3;$SILENT=ON;Logdatei=offen;");
}

TEST_F(DebugTest, WhatARunLeavesOpenIsNamed) {
  EXPECT_EQ(StillOpen(script.interpreter, false, false), "");
  FillList(list, "$REPEAT 9|$REPEAT 9|$IFERR|A|$ENDIF|$ENDREPEAT|$ENDREPEAT");
  host.at_yield = [&] {
    if (list.current_row() == 3) runner.Break();
  };
  runner.Play();
  EXPECT_EQ(StillOpen(script.interpreter, true, true),
            "Noch offen: 2 Schleifen, 1 Bedingung, Zeilen werden übergangen, $SILENT ON, $AUTOLOG ON");
  script.interpreter = {};
  script.interpreter.RepeatLevel = -1;
  script.interpreter.IfDepth = -2;
  EXPECT_EQ(StillOpen(script.interpreter, false, false),
            "Noch offen: 1 $ENDREPEAT zu viel, 2 $ENDIF zu viel");
}

TEST_F(DebugTest, TheProgressNamesRowLoopAndTime) {
  FillList(list, "$REPEAT 9|A|$ENDREPEAT|B");
  EXPECT_EQ(RunProgress().Text(list, script.interpreter, 59.9), "Zeile 1 von 4, 0:59");
  int passes = 0;
  host.at_yield = [&] {
    if (list.current_row() != 2 || ++passes != 3) return;
    EXPECT_EQ(RunProgress().Text(list, script.interpreter, 62), "Zeile 2 von 4, Schleife 3 von 10, 1:02");
  };
  runner.Play();
  EXPECT_EQ(passes, 10);
}

TEST_F(DebugTest, ALoopWhoseRowWasEditedShowsOnlyWhatRemains) {
  FillList(list, "$REPEAT 9|A|$ENDREPEAT");
  script.interpreter.RepeatLevel = 1;
  script.interpreter.RepeatRow[1] = 1;
  const auto text = [this](int remaining) {
    script.interpreter.RepeatCount[1] = remaining;
    return RunProgress().Text(list, script.interpreter, 0);
  };
  EXPECT_EQ(text(9), "Zeile 1 von 3, Schleife 1 von 10, 0:00");
  EXPECT_EQ(text(0), "Zeile 1 von 3, Schleife 10 von 10, 0:00");
  EXPECT_EQ(text(10), "Zeile 1 von 3, Schleife noch 10, 0:00");
  EXPECT_EQ(text(-1), "Zeile 1 von 3, Schleife noch -1, 0:00");
  list.SetText(1, "$REPEAT -1");
  EXPECT_EQ(text(0), "Zeile 1 von 3, Schleife 1 von 1, 0:00");
  list.SetText(1, "$REPEAT");
  EXPECT_EQ(text(0), "Zeile 1 von 3, Schleife noch 0, 0:00");
}

TEST_F(DebugTest, TheProgressOfKnownLoopsShowsTheTimeRemaining) {
  FillList(list, "$REPEAT 9|$REPEAT 1|A|$ENDREPEAT|$ENDREPEAT|$REPEAT 3|B|$ENDREPEAT");
  RunProgress progress;
  double seconds = 100;
  std::vector<std::string> at_a;
  std::vector<std::string> at_b;
  host.at_yield = [&] {
    if (list.current_row() != 3 && list.current_row() != 7) return;
    (list.current_row() == 3 ? at_a : at_b).push_back(progress.Text(list, script.interpreter, seconds));
    seconds += 10;
  };
  runner.Play();
  ASSERT_EQ(at_a.size(), 20u);
  EXPECT_EQ(at_a[0], "Zeile 3 von 8, Schleife 1 von 2, 1:40");
  EXPECT_EQ(at_a[1], "Zeile 3 von 8, Schleife 2 von 2, 1:50, noch etwa 3:10");
  EXPECT_EQ(at_a[10], "Zeile 3 von 8, Schleife 1 von 2, 3:20, noch etwa 1:40");
  ASSERT_EQ(at_b.size(), 4u);
  EXPECT_EQ(at_b[0], "Zeile 7 von 8, Schleife 1 von 4, 5:00") << "another loop";
  EXPECT_EQ(at_b[2], "Zeile 7 von 8, Schleife 3 von 4, 5:20, noch etwa 0:20");
}

TEST_F(DebugTest, TheProgressOfEndlessLoopsShowsNoTimeRemaining) {
  FillList(list, "$REPEAT 2147483646|$REPEAT 2147483646|$REPEAT 2147483646|A");
  script.interpreter.RepeatLevel = 3;
  for (std::size_t level = 1; level <= 3; ++level) {
    script.interpreter.RepeatRow[level] = static_cast<std::int16_t>(level);
    script.interpreter.RepeatCount[level] = 2147483646;
  }
  RunProgress progress;
  EXPECT_EQ(progress.Text(list, script.interpreter, 0), "Zeile 1 von 4, Schleife 1 von 2147483647, 0:00");
  script.interpreter.RepeatCount[3] -= 5;
  EXPECT_EQ(progress.Text(list, script.interpreter, 10), "Zeile 1 von 4, Schleife 6 von 2147483647, 0:10");
}

}  // namespace
}  // namespace kolvane::script
