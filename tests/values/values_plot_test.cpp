#include "values/ui/values_plot.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <memory>

#include "gui/paint_counter.h"
#include "gui/pixels.h"
#include "values/filled_store.h"
#include "values/ui/plot_overlay.h"

namespace kolvane::values {
namespace {

/// A plot of 100 rows of "A?", a second apart, with rising values from 0 to 99; every tenth row is of "B?",
/// with falling values.
class ValuesPlotTest : public testing::Test {
 protected:
  void SetUp() override {
    for (int i = 0; i < 100; ++i) i % 10 == 9 ? Add(store_, "B?", {99.0 - i}) : Add(store_, "A?", {1.0 * i});
    curves_.Refresh();
    plot_.resize(600, 400);
    plot_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&plot_));
    plot_.ShowRows(store_.rows());
    plot_.setFocus();
  }

  // The position of values in the plot.
  QPoint At(double x, double y) {
    const QRectF area = plot_.Area();
    return QPointF(area.left() + view().x().FractionOf(x) * area.width(),
                   area.bottom() - view().y().FractionOf(y) * area.height())
        .toPoint();
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {},
            Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(&plot_, button, modifiers, from);
    QMouseEvent move(QEvent::MouseMove, to, plot_.mapToGlobal(to), Qt::NoButton, button, modifiers);
    QApplication::sendEvent(&plot_, &move);
    QTest::mouseRelease(&plot_, button, modifiers, to);
  }
  void Wheel(QPoint at, int steps, Qt::KeyboardModifiers modifiers = {}) {
    QWheelEvent event(at, plot_.mapToGlobal(at), {}, {0, 120 * steps}, Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&plot_, &event);
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&plot_, key, modifiers); }
  const PlotView& view() const { return plot_.view(); }
  void ExpectX(double from, double to, double tolerance = 0.5) const {
    EXPECT_NEAR(view().x().from, from, tolerance);
    EXPECT_NEAR(view().x().to, to, tolerance);
  }

  // Whether the picture has a pixel of that colour within `radius` of `at`.
  bool HasColor(QPoint at, const QColor& color, int radius = 2) {
    const QRect around(at - QPoint(radius, radius), at + QPoint(radius, radius));
    return gui::Pixels(plot_.grab().toImage(), around, color) > 0;
  }

  Store store_;
  CurveList curves_{store_};
  ValuesPlot plot_{store_, curves_, ","};
};

TEST_F(ValuesPlotTest, ShowsEverythingAtFirst) {
  ExpectX(0, 99, 1.1);
  EXPECT_LT(view().y().from, 0);
  EXPECT_GT(view().y().to, 99);
  EXPECT_EQ(plot_.VisibleRows(), (RowRange{0, 100}));
  EXPECT_TRUE(HasColor(At(60, 60), CurveColor(0, false)));
  EXPECT_FALSE(HasColor(At(60, 20), CurveColor(0, false)));
}

TEST_F(ValuesPlotTest, TheLegendHasAtMostTwoLines) {
  const PlotStyle style = PlotStyle::OnPaper(QFont());
  const QFontMetricsF metrics(style.font);
  const auto top = [&](std::size_t names) {
    PlotScene scene = plot_.Scene(false);
    scene.curves.assign(names, {nullptr, QString(20, QLatin1Char('M')), Qt::black});
    return PlotPainter({0, 0, 600, 400}, scene, style, metrics).area().top();
  };
  const double line = top(1) - top(0);
  EXPECT_GT(line, 0);
  EXPECT_NEAR(top(4) - top(1), line, line / 2);
  EXPECT_EQ(top(40), top(4));
}

TEST_F(ValuesPlotTest, LeavesOutCurvesThatAreHidden) {
  curves_.Show(0, false);
  plot_.ShowRows(100);
  EXPECT_FALSE(HasColor(At(60, 60), CurveColor(0, false)));
  EXPECT_TRUE(HasColor(At(29, 70), CurveColor(1, false)));
  curves_.Show(1, false);
  plot_.ShowRows(100);
  EXPECT_FALSE(HasColor(At(29, 70), CurveColor(1, false)));
}

