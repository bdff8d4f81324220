#include "script/ui/watch_panel.h"

#include <QSignalSpy>

#include "window/grid_fixture.h"

namespace kolvane::window {
namespace {

/// The terminal window with a list that is run in parts.
class DebugCommandsTest : public GridFixture {
 protected:
  DebugCommandsTest() { Fill({"$REPEAT 2", "$CLEAR", "$ENDREPEAT", "$STOP"}); }

  script::WatchPanel* Watch() { return Find<script::WatchPanel>("WatchPanel"); }
  QVariant HeaderData(int row, int role) { return Grid()->model()->index(row - 1, 0).data(role); }
  int HeaderMarks(int row) { return HeaderData(row, script::CommandListModel::kMarkRole).toInt(); }
  QPoint HeaderCenter(int row) { return Grid()->visualRect(Grid()->model()->index(row - 1, 0)).center(); }
};

TEST_F(DebugCommandsTest, F9SetsAndRemovesABreakpoint) {
  GoTo(2);
  Press("mnuBreakpoint");
  EXPECT_EQ(HeaderMarks(2), script::CommandListModel::kBreakpointMark);
  EXPECT_EQ(HeaderData(2, Qt::AccessibleTextRole).toString(), "Haltepunkt");
  const auto shown = [this] { return Grid()->viewport()->grab().toImage().pixelColor(HeaderCenter(2)); };
  EXPECT_EQ(shown(), QColor(200, 30, 30));
  Press("mnuBreakpoint");
  EXPECT_EQ(HeaderMarks(2), 0);
  EXPECT_NE(shown(), QColor(200, 30, 30));
}

TEST_F(DebugCommandsTest, ABreakpointIsPaintedAtOnce) {
  GoTo(2);
  const QSignalSpy changes(Grid()->model(), &QAbstractItemModel::dataChanged);
  Press("mnuBreakpoint");
  ASSERT_FALSE(changes.isEmpty());
  EXPECT_EQ(changes.last().at(0).toModelIndex().column(), script::CommandListModel::kMarkerColumn);
}

TEST_F(DebugCommandsTest, StoppingAnInterruptedRunClosesTheWatch) {
  GoTo(2);
  Press("mnuBreakpoint");
  Press("TB_PLAY");
  ASSERT_TRUE(Watch()->isVisible());
  Press("TB_STOP");
  EXPECT_FALSE(Watch()->isVisible());
}

TEST_F(DebugCommandsTest, AClickIntoTheFirstColumnDoesTheSame) {
  QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, Qt::NoModifier, HeaderCenter(3));
  EXPECT_TRUE(Grid()->list().HasBreakpoint(3));
  EXPECT_EQ(CurrentRow(), 3);
  QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, Qt::ShiftModifier, HeaderCenter(3));
  EXPECT_TRUE(Grid()->list().HasBreakpoint(3)) << "the first column marks rows";
  QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, Qt::NoModifier, HeaderCenter(3));
  EXPECT_FALSE(Grid()->list().HasBreakpoint(3));
}

TEST_F(DebugCommandsTest, AnInterruptedRunShowsItsState) {
  GoTo(2);
  Press("mnuBreakpoint");
  EXPECT_FALSE(Watch()->isVisible());
  Press("TB_PLAY");
  EXPECT_EQ(CurrentRow(), 2);
  ASSERT_TRUE(Watch()->isVisible());
  QApplication::processEvents();
  EXPECT_EQ(Watch()->geometry().left(), Grid()->geometry().left());
  EXPECT_GT(Watch()->geometry().top(), Grid()->geometry().bottom());
  EXPECT_EQ(HeaderMarks(2),
            script::CommandListModel::kBreakpointMark | script::CommandListModel::kRunningMark);
  const auto loops = Watch()->findItems("Schleifen", Qt::MatchExactly);
  ASSERT_EQ(loops.size(), 1);
  ASSERT_EQ(loops.front()->childCount(), 1);
  EXPECT_EQ(loops.front()->child(0)->text(1), "1 von 3");
  loops.front()->setExpanded(true);
  Press("mnuPlayFromRow");
  const auto again = Watch()->findItems("Schleifen", Qt::MatchExactly);
  EXPECT_EQ(again.front()->child(0)->text(1), "2 von 3");
  EXPECT_TRUE(again.front()->isExpanded());
  GoTo(2);
  Press("mnuBreakpoint");
  Press("mnuPlayFromRow");
  EXPECT_FALSE(Watch()->isVisible()) << "the run has ended";
}

