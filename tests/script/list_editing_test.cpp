#include "script/list_editing.h"

#include <gtest/gtest.h>

#include "script/list_text.h"

namespace kolvane::script {
namespace {

class ListEditingTest : public testing::Test {
 protected:
  void SetUp() override { FillList(list, "A|B|C|D"); }
  CommandList list;
};

TEST_F(ListEditingTest, CopiesRowsAsLines) {
  EXPECT_EQ(CopyRows(list, 2, 2), "B");
  EXPECT_EQ(CopyRows(list, 2, 3), "B\nC");
  EXPECT_EQ(CopyRows(list, 4, 5), "D\n\n");
  EXPECT_EQ(CopyRows(list, 0, 1), "A");
  EXPECT_EQ(CopyRows(list, 1024, 2000), "\n");
  EXPECT_EQ(CopyRows(list, 3, 2), "");
}

TEST_F(ListEditingTest, CopiedEmptyRowsArePastedAsSuch) {
  FillList(list, "A||C|D");
  const std::string one = CopyRows(list, 2, 2);
  const std::string two = CopyRows(list, 1, 2);
  PasteRows(list, 3, one);
  EXPECT_EQ(ListText(list), ">A|||D");
  InsertLines(list, 1, two);
  EXPECT_EQ(ListText(list), ">A||A|||D");
}

TEST_F(ListEditingTest, CutsRowsAndLeavesTheRestInPlace) {
  EXPECT_EQ(CutRows(list, 2, 3), "B\nC");
  EXPECT_EQ(ListText(list), ">A|||D");
  list.Undo();
  EXPECT_EQ(ListText(list), ">A|B|C|D");
}

TEST_F(ListEditingTest, EmptiesRows) {
  EmptyRows(list, 3, 2000);
  EXPECT_EQ(ListText(list), ">A|B");
  EmptyRows(list, 2, 1);
  EXPECT_EQ(ListText(list), ">A|B");
}

TEST_F(ListEditingTest, PastesLinesOverRows) {
  EXPECT_EQ(PasteRows(list, 2, "x\r\n$STOP\n"), 0);
  EXPECT_EQ(ListText(list), ">A|x|$STOP|D");
  EXPECT_EQ(list.TextColor(3), syntax_color::kSpecialCommand);
  EXPECT_EQ(PasteRows(list, 4, "y\n\nz"), 0);
  EXPECT_EQ(ListText(list), ">A|x|$STOP|y||z");
  list.Undo();
  EXPECT_EQ(ListText(list), ">A|x|$STOP|D");
}

TEST_F(ListEditingTest, PastingNothingChangesNothing) {
  EXPECT_EQ(PasteRows(list, 1, ""), 0);
  EXPECT_EQ(ListText(list), ">A|B|C|D");
  EXPECT_EQ(list.Undo(), 0);
}

TEST_F(ListEditingTest, ReportsHowManyPastedLinesDidNotFit) {
  EXPECT_EQ(PasteRows(list, 1023, "x\ny"), 0);
  EXPECT_EQ(PasteRows(list, 1023, "x\ny\nz"), 1);
  EXPECT_EQ(list.Text(1024), "y");
  EXPECT_EQ(PasteRows(list, 1023, "x\ny\n\nz\n\n"), 1);
  EXPECT_EQ(PasteRows(list, 1025, "x"), 1);
  EXPECT_EQ(PasteRows(list, 0, "x"), 1);
}

TEST_F(ListEditingTest, LinesInACellBecomeFurtherRows) {
  EXPECT_EQ(ReplaceRow(list, 2, "x\r\n$STOP\n\ny").last, 5);
  EXPECT_EQ(ListText(list), ">A|x|$STOP||y|C|D");
  list.Undo();
  EXPECT_EQ(ListText(list), ">A|B|C|D");
  EXPECT_EQ(ReplaceRow(list, 2, "x").last, 2);
  EXPECT_EQ(ReplaceRow(list, 3, "").last, 3);
  EXPECT_EQ(ListText(list), ">A|x||D");
  EXPECT_EQ(ReplaceRow(list, 6, "y\nz\n").last, 7);
  EXPECT_EQ(ListText(list), ">A|x||D||y|z");
}

TEST_F(ListEditingTest, LinesInACellPushNoRowOutOfTheList) {
  list.SetText(1022, "x");
  const PastedRows pasted = ReplaceRow(list, 2, "1\n2\n3\n4\n\n5");
  EXPECT_EQ(pasted.last, 4);
  EXPECT_EQ(pasted.left_out, 2);
  EXPECT_EQ(list.Text(1024), "x");
  EXPECT_EQ(list.Text(5), "C");
  EXPECT_EQ(ReplaceRow(list, 1024, "y\nz").left_out, 1);
  EXPECT_EQ(list.Text(1024), "y");
}

TEST(ListEditing, DuringARunLinesInACellMoveNoRow) {
  RunFlags run;
  CommandList list(&run);
  FillList(list, "A|B|C|D");
  run.ScriptRunning = 1;
  EXPECT_EQ(ReplaceRow(list, 2, "x\ny").last, 3);
  EXPECT_EQ(ListText(list), ">A|x|y|D");
}

TEST_F(ListEditingTest, InsertsRows) {
  EXPECT_TRUE(InsertRows(list, 2, 2));
  EXPECT_EQ(ListText(list), ">A|||B|C|D");
  list.Undo();
  EXPECT_EQ(ListText(list), ">A|B|C|D");
  EXPECT_TRUE(InsertRows(list, 5, 1));
  EXPECT_TRUE(InsertRows(list, 0, 1));
  EXPECT_TRUE(InsertRows(list, 1, 0));
  EXPECT_EQ(ListText(list), ">A|B|C|D");
}

TEST_F(ListEditingTest, InsertsNothingThatWouldPushTextOutOfTheList) {
  EXPECT_TRUE(InsertRows(list, 1, 1020));
  EXPECT_EQ(list.Text(1024), "D");
  EXPECT_FALSE(InsertRows(list, 1, 1));
  EXPECT_EQ(list.Text(1024), "D");
  EXPECT_FALSE(InsertRows(list, 1, 2000000000));
}

TEST_F(ListEditingTest, RemovesRows) {
  RemoveRows(list, 2, 3);
  EXPECT_EQ(ListText(list), ">A|D");
  list.Undo();
  EXPECT_EQ(ListText(list), ">A|B|C|D");
  RemoveRows(list, 3, 2000);
  EXPECT_EQ(ListText(list), ">A|B");
  RemoveRows(list, 3, 4);
  RemoveRows(list, 2, 1);
  EXPECT_EQ(ListText(list), ">A|B");
  RemoveRows(list, -5, 1);
  EXPECT_EQ(ListText(list), ">B");
}

TEST_F(ListEditingTest, InsertsLinesBeforeARow) {
  EXPECT_TRUE(InsertLines(list, 2, "x\r\ny\n"));
  EXPECT_EQ(ListText(list), ">A|x|y|B|C|D");
  list.Undo();
  EXPECT_EQ(ListText(list), ">A|B|C|D") << "one step of undo";
  EXPECT_TRUE(InsertLines(list, 6, "x"));
  EXPECT_EQ(ListText(list), ">A|B|C|D||x");
  list.SetText(kListRows, "Z");
  EXPECT_FALSE(InsertLines(list, 1, "x"));
}

TEST_F(ListEditingTest, DuplicatesRows) {
  EXPECT_TRUE(DuplicateRows(list, 2, 3));
  EXPECT_EQ(ListText(list), ">A|B|C|B|C|D");
  list.Undo();
  list.SetText(1023, "Z");
  EXPECT_FALSE(DuplicateRows(list, 1, 2));
}

TEST_F(ListEditingTest, MovesRows) {
  EXPECT_TRUE(MoveRows(list, 2, 3, -1));
  EXPECT_EQ(ListText(list), ">B|C|A|D");
  EXPECT_FALSE(MoveRows(list, 1, 2, -1));
  EXPECT_TRUE(MoveRows(list, 1, 2, 1));
  EXPECT_EQ(ListText(list), ">A|B|C|D");
  EXPECT_TRUE(MoveRows(list, 4, 4, 1));
  EXPECT_EQ(ListText(list), ">A|B|C||D");
  EXPECT_FALSE(MoveRows(list, kListRows, kListRows, 1));
  EXPECT_FALSE(MoveRows(list, 3, 2, 1));
  EXPECT_TRUE(MoveRows(list, 1, 2, 3));
  EXPECT_EQ(ListText(list), ">C||D|A|B");
  EXPECT_TRUE(MoveRows(list, 4, 5, -3));
  EXPECT_EQ(ListText(list), ">A|B|C||D");
  EXPECT_FALSE(MoveRows(list, 1, 2, 0));
}

TEST_F(ListEditingTest, TurnsRowsIntoCommentsAndBack) {
  FillList(list, "A|  B||'C");
  ToggleComments(list, 1, 4);
  EXPECT_EQ(ListText(list), ">'A|'  B||''C");
  ToggleComments(list, 1, 4);
  EXPECT_EQ(ListText(list), ">A|  B||'C");
  ToggleComments(list, 3, 4);
  EXPECT_EQ(list.Text(4), "C") << "empty rows do not count";
}

}  // namespace
}  // namespace kolvane::script