TEST_F(ValuesPlotTest, UsesTheChosenColour) {
  curves_.SetColor(0, 0x123456);
  plot_.ShowRows(100);
  EXPECT_TRUE(HasColor(At(60, 60), QColor(0x12, 0x34, 0x56)));
}

TEST_F(ValuesPlotTest, GrowsWithItsRows) {
  AddAt(store_, 200, "A?", {500});
  EXPECT_EQ(plot_.Rows().rows(), 100u);
  plot_.ShowRows(store_.rows());
  ExpectX(0, 200, 2.1);
  EXPECT_GT(view().y().to, 500);
}

TEST_F(ValuesPlotTest, CanHaveTheRowNumberAsItsAxis) {
  AddAt(store_, 10000, "A?", {1});
  plot_.ShowRows(store_.rows());
  plot_.SetAxis(Axis::kRow);
  ExpectX(1, 101, 1.1);
}

TEST_F(ValuesPlotTest, KeepsItsRowsVisibleWhenTheAxisChanges) {
  plot_.SetAxis(Axis::kRow);
  Drag(At(20.4, 10), At(40.6, 90), Qt::ControlModifier);
  const RowRange rows = plot_.VisibleRows();
  EXPECT_EQ(rows, (RowRange{20, 40}));
  plot_.SetAxis(Axis::kTime);
  EXPECT_EQ(plot_.VisibleRows(), rows);
  ExpectX(20, 39);
}

TEST_F(ValuesPlotTest, ZoomsAtTheWheel) {
  const QPoint at = At(50, 50);
  Wheel(at, 3);
  EXPECT_NEAR(view().x().width(), 101 * 0.512, 1);
  EXPECT_NEAR(view().x().FractionOf(50), 0.5, 0.05);
  EXPECT_TRUE(view().auto_y());
  Wheel(at, -3);
  EXPECT_EQ(view().mode(), PlotView::Mode::kAll);
}

TEST_F(ValuesPlotTest, ZoomsTheYAxisWithControlOrBesideIt) {
  const double height = view().y().width();
  Wheel(At(50, 50), 1, Qt::ControlModifier);
  EXPECT_NEAR(view().y().width(), height * 0.8, 1e-6);
  EXPECT_FALSE(view().auto_y());
  Wheel(QPoint(3, 200), 1);
  EXPECT_NEAR(view().y().width(), height * 0.64, 1e-6);
}

TEST_F(ValuesPlotTest, PansWithShiftAndTheWheel) {
  Wheel(At(50, 50), 3);
  const Span before = view().x();
  Wheel(At(50, 50), -1, Qt::ShiftModifier);
  EXPECT_NEAR(view().x().from, before.from + before.width() * 0.1, 0.2);
}

TEST_F(ValuesPlotTest, MovesWhenDragged) {
  Drag(At(30, 20), At(70, 80), Qt::ControlModifier);
  const Span x = view().x();
  const Span y = view().y();
  Drag(At(50, 50), At(40, 60));
  EXPECT_NEAR(view().x().from, x.from + 10, 0.5);
  EXPECT_NEAR(view().y().from, y.from - 10, 0.5);
  Drag(At(50, 50), At(60, 40), {}, Qt::MiddleButton);
  EXPECT_NEAR(view().x().from, x.from, 0.7);
}

TEST_F(ValuesPlotTest, ZoomsIntoARectangle) {
  plot_.SetTool(ValuesPlot::Tool::kZoom);
  Drag(At(60, 70), At(20, 10));
  ExpectX(20, 60);
  EXPECT_NEAR(view().y().from, 10, 0.5);
  EXPECT_NEAR(view().y().to, 70, 0.5);
  // A click without movement selects no rectangle.
  Drag(At(40, 40), At(40, 40));
  ExpectX(20, 60);
}

