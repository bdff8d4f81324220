#include "values/ui/values_table.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "gui/paint_counter.h"
#include "gui/pixels.h"
#include "values/filled_store.h"
#include "values/ui/values_model.h"

namespace kolvane::values {
namespace {

class ValuesTableTest : public testing::Test {
 protected:
  void SetUp() override {
    table_.setModel(&model_);
    table_.resize(500, 300);
    table_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&table_));
  }

  void Fill(int rows) {
    for (int i = 0; i < rows; ++i)
      i % 2 == 0 ? Add(store_, "A?", {1.5 * i, -1}) : Add(store_, "B?", {1.0 * i});
    model_.ShowRows(store_.rows());
  }
  QString Cell(int row, int column) { return model_.index(row, column).data().toString(); }
  QScrollBar& bar() { return *table_.verticalScrollBar(); }
  bool IsAtEnd() { return bar().value() == bar().maximum(); }
  void Click(int row, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(table_.viewport(), Qt::LeftButton, modifiers,
                      table_.visualRect(model_.index(row, 1)).center());
  }
  void Drag(const QPoint& to) {
    QMouseEvent move(QEvent::MouseMove, to, table_.viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     {});
    QApplication::sendEvent(table_.viewport(), &move);
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&table_, key, modifiers); }

  Store store_;
  ValuesModel model_{store_, ",", nullptr};
  ValuesTable table_;
};

TEST_F(ValuesTableTest, HasAColumnForEachField) {
  EXPECT_EQ(model_.columnCount(), 2);
  Fill(2);
  EXPECT_EQ(model_.columnCount(), 4);
  EXPECT_EQ(model_.rowCount(), 2);
  QStringList heads;
  for (int column = 0; column < 4; ++column) heads << model_.headerData(column, Qt::Horizontal).toString();
  EXPECT_EQ(heads, (QStringList{"Zeit", "Befehl", "Feld 1", "Feld 2"}));
  Add(store_, "C?", {1, 2, 3});
  model_.ShowRows(3);
  EXPECT_EQ(model_.columnCount(), 5);
  EXPECT_EQ(table_.header()->sectionSize(4), table_.header()->sectionSize(3));
}

TEST_F(ValuesTableTest, ShowsTimeCommandAndNumbers) {
  qputenv("TZ", "UTC");
  tzset();
  Fill(3);
  EXPECT_EQ(Cell(2, 0), "12:00:02.000");
  EXPECT_EQ(model_.index(2, 0).data(Qt::ToolTipRole).toString(), "2026-11-21 12:00:02.000");
  qunsetenv("TZ");
  tzset();
  EXPECT_EQ(Cell(2, 1), "A?");
  EXPECT_EQ(Cell(1, 2), "1");
  EXPECT_EQ(Cell(1, 3), "");
  EXPECT_EQ(Cell(2, 2), "3");
  EXPECT_EQ(Cell(0, 3), "-1");
}

TEST_F(ValuesTableTest, ShowsOnlyTheGivenRows) {
  Fill(10);
  Add(store_, "A?", {1});
  EXPECT_EQ(model_.rowCount(), 10);
  store_.Clear();
  model_.ShowRows(0);
  EXPECT_EQ(model_.rowCount(), 0);
  EXPECT_EQ(model_.columnCount(), 2);
}

TEST_F(ValuesTableTest, StartsAgainAfterClearEvenWithMoreRowsThanBefore) {
  Fill(3);
  QSignalSpy reset(&model_, &QAbstractItemModel::modelReset);
  store_.Clear();
  for (int i = 0; i < 5; ++i) Add(store_, "C?", {7});
  model_.ShowRows(5);
  EXPECT_EQ(reset.size(), 1);
  EXPECT_EQ(Cell(0, 1), "C?");
  EXPECT_EQ(model_.columnCount(), 3);
}

TEST_F(ValuesTableTest, FollowsTheEndWhenScrolledThere) {
  Fill(1000);
  EXPECT_TRUE(IsAtEnd());
  Fill(1000);
  EXPECT_TRUE(IsAtEnd());
  bar().setValue(10);
  Fill(1000);
  EXPECT_EQ(bar().value(), 10);
  bar().setValue(bar().maximum());
  table_.resize(500, 200);
  EXPECT_TRUE(IsAtEnd());
}

TEST_F(ValuesTableTest, ShowsItsLastRowWhole) {
  Fill(1000);
  const QRect last = table_.visualRect(model_.index(999, 0));
  EXPECT_LE(last.bottom(), table_.viewport()->height());
  EXPECT_GE(last.top(), 0);
}

