#include "window/script_view.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHeaderView>
#include <QTimer>

#include "base/files.h"
#include "gui/pdf_content.h"
#include "script/ui/list_check.h"
#include "window/grid_fixture.h"

namespace kolvane::window {
namespace {

/// The terminal window with a list for the commands of its menu Extras.
class ListCommandsTest : public GridFixture {
 protected:
  script::FindingsList* Findings() { return Find<script::FindingsList>("FindingsList"); }
  QStringList Shown() {
    QStringList shown;
    for (int i = 0; i < Findings()->topLevelItemCount(); ++i) {
      const QTreeWidgetItem* item = Findings()->topLevelItem(i);
      shown << item->text(0) + " " + item->text(1);
    }
    return shown;
  }
  int Finding(int row) { return CellData(row, script::CommandListModel::kFindingRole).toInt(); }
  int Indent(int row) { return CellData(row, script::CommandListModel::kIndentRole).toInt(); }
  void WaitForTheCheck(const QStringList& expected) {
    while (Shown() != expected) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  void SelectRows(int first, int last) {
    GoTo(first);
    Grid()->selectionModel()->select(
        QItemSelection(Grid()->model()->index(first - 1, 0), Grid()->model()->index(last - 1, 1)),
        QItemSelectionModel::ClearAndSelect);
  }
  QString Rows(int last) {
    QStringList rows;
    for (int row = 1; row <= last; ++row) rows << Row(row);
    return rows.join('|');
  }
};

TEST_F(ListCommandsTest, ANewListThatWasSavedCanBeOpenedFromTheMenu) {
  Fill({"eins"});
  ChooseFile(folder_.Path("a.CMD"));
  Press("mnuSaveCommandFile");
  OpenOnlyRecentList();
  EXPECT_EQ(Row(1), "eins");
}

TEST_F(ListCommandsTest, ThePrintOfTheListHasItsRows) {
  const auto characters = [this](const char* name) {
    ChooseFile(folder_.Path(name));
    Press("TB_PRINTSCRIPT");
    return gui::PdfContent(base::ReadBytes(folder_.Path(name))).count("Tj");
  };
  Fill({"eins"});
  const auto of_one = characters("one.PDF");
  Fill({"eins", "zwei", "drei"});
  EXPECT_EQ(characters("three.PDF"), of_one + 8);
}

TEST_F(ListCommandsTest, UndoGoesToTheFirstRowThatItChanges) {
  Fill({"eins"});
  GoTo(5);
  Grid()->undo();
  EXPECT_EQ(CurrentRow(), 1);
  GoTo(5);
  Grid()->redo();
  EXPECT_EQ(CurrentRow(), 1);
}

TEST_F(ListCommandsTest, RowsHaveTheHeightOfTheirFont) {
  const int height = Grid()->rowHeight(0);
  QFont large = Grid()->font();
  large.setPointSize(2 * large.pointSize());
  Grid()->setFont(large);
  EXPECT_GE(Grid()->rowHeight(0), QFontMetrics(large).height());
  EXPECT_GT(Grid()->rowHeight(0), height);
}

TEST_F(ListCommandsTest, NothingIsCheckedUntilRequested) {
  Fill({"$NIX", "$REPEAT 2", "A", "$ENDREPEAT"});
  EXPECT_FALSE(Findings()->isVisible());
  EXPECT_EQ(Finding(1), 0);
  EXPECT_EQ(Indent(3), 0);
}

TEST_F(ListCommandsTest, LongFindingsAreShownInSeveralLines) {
  Fill({"$REPEAT", "$ELSE"});
  Press("mnuCheckList");
  const auto height = [this](int at) {
    QApplication::processEvents();
    return Findings()->visualItemRect(Findings()->topLevelItem(at)).height();
  };
  window_.resize(3000, 600);
  EXPECT_EQ(height(1), height(0));
  window_.resize(700, 600);
  EXPECT_GT(height(1), height(0)) << "narrower than its text";
}

TEST_F(ListCommandsTest, TheCheckMarksRowsAndListsWhatItFinds) {
  Fill({"A", "$NIX", "$REPEAT 2", "B", "$STOP now"});
  GoTo(1);
  Press("mnuCheckList");
  EXPECT_TRUE(Findings()->isVisible());
  EXPECT_EQ(Shown(), QStringList({"2 Fehler", "3 Hinweis", "5 Hinweis"}));
  EXPECT_EQ(Findings()->columnCount(), 3);
  const QTreeWidgetItem* header = Findings()->headerItem();
  EXPECT_EQ(header->text(2), QStringLiteral("Meldung (Fehler: 1, Hinweise: 2)"));
  EXPECT_EQ(header->toolTip(2), header->text(2)) << "a narrow list cuts it";
  EXPECT_EQ(CurrentRow(), 2) << "the first finding";
  EXPECT_EQ(Finding(1), 0);
  EXPECT_EQ(Finding(2), 2);
  EXPECT_EQ(Finding(5), 1);
  EXPECT_TRUE(CellData(2, Qt::ToolTipRole).toString().contains("Fehler: "));
  EXPECT_TRUE(Grid()->accessibleDescription().startsWith("Zeile 2: Fehler: "));
  EXPECT_EQ(Indent(4), 1);
  EXPECT_EQ(Row(4), "B") << "shown, never stored";
}

TEST_F(ListCommandsTest, AFindingLeadsToItsRow) {
  Fill({"$NIX", "A", "$AUCHNIX"});
  Press("mnuCheckList");
  QTest::keyClick(Findings(), Qt::Key_Down);
  EXPECT_EQ(CurrentRow(), 3);
}

TEST_F(ListCommandsTest, TheCheckFollowsChanges) {
  Fill({"A", "B"});
  Press("mnuCheckList");
  EXPECT_EQ(Shown(), QStringList());
  Grid()->list().SetText(2, "$NIX");
  WaitForTheCheck({"2 Fehler"});
  Grid()->list().SetText(2, "B");
  WaitForTheCheck({});
  for (const auto* check : Grid()->findChildren<script::ListCheck*>())
    EXPECT_FALSE(check->findChild<QTimer*>()->isActive()) << "nothing runs while the list does not change";
}

TEST_F(ListCommandsTest, EscEndsTheCheck) {
  Fill({"$NIX"});
  Press("mnuCheckList");
  QTest::keyClick(Findings(), Qt::Key_Escape);
  EXPECT_FALSE(Findings()->isVisible());
  EXPECT_EQ(Finding(1), 0);
}

TEST_F(ListCommandsTest, TheFindingsLeaveTheCurrentRowInView) {
  Fill(QStringList(100, "A"));
  GoTo(1);
  const int rows_in_view = Grid()->viewport()->height() / Grid()->rowHeight(0);
  GoTo(rows_in_view);
  Press("mnuCheckList");
  QApplication::processEvents();
  EXPECT_LT(Grid()->viewport()->height() / Grid()->rowHeight(0), rows_in_view);
  EXPECT_TRUE(Grid()->viewport()->rect().contains(Grid()->visualRect(Grid()->currentIndex())));
}

TEST_F(ListCommandsTest, TheCheckStartsWithTheStateOfEarlierRuns) {
  Fill({"$GETPARAM 1"});
  Press("mnuCheckList");
  EXPECT_EQ(Shown(), QStringList({"1 Fehler"}));
  script_.interpreter.ParamList = {"a"};
  Press("mnuCheckList");
  EXPECT_EQ(Shown(), QStringList());
}

TEST_F(ListCommandsTest, RowsAreNumbered) {
  EXPECT_TRUE(Grid()->verticalHeader()->isVisible());
  EXPECT_EQ(Grid()->model()->headerData(11, Qt::Vertical), 12);
  EXPECT_GT(Grid()->verticalHeader()->width(),
            Grid()->fontMetrics().horizontalAdvance(QStringLiteral("1024")));
  EXPECT_EQ(Grid()->verticalHeader()->defaultAlignment(), Qt::AlignRight | Qt::AlignVCenter);
}

TEST_F(ListCommandsTest, TheSelectedRowsAreDuplicatedAndMoved) {
  Fill({"A", "B", "C"});
  SelectRows(1, 2);
  Press("mnuDuplicateRow");
  EXPECT_EQ(Rows(6), "A|B|A|B|C|");
  EXPECT_EQ(Grid()->SelectedRows().first, 3);
  EXPECT_EQ(Grid()->SelectedRows().last, 4);
  Press("mnuMoveDown");
  EXPECT_EQ(Rows(5), "A|B|C|A|B");
  Press("mnuMoveUp");
  Press("mnuMoveUp");
  EXPECT_EQ(Rows(5), "A|A|B|B|C");
  EXPECT_EQ(Grid()->SelectedRows().first, 2);
  EXPECT_EQ(Grid()->SelectedRows().last, 3);
}

TEST_F(ListCommandsTest, TheSelectedRowsBecomeComments) {
  Fill({"A", "B", "C"});
  SelectRows(2, 3);
  Press("mnuToggleComment");
  EXPECT_EQ(Rows(3), "A|'B|'C");
  Press("mnuToggleComment");
  EXPECT_EQ(Rows(3), "A|B|C");
}

TEST_F(ListCommandsTest, ClipboardLinesAreInsertedAsRows) {
  Fill({"A", "B"});
  GoTo(2);
  QApplication::clipboard()->setText("x\ny");
  QTest::keyClick(Grid(), Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Rows(4), "A|x|y|B");
}

TEST_F(ListCommandsTest, PastingAndInsertingStartAtTheFirstSelectedRow) {
  Fill({"A", "B", "C", "D"});
  QApplication::clipboard()->setText("x\ny");
  const auto select_down = [this] {
    GoTo(2);
    QTest::keyClick(Grid(), Qt::Key_Down, Qt::ShiftModifier);
  };
  select_down();
  Grid()->paste();
  EXPECT_EQ(Rows(4), "A|x|y|D");
  select_down();
  Grid()->insertPaste();
  EXPECT_EQ(Rows(6), "A|x|y|x|y|D");
  select_down();
  Grid()->insertRow();
  EXPECT_EQ(Rows(4), "A||x|y");
}

TEST_F(ListCommandsTest, NothingMovesWhileAListRuns) {
  Fill({"A", "B"});
  SelectRows(1, 1);
  script_.run.ScriptRunning = 1;
  Grid()->duplicateRows();
  Grid()->moveRowsDown();
  Grid()->toggleComments();
  Grid()->insertPaste();
  script_.run.ScriptRunning = 0;
  EXPECT_EQ(Rows(3), "A|B|");
}

TEST_F(ListCommandsTest, DollarWordsAreCompletedWhileTheyAreTyped) {
  GoTo(1);
  QLineEdit* editor = StartTyping("$REPE");
  ASSERT_NE(editor, nullptr);
  auto* completer = editor->findChild<QCompleter*>();
  ASSERT_NE(completer, nullptr);
  ASSERT_TRUE(completer->popup()->isVisible());
  EXPECT_EQ(completer->popup()->model()->index(0, 0).data().toString(), "$REPEAT n");
  QTest::keyClick(completer->popup(), Qt::Key_Down);
  QTest::keyClick(completer->popup(), Qt::Key_Return);
  EXPECT_EQ(editor->text(), "$REPEAT ");
  EXPECT_FALSE(completer->popup()->isVisible());
}

TEST_F(ListCommandsTest, EnterAcceptsTheRowIfNoCompletionWasChosen) {
  GoTo(1);
  QLineEdit* editor = StartTyping("$REP");
  ASSERT_NE(editor, nullptr);
  auto* popup = editor->findChild<QCompleter*>()->popup();
  ASSERT_TRUE(popup->isVisible());
  QTest::keyClick(popup, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(Row(1), "$REP");
  EXPECT_EQ(CurrentRow(), 2);
}

}  // namespace
}  // namespace kolvane::window