TEST_F(ValuesPlotTest, SelectsRows) {
  QSignalSpy selected(&plot_, &ValuesPlot::RowsSelected);
  Drag(At(29.6, 50), At(10.4, 50), Qt::ShiftModifier);
  ASSERT_EQ(selected.size(), 1);
  EXPECT_EQ(selected[0],
            (QVariantList{QVariant::fromValue<std::size_t>(11), QVariant::fromValue<std::size_t>(30)}));
  plot_.SetTool(ValuesPlot::Tool::kSelect);
  QTest::mouseClick(&plot_, Qt::LeftButton, {}, At(50, 50));
  EXPECT_EQ(selected.last()[0], selected.last()[1]);
}

TEST_F(ValuesPlotTest, ShadesSelectedRows) {
  const QColor background = plot_.grab().toImage().pixelColor(At(23, 83));
  plot_.SetSelection({{10, 30}});
  EXPECT_NE(plot_.grab().toImage().pixelColor(At(23, 83)), background);
  EXPECT_EQ(plot_.grab().toImage().pixelColor(At(45, 83)), background);
}

TEST_F(ValuesPlotTest, ShadesSelectedRowsBesideThoseOutOfView) {
  Drag(At(20, 10), At(60, 90), Qt::ControlModifier);
  const QColor background = plot_.grab().toImage().pixelColor(At(45, 83));
  plot_.SetSelection({{0, 10}, {40, 50}});
  EXPECT_NE(plot_.grab().toImage().pixelColor(At(45, 83)), background);
}

TEST_F(ValuesPlotTest, ShowsEverythingAtADoubleClick) {
  Drag(At(20, 10), At(60, 70), Qt::ControlModifier);
  QTest::mouseDClick(&plot_, Qt::LeftButton, {}, At(40, 40));
  EXPECT_EQ(view().mode(), PlotView::Mode::kAll);
  EXPECT_TRUE(view().auto_y());
}

TEST_F(ValuesPlotTest, ObeysTheKeys) {
  Key(Qt::Key_Plus);
  Key(Qt::Key_Plus);
  EXPECT_NEAR(view().x().width(), 101 * 0.64, 1);
  const Span x = view().x();
  Key(Qt::Key_Right);
  EXPECT_NEAR(view().x().from, x.from + x.width() / 10, 1e-6);
  Key(Qt::Key_Left);
  ExpectX(x.from, x.to, 1e-6);
  Key(Qt::Key_Home);
  EXPECT_LE(view().x().from, 0);
  Key(Qt::Key_PageDown);
  EXPECT_GT(view().x().from, 30);
  Key(Qt::Key_PageUp);
  EXPECT_LE(view().x().from, 0);
  Key(Qt::Key_End);
  EXPECT_EQ(view().mode(), PlotView::Mode::kFollow);
  EXPECT_GE(view().x().to, 99);
  const Span y = view().y();
  Key(Qt::Key_Up);
  EXPECT_NEAR(view().y().from, y.from + y.width() / 10, 1e-6);
  Key(Qt::Key_Down);
  Key(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_NEAR(view().y().width(), y.width() * 0.8, 1e-6);
  Key(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_NEAR(view().y().width(), y.width(), 1e-6);
  Key(Qt::Key_Minus);
  Key(Qt::Key_Minus);
  EXPECT_NEAR(view().x().width(), 101, 1);
}

TEST_F(ValuesPlotTest, FollowingTheEndIsShownAtOnce) {
  Drag(At(20, 10), At(60, 90), Qt::ControlModifier);
  const QImage before = plot_.grab().toImage();
  QSignalSpy changed(&plot_, &ValuesPlot::ViewChanged);
  plot_.Follow(true);
  EXPECT_EQ(changed.size(), 1);
  ExpectX(59, 99, 2);
  EXPECT_NE(plot_.grab().toImage(), before);
}

TEST_F(ValuesPlotTest, ReadsTheValuesUnderThePointer) {
  QSignalSpy moved(&plot_, &ValuesPlot::CursorMoved);
  QTest::mouseMove(&plot_, At(42, 50));
  ASSERT_TRUE(plot_.cursor());
  EXPECT_NEAR(*plot_.cursor(), 42, 0.3);
  EXPECT_EQ(moved.size(), 1);
  EXPECT_TRUE(HasColor(At(42, 42), CurveColor(0, false)));
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&plot_, &leave);
  EXPECT_EQ(plot_.cursor(), std::nullopt);
}

TEST_F(ValuesPlotTest, PaintsAgainWhenThePointerOrTheAxisChanges) {
  QApplication::processEvents();
  gui::PaintCounter counter;
  plot_.installEventFilter(&counter);
  // Not where a test before has left the pointer.
  QTest::mouseMove(&plot_, At(17, 50));
  EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints > 0; }));
  QApplication::processEvents();
  counter.paints = 0;
  plot_.SetAxis(Axis::kRow);
  EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints > 0; }));
}