TEST_F(DebugCommandsTest, EscClosesTheWatchUntilTheNextBreakpoint) {
  GoTo(2);
  Press("mnuBreakpoint");
  Press("TB_PLAY");
  ASSERT_TRUE(Watch()->isVisible());
  QTest::keyClick(Watch(), Qt::Key_Escape);
  EXPECT_FALSE(Watch()->isVisible());
  Press("TB_SINGLESTEP");
  EXPECT_EQ(CurrentRow(), 3);
  EXPECT_FALSE(Watch()->isVisible());
  Press("mnuPlayFromRow");
  EXPECT_EQ(CurrentRow(), 2);
  EXPECT_TRUE(Watch()->isVisible());
}

TEST_F(DebugCommandsTest, StepsDoNotShowTheWatch) {
  GoTo(1);
  Press("TB_SINGLESTEP");
  EXPECT_FALSE(Watch()->isVisible());
}

TEST_F(DebugCommandsTest, ARunGoesUpToTheSelectedRow) {
  GoTo(4);
  Press("mnuRunToRow");
  EXPECT_EQ(CurrentRow(), 4);
  EXPECT_EQ(HeaderMarks(4), script::CommandListModel::kRunningMark);
  EXPECT_TRUE(Watch()->isVisible());
  QTest::keyClick(Watch(), Qt::Key_Escape);
  EXPECT_FALSE(Watch()->isVisible());
}

TEST_F(DebugCommandsTest, TheRowThatFailedShowsWhy) {
  Fill({"$CLEAR", "$NIX"});
  gui::BoxAnswers boxes;
  boxes.Start();
  Press("TB_PLAY");
  EXPECT_EQ(HeaderMarks(2), script::CommandListModel::kErrorMark);
  EXPECT_EQ(HeaderData(2, Qt::ToolTipRole).toString(), "Fehler: Unbekannter $ Befehl");
  EXPECT_TRUE(CellData(2, Qt::ToolTipRole).toString().endsWith("Unbekannter $ Befehl"));
}

// A run that has ended leaves its position behind the list, the cursor in the row executed last.
TEST_F(DebugCommandsTest, AfterARunTheRowUnderTheCursorIsPlayedFrom) {
  Fill({"' Kopf", "$SPLITPARAMS", "$STOP", "' Ende"});
  Press("TB_PLAY");
  ASSERT_EQ(CurrentRow(), 3);
  script_.interpreter.ParamList.clear();
  Grid()->list().SetText(3, "$SPLITPARAMS");
  Press("mnuPlayFromRow");
  EXPECT_FALSE(script_.interpreter.ParamList.empty());
}

TEST_F(DebugCommandsTest, TheRowWhereTheCursorAlreadyIsCanBeChosenForAStep) {
  const auto highlighted = [this](int row) { return Grid()->list().HighlightOf(row) != nullptr; };
  const auto run_first_row_only = [this] {
    Fill({"$STOP", "' Ende"});
    Press("TB_PLAY");
    ASSERT_EQ(CurrentRow(), 1);
  };
  run_first_row_only();
  Grid()->list().SetText(1, "' Kopf");
  GoTo(1);
  Press("TB_SINGLESTEP");
  EXPECT_TRUE(highlighted(2)) << "chosen by a search or a program";
  run_first_row_only();
  Grid()->list().SetText(1, "' Kopf");
  QTest::keyClick(Grid(), Qt::Key_Home, Qt::ControlModifier);
  Press("TB_SINGLESTEP");
  EXPECT_TRUE(highlighted(2)) << "chosen by a key";
}

}  // namespace
}  // namespace kolvane::window
