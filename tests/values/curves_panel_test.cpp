#include "values/ui/curves_panel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QColorDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include "values/filled_store.h"
#include "values/ui/plot_painter.h"

namespace kolvane::values {
namespace {

class CurvesPanelTest : public testing::Test {
 protected:
  void SetUp() override {
    for (int i = 1; i <= 4; ++i) Add(store_, "A?", {1.0 * i, 10.0 * i});
    Add(store_, "B?", {7});
    model_.Refresh();
    model_.SetRanges({{0, 5}});
    panel_.resize(700, 200);
    panel_.show();
    panel_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel_));
  }

  QTableView& table() { return *panel_.table(); }
  QString Row(int row) {
    QStringList cells;
    for (int column = 0; column < CurvesModel::kColumns; ++column)
      cells << model_.index(row, column).data().toString();
    return cells.join(" | ");
  }
  bool IsChecked(int row) { return model_.index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked; }
  QAction* Action(const char* name) { return panel_.findChild<QAction*>(QLatin1String(name)); }
  void Select(std::initializer_list<int> rows) {
    table().clearSelection();
    for (const int row : rows) {
      table().selectionModel()->setCurrentIndex(model_.index(row, 0),
                                                QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    table().setFocus();
  }

  Store store_;
  CurveList curves_{store_};
  CurvesModel model_{store_, curves_, ",", nullptr};
  CurvesPanel panel_{model_};
};

TEST_F(CurvesPanelTest, ShowsStatistics) {
  ASSERT_EQ(model_.rowCount(), 3);
  EXPECT_EQ(Row(0), "A? [1] |  | 4 | 1 | 4 | 2,5 | 1,291");
  EXPECT_EQ(Row(1), "A? [2] |  | 4 | 10 | 40 | 25 | 12,91");
  EXPECT_EQ(Row(2), "B? |  | 1 | 7 | 7 | 7 | ");
  EXPECT_EQ(model_.index(0, CurvesModel::kCount).data(Qt::TextAlignmentRole),
            QVariant(Qt::AlignRight | Qt::AlignVCenter));
  const QSignalSpy changes(&model_, &QAbstractItemModel::dataChanged);
  model_.SetRanges({{1, 2}, {3, 4}});
  ASSERT_EQ(changes.size(), 1);
  EXPECT_EQ(changes[0][0].toModelIndex(), model_.index(0, CurvesModel::kCount));
  EXPECT_EQ(changes[0][1].toModelIndex(), model_.index(2, CurvesModel::kDeviation));
  EXPECT_EQ(Row(0), "A? [1] |  | 2 | 2 | 4 | 3 | 1,4142");
  EXPECT_EQ(Row(2), "B? |  | 0 |  |  |  | ");
}

TEST_F(CurvesPanelTest, ASmallDeviationFitsItsColumnAndIsWholeInTheToolTip) {
  store_.Clear();
  for (int i = 0; i < 4; ++i) Add(store_, "A?", {5 + i * 0.0001234});
  model_.Refresh();
  model_.SetRanges({{0, 4}});
  const QModelIndex cell = model_.index(0, CurvesModel::kDeviation);
  EXPECT_EQ(cell.data(), "0,00015931");
  EXPECT_EQ(cell.data(Qt::ToolTipRole), "0,000159308715");
  EXPECT_LE(table().sizeHintForIndex(cell).width(), table().columnWidth(CurvesModel::kDeviation));
}

TEST_F(CurvesPanelTest, ShowsTheValueAtTheCursor) {
  model_.SetCursor(PlotRows(store_, 5, Axis::kTime), 2.2);
  EXPECT_EQ(model_.index(0, CurvesModel::kValue).data(), "3");
  EXPECT_EQ(model_.index(2, CurvesModel::kValue).data(), "7");
  model_.SetCursor(PlotRows(store_, 5, Axis::kTime), std::nullopt);
  EXPECT_EQ(model_.index(0, CurvesModel::kValue).data(), "");
}

TEST_F(CurvesPanelTest, TabDoesNotGoFromCellToCell) {
  Select({0});
  QTest::keyClick(&table(), Qt::Key_Tab);
  EXPECT_EQ(table().currentIndex(), model_.index(0, 0));
}

TEST_F(CurvesPanelTest, NamesItsColumns) {
  QStringList heads;
  for (int column = 0; column < CurvesModel::kColumns; ++column)
    heads << model_.headerData(column, Qt::Horizontal).toString();
  EXPECT_EQ(heads,
            (QStringList{"Kurve", "Wert", "Anzahl", "Minimum", "Maximum", "Mittelwert", "Standardabw."}));
}

TEST_F(CurvesPanelTest, ANameHasItsColorBeforeIt) {
  const QModelIndex name = model_.index(0, CurvesModel::kName);
  const QImage cell = table().viewport()->grab(table().visualRect(name)).toImage();
  const QColor color = name.data(Qt::DecorationRole).value<QColor>();
  const QRgb background = cell.pixel(cell.width() - 3, 3);
  int last_of_color = -1;
  int last_of_text = -1;
  for (int x = 0; x < cell.width() - 3; ++x) {
    for (int y = 3; y < cell.height() - 3; ++y) {
      if (cell.pixelColor(x, y) == color) last_of_color = x;
      if (cell.pixel(x, y) != background) last_of_text = x;
    }
  }
  EXPECT_GE(last_of_color, 0);
  EXPECT_GT(last_of_text, last_of_color + 5);
}

TEST_F(CurvesPanelTest, FitsItsColumnsAtFirstAndToAnotherFont) {
  const auto widths = [this] {
    std::vector<int> all;
    for (int column = 0; column < CurvesModel::kColumns; ++column) all.push_back(table().columnWidth(column));
    return all;
  };
  const std::vector<int> first = widths();
  const QFontMetrics metrics = table().fontMetrics();
  EXPECT_GE(first[CurvesModel::kValue], metrics.horizontalAdvance("-0,12345678"));
  EXPECT_GE(first[CurvesModel::kCount], metrics.horizontalAdvance("10000000"));
  EXPECT_LT(first[CurvesModel::kCount], first[CurvesModel::kValue]);
  QEvent change(QEvent::FontChange);
  QApplication::sendEvent(&panel_, &change);
  EXPECT_EQ(widths(), first);
  QFont larger = panel_.font();
  larger.setPointSizeF(2 * larger.pointSizeF());
  panel_.setFont(larger);
  for (std::size_t column = 0; column < first.size(); ++column) EXPECT_GT(widths()[column], first[column]);
}

TEST_F(CurvesPanelTest, ShowsAndHidesWithTheSpaceBar) {
  QSignalSpy changed(&model_, &CurvesModel::LooksChanged);
  Select({0, 2});
  QTest::keyClick(&table(), Qt::Key_Space);
  EXPECT_FALSE(IsChecked(0));
  EXPECT_TRUE(IsChecked(1));
  EXPECT_FALSE(IsChecked(2));
  EXPECT_EQ(changed.size(), 1);
  QTest::keyClick(&table(), Qt::Key_Space);
  EXPECT_TRUE(IsChecked(0));
  EXPECT_TRUE(IsChecked(2));
}

TEST_F(CurvesPanelTest, ShowsAndHidesByMenu) {
  Select({1});
  Action("ValuesShowOnly")->trigger();
  EXPECT_FALSE(IsChecked(0));
  EXPECT_TRUE(IsChecked(1));
  EXPECT_FALSE(IsChecked(2));
  Select({0, 1, 2});
  Action("ValuesShowCurves")->trigger();
  EXPECT_TRUE(IsChecked(0) && IsChecked(2));
  Action("ValuesHideCurves")->trigger();
  EXPECT_FALSE(IsChecked(0) || IsChecked(1) || IsChecked(2));
}

TEST_F(CurvesPanelTest, ShowsAndHidesAtTheCheckBox) {
  EXPECT_TRUE(model_.setData(model_.index(1, 0), Qt::Unchecked, Qt::CheckStateRole));
  EXPECT_FALSE(curves_.IsShown(1));
  EXPECT_FALSE(model_.setData(model_.index(1, 1), Qt::Unchecked, Qt::CheckStateRole));
}

TEST_F(CurvesPanelTest, RenamesACurve) {
  Select({2});
  QTest::keyClick(&table(), Qt::Key_F2);
  auto* edit = table().findChild<QLineEdit*>();
  ASSERT_NE(edit, nullptr);
  EXPECT_EQ(edit->text(), "B?");
  edit->setText("Kraft in N");
  QTest::keyClick(edit, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(curves_.Name(2), "Kraft in N");
  model_.setData(model_.index(2, 0), "", Qt::EditRole);
  EXPECT_EQ(curves_.Name(2), "B?");
}

// A curve's default name changes once its command has a second field; editing without a change keeps that.
TEST_F(CurvesPanelTest, AnUnchangedNameIsNotStored) {
  model_.setData(model_.index(2, 0), "B?", Qt::EditRole);
  Add(store_, "B?", {1, 2});
  model_.Refresh();
  EXPECT_EQ(curves_.Name(2), "B? [1]");
}

TEST_F(CurvesPanelTest, AsksForAColourWithoutBlocking) {
  Select({1});
  Action("ValuesCurveColor")->trigger();
  auto* dialog = panel_.findChild<QColorDialog*>("ColorDialog");
  ASSERT_NE(dialog, nullptr);
  EXPECT_TRUE(dialog->isVisible());
  dialog->setCurrentColor(QColor(1, 2, 3));
  dialog->accept();
  EXPECT_EQ(curves_.Color(1), 0x010203u);
  EXPECT_EQ(model_.index(1, 0).data(Qt::DecorationRole).value<QColor>(), QColor(1, 2, 3));
}

TEST_F(CurvesPanelTest, ForgetsTheCurvesOfAStoreThatWasCleared) {
  QSignalSpy reset(&model_, &QAbstractItemModel::modelReset);
  store_.Clear();
  Add(store_, "C?", {1});
  model_.Refresh();
  EXPECT_EQ(reset.count(), 1);
  EXPECT_EQ(model_.rowCount(), 1);
  EXPECT_EQ(model_.index(0, 0).data(), "C?");
}

TEST_F(CurvesPanelTest, ChangesItsColoursWithThePalette) {
  EXPECT_EQ(model_.index(0, 0).data(Qt::DecorationRole).value<QColor>(), CurveColor(0, false));
  QPalette dark = panel_.palette();
  dark.setColor(QPalette::Base, Qt::black);
  dark.setColor(QPalette::Text, Qt::white);
  panel_.setPalette(dark);
  EXPECT_EQ(model_.index(0, 0).data(Qt::DecorationRole).value<QColor>(), CurveColor(0, true));
}

TEST(CurveColor, DiffersFromTheBackgroundAndBetweenCurves) {
  for (const bool on_dark : {false, true}) {
    for (std::size_t a = 0; a < 40; ++a) {
      const QColor color = CurveColor(a, on_dark);
      EXPECT_TRUE(on_dark ? color.value() > 200 : color.lightness() < 180) << a;
      for (std::size_t b = a + 1; b < 40; ++b)
        EXPECT_NE(CurveColor(a, on_dark), CurveColor(b, on_dark)) << a << ' ' << b;
    }
  }
}

TEST_F(CurvesPanelTest, ASquareIsMadeOnceForEachColor) {
  const ColorDelegate delegate;
  const QIcon red = delegate.IconOf(Qt::red, QSize(16, 16));
  EXPECT_EQ(red.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
  EXPECT_EQ(delegate.IconOf(Qt::red, QSize(16, 16)).cacheKey(), red.cacheKey());
  EXPECT_NE(delegate.IconOf(Qt::blue, QSize(16, 16)).cacheKey(), red.cacheKey());
  EXPECT_EQ(delegate.IconOf(Qt::red, QSize(32, 32)).availableSizes(), QList{QSize(32, 32)});
}

}  // namespace
}  // namespace kolvane::values