TEST_F(ValuesPlotTest, MarksTheValuesThatItReads) {
  const auto coloured = [this] {
    const QRect around(At(40, 40) - QPoint(4, 4), QSize(9, 9));
    return gui::Pixels(plot_.grab().toImage(), around, CurveColor(0, false));
  };
  QTest::mouseMove(&plot_, At(70, 50));
  const int without = coloured();
  QTest::mouseMove(&plot_, At(40, 50));
  EXPECT_GT(coloured(), without + 10);
}

TEST_F(ValuesPlotTest, TheBoxIsBesideTheLineWhereThereIsMoreRoom) {
  const QImage without = plot_.grab().toImage();
  const int row = static_cast<int>(plot_.Area().top()) + 15;  // above all marks
  for (const int x : {30, 70}) {
    QTest::mouseMove(&plot_, At(x, 50));
    const QImage with = plot_.grab().toImage();
    int left = 0;
    int right = 0;
    for (int column = 0; column < with.width(); ++column) {
      const bool painted = with.pixel(column, row) != without.pixel(column, row);
      left += static_cast<int>(painted && column < At(x, 50).x() - 2);
      right += static_cast<int>(painted && column > At(x, 50).x() + 2);
    }
    EXPECT_EQ(left > 0, x == 70) << x;
    EXPECT_EQ(right > 0, x == 30) << x;
  }
}

TEST_F(ValuesPlotTest, TheBoxHasALineForEachCurveBelowItsHead) {
  QTest::mouseMove(&plot_, At(30, 50));
  const QImage picture = plot_.grab().toImage();
  const double line = QFontMetricsF(plot_.font()).lineSpacing();
  const QPointF head(At(30, 50).x() + 4, plot_.Area().top() + 1.5 * kPlotGap);
  for (const int curve : {0, 1}) {
    const QRectF row(head + QPointF(0, line * (curve + 1)), QSizeF(40, line));
    EXPECT_GT(gui::Pixels(picture, row.toRect(), CurveColor(static_cast<std::size_t>(curve), false)), 15)
        << curve;
  }
}