TEST_F(ValuesTableTest, SelectsRowsByMouse) {
  Fill(1000);
  bar().setValue(100);
  Click(102);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{102, 103}}));
  Click(105, Qt::ShiftModifier);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{102, 106}}));
  Click(108, Qt::ControlModifier);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{102, 106}, {108, 109}}));
  Click(103, Qt::ControlModifier);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{102, 103}, {104, 106}, {108, 109}}));
  bar().setValue(bar().maximum());
  Click(999);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{999, 1000}}));
}

TEST_F(ValuesTableTest, SelectsByDragging) {
  Fill(1000);
  bar().setValue(100);
  const QPoint from = table_.visualRect(model_.index(101, 1)).center();
  const QRect to = table_.visualRect(model_.index(104, 2));
  QTest::mousePress(table_.viewport(), Qt::LeftButton, {}, from);
  Drag(to.center());
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{101, 105}}));
  QTest::mouseRelease(table_.viewport(), Qt::LeftButton, {}, to.center());
}

TEST_F(ValuesTableTest, SelectsFromARowThatHasLeftTheView) {
  Fill(1000);
  bar().setValue(100);
  const QPoint top_left = table_.visualRect(model_.index(100, 1)).topLeft();
  QTest::mousePress(table_.viewport(), Qt::LeftButton, {}, {top_left.x(), 0});
  bar().setValue(103);
  Drag(table_.visualRect(model_.index(104, 1)).center());
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{100, 105}}));
}

TEST_F(ValuesTableTest, WithoutACurrentRowKeysStartWithTheFirstInView) {
  Fill(1000);
  table_.setFocus();
  const auto selected_by = [this](Qt::Key key) {
    table_.selectionModel()->clear();
    bar().setValue(100);
    Key(key);
    return table_.SelectedRows();
  };
  EXPECT_EQ(selected_by(Qt::Key_Down), (RowRanges{{100, 101}}));
  EXPECT_EQ(selected_by(Qt::Key_End), (RowRanges{{999, 1000}}));
}

TEST_F(ValuesTableTest, SelectsRowsByKeys) {
  Fill(1000);
  table_.setFocus();
  Key(Qt::Key_Home);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{0, 1}}));
  Key(Qt::Key_Down);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{1, 2}}));
  EXPECT_EQ(table_.currentIndex().column(), 0);
  Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{1, 3}}));
  Key(Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{1, 1000}}));
  EXPECT_TRUE(IsAtEnd());
  Key(Qt::Key_PageUp);
  EXPECT_LT(table_.currentIndex().row(), 999);
  Key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{0, 1000}}));
}

TEST_F(ValuesTableTest, DoesNotSearchForTypedText) {
  Fill(100);
  table_.setFocus();
  Key(Qt::Key_Home);
  QTest::keyClicks(&table_, "b");
  EXPECT_EQ(table_.currentIndex().row(), 0);
}

TEST_F(ValuesTableTest, SelectsARangeAndShowsIt) {
  Fill(1000);
  QSignalSpy changed(&table_, &ValuesTable::SelectedRowsChanged);
  table_.SelectRange(500, 600);
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{500, 600}}));
  EXPECT_GE(changed.size(), 1);
  EXPECT_EQ(bar().value(), 500);
  table_.SelectRange(3, 3);
  EXPECT_EQ(table_.SelectedRows(), RowRanges{});
}

TEST_F(ValuesTableTest, KeepsTheSelectionWhenRowsAndFieldsAreAdded) {
  Fill(10);
  table_.SelectRange(2, 4);
  Add(store_, "C?", {1, 2, 3, 4});
  model_.ShowRows(store_.rows());
  EXPECT_EQ(table_.SelectedRows(), (RowRanges{{2, 4}}));
}

TEST_F(ValuesTableTest, FindsTheCellAtAPosition) {
  Fill(1000);
  bar().setValue(200);
  for (const int row : {200, 203}) {
    for (int column = 0; column < 3; ++column) {
      const QModelIndex index = model_.index(row, column);
      EXPECT_EQ(table_.indexAt(table_.visualRect(index).center()), index);
    }
  }
  EXPECT_EQ(table_.indexAt({2, 5}).row(), 200);
  EXPECT_FALSE(ValuesTable().indexAt({2, 5}).isValid());
}

