#include "script/command_list.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

#include "script/list_text.h"
#include "script/recording_observer.h"

namespace kolvane::script {
namespace {

using Calls = std::vector<std::string>;

TEST(CommandListTest, HoldsRowsOneTo1024) {
  CommandList list;
  list.SetText(1, "first");
  list.SetText(1024, "last");
  EXPECT_EQ(list.Text(1), "first");
  EXPECT_EQ(list.Text(1024), "last");
  for (const int outside : {-1, 0, 1025}) {
    list.SetText(outside, "x");
    list.HighlightLine(outside, 1, 2, true);
    list.ClearLineSelection(outside);
    list.SyntaxColorLine(outside);
    EXPECT_EQ(list.Text(outside), "") << outside;
    EXPECT_EQ(list.HighlightOf(outside), nullptr) << outside;
  }
  EXPECT_EQ(list.LastUsedRow(), 1024);
}

TEST(CommandListTest, ColoursByTheFirstCharacterOfTheTrimmedText) {
  CommandList list;
  list.SetDefaultTextColor(0x123456);
  const auto color = [&list](std::string_view text) {
    list.SetText(7, text);
    return list.TextColor(7);
  };
  EXPECT_EQ(color("$REPEAT 2"), 0xFF0000);
  EXPECT_EQ(color("   $STOP"), 0xFF0000);
  EXPECT_EQ(color("'comment"), 32768);
  EXPECT_EQ(color("  ' comment"), 32768);
  EXPECT_EQ(color(":x"), 255);
  EXPECT_EQ(color("start:"), 0x123456);
  EXPECT_EQ(color("*IDN?"), 0x123456);
  EXPECT_EQ(color("\t$STOP"), 0x123456);
  EXPECT_EQ(color("  "), 0x123456);
  EXPECT_EQ(color(""), 0x123456);
}

TEST(CommandListTest, ANewDefaultColourReachesRowsOfNoSpecialKind) {
  CommandList list;
  FillList(list, "A|'c");
  list.SetDefaultTextColor(9);
  EXPECT_EQ(list.TextColor(1), 9);
  EXPECT_EQ(list.TextColor(2), syntax_color::kComment);
  EXPECT_EQ(list.TextColor(1024), 9);
}

TEST(CommandListTest, HighlightsARowUntilItIsCleared) {
  CommandList list;
  FillList(list, "$STOP|B");
  list.HighlightLine(1, 0xFF, 0xFFFFFF, true);
  EXPECT_EQ(*list.HighlightOf(1), kErrorRow);
  list.HighlightLine(1, 0xFF0000, 0xFFFF, true);
  EXPECT_EQ(*list.HighlightOf(1), kRunningRow);
  EXPECT_EQ(list.HighlightOf(2), nullptr);
  list.ClearLineSelection(1);
  EXPECT_EQ(list.HighlightOf(1), nullptr);
  EXPECT_EQ(list.TextColor(1), syntax_color::kSpecialCommand);
}

TEST(CommandListTest, AnEditRemovesTheErrorMark) {
  RunFlags run;
  CommandList list(&run);
  FillList(list, "A|B");
  list.HighlightLine(1, 0xFF, 0xFFFFFF, true);
  list.HighlightLine(2, 0xFF0000, 0xFFFF, true);
  list.SetText(1, "C");
  run.ScriptRunning = 1;
  list.SetText(2, "D");
  EXPECT_EQ(ListText(list), ">C|*D");
}

TEST(CommandListTest, ARowIsOneLine) {
  CommandList list;
  list.SetText(1, "A\r\nB");
  list.SetText(2, "C\nD");
  list.SetText(3, "\rE");
  EXPECT_EQ(ListText(list), ">A|C");
}

TEST(CommandListTest, RecordsAfterTheLastRowThatHoldsText) {
  CommandList list;
  EXPECT_TRUE(list.AddToScript("A"));
  EXPECT_EQ(ListText(list), ">A");
  EXPECT_TRUE(list.modified());
  list.SetText(4, " ");
  EXPECT_TRUE(list.AddToScript("B"));
  EXPECT_EQ(ListText(list), "A||| |>B");
}

TEST(CommandListTest, RecordsNothingIntoAFullList) {
  CommandList list;
  list.SetText(1023, "x");
  EXPECT_TRUE(list.AddToScript("last"));
  EXPECT_EQ(list.current_row(), 1024);
  EXPECT_FALSE(list.AddToScript("too many"));
  EXPECT_EQ(list.Text(1024), "last");
}

TEST(CommandListTest, RecordingDuringARunDoesNotChangeItsPosition) {
  RunFlags run;
  CommandList list(&run);
  FillList(list, "A|B");
  run.ScriptRunning = 1;
  EXPECT_TRUE(list.AddToScript("C"));
  EXPECT_EQ(ListText(list), ">A|B|C");
}

TEST(CommandListTest, ClearsEverythingButNotDuringARun) {
  RunFlags run;
  CommandList list(&run);
  list.ShowFile("/x/a.CMD", {"A", "B"}, 3);
  list.SetText(2, "C");
  list.SetCurrentRow(2);
  list.HighlightLine(2, 1, 2, false);

  run.ScriptRunning = 1;
  EXPECT_FALSE(list.ClearCommandScriptGrid());
  EXPECT_FALSE(list.ShowFile("b", {}, 0));
  EXPECT_EQ(ListText(list), "A|>?C");
  EXPECT_EQ(list.file_name(), "/x/a.CMD");

  run.ScriptRunning = 0;
  EXPECT_TRUE(list.ClearCommandScriptGrid());
  EXPECT_EQ(list.LastUsedRow(), 0);
  EXPECT_EQ(list.current_row(), 1);
  EXPECT_EQ(list.HighlightOf(2), nullptr);
  EXPECT_EQ(list.file_name(), "");
  EXPECT_EQ(list.left_out(), 0u);
  EXPECT_FALSE(list.modified());
}

TEST(CommandListTest, KeepsTheCurrentRowBetweenBeforeTheFirstAndAfterTheLast) {
  CommandList list;
  EXPECT_EQ(list.current_row(), 1);
  list.SetCurrentRow(0);
  EXPECT_EQ(list.current_row(), 0);
  list.SetCurrentRow(-1);
  EXPECT_EQ(list.current_row(), 0);
  list.SetCurrentRow(1025);
  EXPECT_EQ(list.current_row(), 1025);
  list.SetCurrentRow(1026);
  EXPECT_EQ(list.current_row(), 1025);
}

TEST(CommandListTest, UndoesEditsFromTheNewestOn) {
  CommandList list;
  list.SetText(1, "A");
  list.SetText(1, "B");
  list.SetText(1, "B");
  list.SetTexts(2, {"C", "$STOP"});
  list.AddToScript("E");
  EXPECT_EQ(list.Undo(), 4);
  EXPECT_EQ(list.Undo(), 2);
  EXPECT_EQ(list.TextColor(3), 0);
  EXPECT_EQ(list.Undo(), 1);
  EXPECT_EQ(ListText(list), "A");
  EXPECT_EQ(list.Undo(), 1);
  EXPECT_EQ(list.Undo(), 0);
  EXPECT_EQ(list.LastUsedRow(), 0);
}

TEST(CommandListTest, UndoesTheLast100Edits) {
  CommandList list;
  for (int edit = 0; edit <= 100; ++edit) list.SetText(1, std::to_string(edit));
  for (int edit = 0; edit < 100; ++edit) EXPECT_EQ(list.Undo(), 1);
  EXPECT_EQ(list.Text(1), "0");
  EXPECT_EQ(list.Undo(), 0);
}

TEST(CommandListTest, UndoBringsBackTheListThatNewHasEmptied) {
  CommandList list;
  list.ShowFile("/x/a.CMD", {"A", "B"}, 3);
  list.SetText(2, "C");
  list.ClearCommandScriptGrid();
  EXPECT_EQ(list.Undo(), 1);
  EXPECT_EQ(ListText(list), ">A|C");
  EXPECT_EQ(list.file_name(), "/x/a.CMD");
  EXPECT_EQ(list.left_out(), 3u);
  EXPECT_TRUE(list.modified());
  EXPECT_EQ(list.Undo(), 2);
  EXPECT_EQ(ListText(list), ">A|B");
  EXPECT_FALSE(list.modified());
  EXPECT_EQ(list.Undo(), 0);
}

TEST(CommandListTest, UndoBringsBackTheListThatAFileHasReplaced) {
  CommandList list;
  FillList(list, "A|B|C");
  list.ShowFile("/x/b.CMD", {"x"}, 0);
  list.SetText(1, "y");
  EXPECT_EQ(list.Undo(), 1);
  EXPECT_EQ(list.file_name(), "/x/b.CMD");
  EXPECT_EQ(list.Undo(), 1);
  EXPECT_EQ(ListText(list), ">A|B|C");
  EXPECT_EQ(list.file_name(), "");
}

TEST(CommandListTest, AnUnchangedListIsNotBroughtBack) {
  CommandList list;
  list.ShowFile("/x/b.CMD", {"x"}, 0);
  EXPECT_EQ(list.Undo(), 0);
  EXPECT_EQ(ListText(list), ">x");
}

TEST(CommandListTest, DuringARunUndoRevertsEditsButReplacesNoList) {
  RunFlags run;
  CommandList list(&run);
  FillList(list, "A");
  list.ClearCommandScriptGrid();
  run.ScriptRunning = 1;
  EXPECT_EQ(list.Undo(), 0);
  list.SetText(1, "B");
  EXPECT_EQ(list.Undo(), 1);
  EXPECT_EQ(list.Undo(), 0);
  run.ScriptRunning = 0;
  EXPECT_EQ(list.Undo(), 1);
  EXPECT_EQ(ListText(list), ">A");
}

TEST(CommandListTest, RedoRevertsUndo) {
  CommandList list;
  list.SetText(1, "A");
  list.SetText(2, "B");
  list.ShowFile("/x/c.CMD", {"C"}, 1);
  EXPECT_EQ(list.Redo(), 0);
  for (int step = 0; step < 3; ++step) list.Undo();
  EXPECT_EQ(ListText(list), "");
  EXPECT_EQ(list.Redo(), 1);
  EXPECT_EQ(list.Redo(), 2);
  EXPECT_EQ(ListText(list), ">A|B");
  EXPECT_EQ(list.Redo(), 1);
  EXPECT_EQ(ListText(list), ">C");
  EXPECT_EQ(list.file_name(), "/x/c.CMD");
  EXPECT_EQ(list.left_out(), 1u);
  EXPECT_EQ(list.Redo(), 0);
}

TEST(CommandListTest, AnEditEndsRedo) {
  CommandList list;
  list.SetText(1, "A");
  list.Undo();
  list.SetText(1, "B");
  EXPECT_EQ(list.Redo(), 0);
  EXPECT_EQ(ListText(list), ">B");
}

TEST(CommandListTest, GoingBackToTheContentsOfTheFileIsNoModification) {
  CommandList list;
  list.ShowFile("/x/a.CMD", {"A"}, 0);
  list.SetText(1, "B");
  list.SetText(1, "C");
  list.Undo();
  EXPECT_TRUE(list.modified());
  list.Undo();
  EXPECT_FALSE(list.modified());
  list.Redo();
  EXPECT_TRUE(list.modified());
  list.MarkSaved();
  EXPECT_FALSE(list.modified());
  list.Undo();
  EXPECT_TRUE(list.modified());
  list.Redo();
  EXPECT_FALSE(list.modified());
  list.Redo();
  EXPECT_TRUE(list.modified());
}

TEST(CommandListTest, SavingOneListDoesNotMarkAnotherAsSaved) {
  CommandList list;
  list.ShowFile("/x/a.CMD", {"A"}, 0);
  list.ClearCommandScriptGrid();
  list.SetText(1, "B");
  list.MarkSaved();
  list.Undo();
  EXPECT_TRUE(list.modified());
  list.Undo();
  EXPECT_FALSE(list.modified());
  EXPECT_EQ(ListText(list), ">A");
}

TEST(CommandListTest, ANameForAFileThatIsStillEmptyLeavesTheRowsUnsaved) {
  CommandList list;
  list.SetFileName("/x/empty.CMD");
  EXPECT_FALSE(list.modified());
  list.ShowFile("/x/a.CMD", {"A"}, 0);
  list.SetFileName("/x/b.CMD");
  EXPECT_TRUE(list.modified());
}

TEST(CommandListTest, ItsRevisionChangesWithEveryChange) {
  CommandList list;
  std::uint64_t last = list.revision();
  const auto changed = [&] { return std::exchange(last, list.revision()) != last; };
  list.SetText(1, "A");
  EXPECT_TRUE(changed());
  list.SetText(1, "B");
  EXPECT_TRUE(changed());
  list.HighlightLine(1, 1, 2, true);
  list.ClearLineSelection(1);
  list.SetCurrentRow(7);
  EXPECT_FALSE(changed());
  list.MarkSaved();
  EXPECT_TRUE(changed());
  list.Undo();
  EXPECT_TRUE(changed());
  list.SetFileName("x");
  EXPECT_TRUE(changed());
  list.ClearCommandScriptGrid();
  EXPECT_TRUE(changed());
}

TEST(CommandListTest, NotifiesItsObserverOfWhatChanged) {
  CommandList list;
  RecordingObserver observer;
  list.Observe(&observer);
  list.SetText(3, "A");
  list.SetText(3, "A");
  list.SetCurrentRow(3);
  list.SetCurrentRow(3);
  list.HighlightLine(3, 1, 2, true);
  list.ClearLineSelection(3);
  EXPECT_EQ(observer.calls, (Calls{"rows 3-3", "file", "current 3", "rows 3-3", "rows 3-3"}));

  EXPECT_TRUE(list.modified());

  observer.calls.clear();
  list.SetText(3, "B");
  list.SetText(3, "C");
  list.MarkSaved();
  list.SetFileName("x");
  list.ShowFile("y", {"A"}, 0);
  EXPECT_EQ(observer.calls,
            (Calls{"rows 3-3", "rows 3-3", "file", "file", "rows 1-1024", "current 1", "file"}));

  observer.calls.clear();
  list.Observe(nullptr);
  list.SetText(1, "unseen");
  EXPECT_EQ(observer.calls, Calls{});
}

}  // namespace
}  // namespace kolvane::script