TEST_F(ValuesPlotTest, ReadsByKeysFromValueToValue) {
  curves_.Show(0, false);
  plot_.ShowRows(100);
  Key(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(plot_.cursor(), 59);
  Key(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(plot_.cursor(), 69);
  Key(Qt::Key_Left, Qt::ControlModifier);
  Key(Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(plot_.cursor(), 49);
  EXPECT_EQ(plot_.accessibleDescription().mid(12), ", Zeile 50, B?: 50");
}

TEST_F(ValuesPlotTest, ReadsByKeysFromBehindTheLastValueOn) {
  const QPoint behind = At(99.8, 50);
  QTest::mouseMove(&plot_, behind);
  ASSERT_GT(*plot_.cursor(), 99);
  Key(Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(plot_.cursor(), 98);
}

TEST_F(ValuesPlotTest, ReadsByKeysFromTheFirstValueOn) {
  for (int i = 0; i < 100; ++i) Key(Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(plot_.cursor(), 0);
  Key(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(plot_.cursor(), 1);
}

TEST_F(ValuesPlotTest, SelectsByKeys) {
  QSignalSpy selected(&plot_, &ValuesPlot::RowsSelected);
  Key(Qt::Key_Right, Qt::ControlModifier);
  const auto start = static_cast<std::size_t>(*plot_.cursor());
  for (int i = 0; i < 3; ++i) Key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(selected.last()[0].value<std::size_t>(), start);
  EXPECT_EQ(selected.last()[1].value<std::size_t>(), start + 4);
  Key(Qt::Key_Escape);
  EXPECT_EQ(selected.last()[0], selected.last()[1]);
  EXPECT_EQ(plot_.cursor(), std::nullopt);
}

TEST_F(ValuesPlotTest, ScrollsToWhatTheKeysRead) {
  Drag(At(20, 10), At(30, 70), Qt::ControlModifier);
  for (int i = 0; i < 20; ++i) Key(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_TRUE(view().x().Holds(*plot_.cursor()));
  EXPECT_GT(*plot_.cursor(), 30);
}

TEST_F(ValuesPlotTest, CancelsADragAtEscape) {
  const Span before = view().x();
  QTest::mousePress(&plot_, Qt::LeftButton, Qt::ControlModifier, At(20, 20));
  QTest::mouseMove(&plot_, At(40, 40));
  Key(Qt::Key_Escape);
  QTest::mouseRelease(&plot_, Qt::LeftButton, Qt::ControlModifier, At(40, 40));
  ExpectX(before.from, before.to, 1e-9);
}

TEST_F(ValuesPlotTest, StartsAgainWhenTheStoreIsCleared) {
  Drag(At(20, 10), At(30, 70), Qt::ControlModifier);
  store_.Clear();
  curves_.Refresh();
  plot_.ShowRows(0);
  EXPECT_EQ(view().mode(), PlotView::Mode::kAll);
  plot_.grab();
  Add(store_, "C?", {7});
  curves_.Refresh();
  plot_.ShowRows(1);
  EXPECT_TRUE(HasColor(At(0, 7), CurveColor(0, false)));
}

TEST_F(ValuesPlotTest, AcceptsInputWithoutValues) {
  store_.Clear();
  curves_.Refresh();
  plot_.ShowRows(0);
  for (const Qt::Key key :
       {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_Plus, Qt::Key_Up}) {
    Key(key);
    Key(key, Qt::ControlModifier);
    Key(key, Qt::ControlModifier | Qt::ShiftModifier);
  }
  Drag({100, 100}, {300, 300}, Qt::ShiftModifier);
  Drag({100, 100}, {300, 300}, Qt::ControlModifier);
  Wheel({100, 100}, 5);
  QTest::mouseMove(&plot_, {200, 200});
  EXPECT_FALSE(plot_.grab().isNull());
}

TEST_F(ValuesPlotTest, PaintsAtAnySize) {
  for (const QSize size : {QSize(1, 1), QSize(30, 20), QSize(160, 100), QSize(2000, 30), QSize(3, 1000)}) {
    plot_.resize(size);
    EXPECT_FALSE(plot_.grab().isNull());
  }
}

TEST_F(ValuesPlotTest, ChangesItsColoursWithThePalette) {
  QPalette dark = plot_.palette();
  dark.setColor(QPalette::Base, QColor(20, 20, 20));
  dark.setColor(QPalette::Text, Qt::white);
  plot_.setPalette(dark);
  EXPECT_TRUE(HasColor(At(60, 60), CurveColor(0, true)));
}

TEST(PlotOverlay, TheHintIsInTheMiddle) {
  QImage image(300, 200, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  PaintHint(painter, image.rect(), Qt::black);
  painter.end();
  for (const QRect half : {QRect(0, 0, 150, 200), QRect(150, 0, 150, 200), QRect(0, 80, 300, 40)})
    EXPECT_GT(gui::Pixels(image, half, Qt::black), 10) << half.x() << ' ' << half.y();
}

}  // namespace
}  // namespace kolvane::values