TEST_F(ValuesTableTest, ScrollsToTheColumnOfTheCurrentCell) {
  Add(store_, "C?", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
  model_.ShowRows(1);
  table_.setFocus();
  Key(Qt::Key_Home);
  for (int i = 0; i < 11; ++i) Key(Qt::Key_Right);
  const QRect cell = table_.visualRect(table_.currentIndex());
  EXPECT_EQ(table_.currentIndex().column(), 11);
  EXPECT_LE(cell.right(), table_.viewport()->width());
  EXPECT_GT(table_.horizontalScrollBar()->value(), 0);
  for (int i = 0; i < 11; ++i) Key(Qt::Key_Left);
  EXPECT_EQ(table_.horizontalScrollBar()->value(), 0);
}

TEST_F(ValuesTableTest, FitsAColumnToTheVisibleRows) {
  Add(store_, "A command that is much longer than its column is wide", {1});
  model_.ShowRows(1);
  Q_EMIT table_.header()->sectionHandleDoubleClicked(1);
  EXPECT_GT(table_.header()->sectionSize(1), 200);
  Fill(100);
  bar().setValue(bar().maximum());
  Q_EMIT table_.header()->sectionHandleDoubleClicked(1);
  EXPECT_LT(table_.header()->sectionSize(1), 100) << "the long one is not visible";
  Add(store_, "Another that is much longer than its column is wide", {1});
  bar().setValue(1);
  model_.ShowRows(store_.rows());
  Q_EMIT table_.header()->sectionHandleDoubleClicked(1);
  EXPECT_LT(table_.header()->sectionSize(1), 100);
}

TEST_F(ValuesTableTest, CopiesRowsAsTabbedText) {
  qputenv("TZ", "UTC");
  tzset();
  Fill(4);
  EXPECT_EQ(model_.Text({{1, 3}}), "2026-11-21 12:00:01,000\tB?\t1\t\n2026-11-21 12:00:02,000\tA?\t3\t-1\n");
  EXPECT_EQ(ValuesModel(store_, ".", nullptr).Text({{0, 1}}), "2026-11-21 12:00:00.000\tA?\t0\t-1\n");
  qunsetenv("TZ");
  tzset();
}

TEST_F(ValuesTableTest, IsReadableThroughAccessibility) {
  Fill(100);
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&table_);
  ASSERT_NE(accessible, nullptr);
  EXPECT_EQ(accessible->role(), QAccessible::Table);
  EXPECT_EQ(accessible->text(QAccessible::Name), "Messwerte");
  table_.setCurrentIndex(model_.index(1, 0));
  EXPECT_EQ(accessible->text(QAccessible::Value), "Zeile 2, " + Cell(1, 0) + ", B?, 1");
}

TEST_F(ValuesTableTest, PaintsNumbersBesideItsRows) {
  Fill(1000);
  const QImage before = table_.grab().toImage();
  bar().setValue(0);
  EXPECT_NE(table_.grab().toImage(), before);
}

TEST_F(ValuesTableTest, PaintsEachCell) {
  Fill(1);
  const QImage picture = table_.viewport()->grab().toImage();
  for (int column = 0; column < model_.columnCount(); ++column) {
    const QRect cell = table_.visualRect(model_.index(0, column)) & picture.rect();
    const int blank = gui::Pixels(picture, cell, table_.palette().color(QPalette::Base));
    EXPECT_LT(blank, cell.width() * cell.height()) << column;
  }
}

TEST_F(ValuesTableTest, PaintsNoNumbersBelowItsRows) {
  Fill(1);
  const int left = table_.viewport()->x();
  const QImage picture = table_.grab().toImage();
  const auto ink = [&](int row) {
    const QRect cell = table_.visualRect(model_.index(0, 0)).translated(left, table_.viewport()->y());
    const QRect number(left, cell.y() + row * cell.height(), cell.x() - left, cell.height());
    return number.width() * number.height() -
           gui::Pixels(picture, number, table_.palette().color(QPalette::Button));
  };
  EXPECT_GT(ink(0), 0);
  EXPECT_EQ(ink(1), 0);
}

TEST_F(ValuesTableTest, RowsArePaintedAgainWhenTheyAreSelected) {
  Fill(3);
  QApplication::processEvents();
  gui::PaintCounter counter;
  table_.viewport()->installEventFilter(&counter);
  table_.selectionModel()->select(model_.index(0, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
  EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints > 0; }));
}

}  // namespace
}  // namespace kolvane::values
