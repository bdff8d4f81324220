#include "values/ui/values_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QWindow>
#include <memory>

#include "base/fake_prompt.h"
#include "values/filled_store.h"
#include "values/texts.h"

namespace kolvane::values {
namespace {

/// The window beside a modal terminal, as in use.
class ValuesWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    terminal_.setWindowModality(Qt::ApplicationModal);
    terminal_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&terminal_));
    window_ = new ValuesWindow({store_, prompt_, [](const char*) { return QIcon(QPixmap(16, 16)); }, ","},
                               &terminal_);
  }

  void Present() {
    window_->Present();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_));
  }
  void Fill(int rows) {
    for (int i = 0; i < rows; ++i) Add(store_, "A?", {1.0 * i, 2.0 * i});
  }
  template <typename Widget>
  Widget* Find(const char* name) {
    auto* found = window_->findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  QAction* Action(const char* name) { return Find<QAction>(name); }
  ValuesTable* Table() { return Find<ValuesTable>("ValuesTable"); }
  ValuesPlot* Plot() { return Find<ValuesPlot>("ValuesPlot"); }
  int Rows() { return Table()->model()->rowCount(); }
  QString Text(const char* label) { return Find<QLabel>(label)->text(); }
  QString Statistics(int curve, int column) {
    return Find<QTableView>("ValuesCurves")->model()->index(curve, column).data().toString();
  }

  Store store_;
  base::FakePrompt prompt_;
  QMainWindow terminal_;
  ValuesWindow* window_ = nullptr;
};

TEST_F(ValuesWindowTest, HasItsPartsByName) {
  EXPECT_EQ(window_->objectName(), "ValuesWindow");
  EXPECT_EQ(window_->windowTitle(), "Messwerte");
  Table();
  Plot();
  for (const char* name : {"ValuesClear", "ValuesSave", "ValuesCopy", "ValuesPause"}) Action(name);
  for (const char* name : {"ValuesTable", "ValuesPlot", "ValuesCurves", "ValuesAxis"})
    EXPECT_NE(Find<QWidget>(name)->accessibleName(), "") << name;
  EXPECT_TRUE(window_->toolBarBreak(Find<QToolBar>("ValuesPlotToolbar")))
      << "the plot's bar is below the other one";
}

// Input is sent as a window system does, which withholds it from blocked windows.
TEST_F(ValuesWindowTest, OnlyTheTableCanBeDraggedAway) {
  const auto* splitter = Find<QSplitter>("ValuesSplitter");
  EXPECT_TRUE(splitter->isCollapsible(0));
  EXPECT_FALSE(splitter->isCollapsible(1));
}

TEST_F(ValuesWindowTest, AcceptsInputBesideTheModalTerminal) {
  Present();
  QPushButton other("other");
  other.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
  bool clicked = false;
  QObject::connect(&other, &QPushButton::clicked, [&clicked] { clicked = true; });
  QTest::mouseClick(other.windowHandle(), Qt::LeftButton, {}, other.rect().center());
  EXPECT_FALSE(clicked);

  auto* bar = Find<QToolBar>("ValuesToolbar");
  QWidget* button = bar->widgetForAction(Action("ValuesPause"));
  const QPoint point = button->mapTo(window_, button->rect().center());
  QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, {}, point);
  EXPECT_TRUE(Action("ValuesPause")->isChecked());
  EXPECT_FALSE(window_->isModal());
}

TEST_F(ValuesWindowTest, ShowsRowsAsTheyAreAdded) {
  Present();
  EXPECT_EQ(Text("ValuesStatus"), "0 Zeilen, 0 Messwerte");
  EXPECT_EQ(texts::RowsAndValues(1, 1), "1 Zeile, 1 Messwert");
  EXPECT_EQ(texts::PausedAt(1, 1), "Angehalten bei 1 Zeile, 1 weitere");
  Fill(1000);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Rows() == 1000; }));
  EXPECT_EQ(Text("ValuesStatus"), "1.000 Zeilen, 2.000 Messwerte");
  EXPECT_EQ(Plot()->Rows().rows(), 1000u);
  EXPECT_EQ(Statistics(1, CurvesModel::kMaximum), "1998");
}

TEST_F(ValuesWindowTest, ShowsRowsAddedBeforeItWasOpened) {
  Fill(7);
  EXPECT_EQ(Rows(), 0);
  Present();
  EXPECT_EQ(Rows(), 7);
  window_->close();
  Fill(2);
  EXPECT_EQ(Rows(), 7);
  Present();
  EXPECT_EQ(Rows(), 9);
}

// However many rows are added between two frames, the window is updated once.
TEST_F(ValuesWindowTest, UpdatesOnceAFrame) {
  Present();
  int inserted = 0;
  QObject::connect(Table()->model(), &QAbstractItemModel::rowsInserted, [&inserted] { ++inserted; });
  for (int i = 0; i < 100; ++i) {
    Fill(1);
    QApplication::processEvents();
  }
  ASSERT_TRUE(QTest::qWaitFor([&] { return Rows() == 100; }));
  EXPECT_LT(inserted, 50);
}

// No timer of the window is running.
TEST_F(ValuesWindowTest, DoesNothingWhileNoRowsAreAdded) {
  Fill(10);
  Present();
  struct TimerCount : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      count += event->type() == QEvent::Timer || event->type() == QEvent::Paint ? 1 : 0;
      return false;
    }
    int count = 0;
  } counter;
  window_->Refresh();
  QTest::qWait(1);
  qApp->installEventFilter(&counter);
  QApplication::processEvents();
  QApplication::processEvents();
  EXPECT_EQ(counter.count, 0);
}

TEST_F(ValuesWindowTest, PausesWhileValuesAreKept) {
  Fill(10);
  Present();
  Action("ValuesPause")->trigger();
  EXPECT_EQ(window_->windowTitle(), "Messwerte (angehalten)");
  Fill(1234);
  window_->Refresh();
  EXPECT_EQ(Rows(), 10);
  EXPECT_EQ(Text("ValuesStatus"), "Angehalten bei 10 Zeilen, 1.234 weitere");
  EXPECT_EQ(Statistics(0, CurvesModel::kCount), "10");
  Action("ValuesPause")->trigger();
  EXPECT_EQ(Rows(), 1244);
  EXPECT_EQ(window_->windowTitle(), "Messwerte");
}

TEST_F(ValuesWindowTest, CountsRowsAddedWhilePaused) {
  Fill(10);
  Present();
  Action("ValuesPause")->trigger();
  Fill(2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Text("ValuesStatus") == "Angehalten bei 10 Zeilen, 2 weitere"; }));
  EXPECT_EQ(Rows(), 10);
}

TEST_F(ValuesWindowTest, PausesAtTheLastRow) {
  Present();
  Fill(10);
  Action("ValuesPause")->trigger();
  EXPECT_EQ(Rows(), 10);
}

TEST_F(ValuesWindowTest, ClearsValues) {
  Fill(10);
  Present();
  Table()->SelectRange(2, 5);
  Action("ValuesClear")->trigger();
  EXPECT_EQ(Rows(), 0);
  EXPECT_FALSE(Plot()->grab().isNull());
  EXPECT_EQ(store_.rows(), 0u);
  EXPECT_EQ(Text("ValuesScope"), "Statistik: keine Messwerte");
  EXPECT_EQ(Find<QTableView>("ValuesCurves")->model()->rowCount(), 0);
  Fill(3);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Rows() == 3; }));
  EXPECT_EQ(Text("ValuesScope"), "Statistik: sichtbare Zeilen 1 bis 3");
}

TEST_F(ValuesWindowTest, ClearsValuesWhilePaused) {
  Fill(10);
  Present();
  Action("ValuesPause")->trigger();
  Action("ValuesClear")->trigger();
  Fill(5);
  EXPECT_EQ(Rows(), 0);
  EXPECT_EQ(Statistics(0, CurvesModel::kName), "") << "the curve no longer exists";
  Action("ValuesPause")->trigger();
  EXPECT_EQ(Rows(), 5);
}

TEST_F(ValuesWindowTest, ShowsStatisticsOfTheSelectionInTheTable) {
  Fill(100);
  Present();
  EXPECT_EQ(Text("ValuesScope"), "Statistik: sichtbare Zeilen 1 bis 100");
  Table()->SelectRange(10, 20);
  EXPECT_EQ(Text("ValuesScope"), "Statistik: ausgewählte Zeilen (10)");
  EXPECT_EQ(Statistics(0, CurvesModel::kMean), "14,5");
  EXPECT_EQ(Statistics(1, CurvesModel::kMinimum), "20");
}

TEST_F(ValuesWindowTest, ShowsStatisticsOfTheSelectionInThePlot) {
  Fill(100);
  Present();
  Q_EMIT Plot()->RowsSelected(30, 40);
  EXPECT_EQ(Table()->SelectedRows(), (RowRanges{{30, 40}}));
  EXPECT_EQ(Statistics(0, CurvesModel::kCount), "10");
  EXPECT_EQ(Statistics(0, CurvesModel::kMinimum), "30");
  Q_EMIT Plot()->RowsSelected(0, 0);
  EXPECT_EQ(Statistics(0, CurvesModel::kCount), "100");
}

TEST_F(ValuesWindowTest, ShowsStatisticsOfTheVisibleRows) {
  Fill(100);
  Present();
  Action("ValuesFollow")->trigger();
  QTest::keyClick(Plot(), Qt::Key_Plus);
  EXPECT_EQ(Text("ValuesScope"), "Statistik: sichtbare Zeilen 21 bis 100");
  EXPECT_EQ(Statistics(0, CurvesModel::kMinimum), "20");
}

TEST_F(ValuesWindowTest, ShowsInItsButtonsWhatThePlotDoes) {
  Fill(100);
  Present();
  EXPECT_TRUE(Action("ValuesShowAll")->isChecked());
  EXPECT_TRUE(Action("ValuesAutoScale")->isChecked());
  QTest::keyClick(Plot(), Qt::Key_Plus);
  EXPECT_FALSE(Action("ValuesShowAll")->isChecked());
  QTest::keyClick(Plot(), Qt::Key_End);
  EXPECT_TRUE(Action("ValuesFollow")->isChecked());
  QTest::keyClick(Plot(), Qt::Key_Up);
  EXPECT_FALSE(Action("ValuesAutoScale")->isChecked());
  Action("ValuesAutoScale")->trigger();
  EXPECT_TRUE(Plot()->view().auto_y());
  Action("ValuesShowAll")->trigger();
  EXPECT_EQ(Plot()->view().mode(), PlotView::Mode::kAll);
  EXPECT_TRUE(Action("ValuesShowAll")->isChecked());
  Find<QComboBox>("ValuesAxis")->setCurrentIndex(1);
  EXPECT_EQ(Plot()->Rows().axis(), Axis::kRow);
}

TEST_F(ValuesWindowTest, ReadsValuesInTheListOfCurves) {
  Fill(100);
  Present();
  QTest::keyClick(Plot(), Qt::Key_Right, Qt::ControlModifier);
  const QString row = QString::number(*Plot()->cursor());
  EXPECT_EQ(Statistics(0, CurvesModel::kValue), row);
}

TEST_F(ValuesWindowTest, CopiesSelectedRowsAndThePicture) {
  Fill(3);
  Present();
  Action("ValuesCopy")->trigger();
  EXPECT_EQ(QApplication::clipboard()->text().count('\n'), 3);
  EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasImage());
  Table()->SelectRange(1, 2);
  Action("ValuesCopy")->trigger();
  EXPECT_TRUE(QApplication::clipboard()->text().endsWith("\tA?\t1\t2\n"));
  EXPECT_EQ(QApplication::clipboard()->text().count('\n'), 1);
  Action("ValuesCopyPicture")->trigger();
  EXPECT_EQ(QApplication::clipboard()->image().size(), Plot()->size() * 2);
  EXPECT_EQ(QApplication::clipboard()->text(), "");
}

TEST_F(ValuesWindowTest, KeepsTheClipboardIfThereAreNoRows) {
  Present();
  QApplication::clipboard()->setText("kept");
  Action("ValuesCopy")->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), "kept");
}

TEST_F(ValuesWindowTest, RefusesToCopyMoreThanASpreadsheetTakes) {
  Fill((1 << 20) + 1);
  Present();
  Action("ValuesCopy")->trigger();
  ASSERT_EQ(prompt_.errors.size(), 1u);
  EXPECT_NE(prompt_.errors[0].find("Zwischenablage"), std::string::npos);
}

TEST_F(ValuesWindowTest, EveryButtonIsReachableByTab) {
  for (QToolButton* button : window_->findChildren<QToolButton*>()) {
    if (button->objectName().startsWith("qt_")) continue;
    EXPECT_TRUE(button->focusPolicy() & Qt::TabFocus) << button->text().toStdString();
  }
}

TEST_F(ValuesWindowTest, EveryActionSaysWhatItDoes) {
  for (const QAction* action : window_->findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (action->objectName().isEmpty()) continue;
    EXPECT_FALSE(action->shortcut().isEmpty()) << action->objectName().toStdString();
    EXPECT_TRUE(action->toolTip().endsWith(action->shortcut().toString(QKeySequence::NativeText) + ')'))
        << action->toolTip().toStdString();
  }
}

TEST_F(ValuesWindowTest, ToolbarsShowIcons) {
  for (const char* name : {"ValuesPause", "ValuesClear", "ValuesSave", "ValuesCopy"})
    EXPECT_FALSE(Action(name)->icon().isNull()) << name;
}

TEST_F(ValuesWindowTest, FitsASmallScreen) {
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPointSize(14);
  QApplication::setFont(large);
  Fill(10);
  Present();
  EXPECT_LE(window_->minimumSizeHint().width(), 640);
  EXPECT_LE(window_->minimumSizeHint().height(), 480);
  QApplication::setFont(before);
}

TEST_F(ValuesWindowTest, ClosesAtItsKeyAndKeepsItsState) {
  Fill(10);
  Present();
  Plot()->SetAxis(Axis::kRow);
  Action("ValuesClose")->trigger();
  EXPECT_FALSE(window_->isVisible());
  EXPECT_TRUE(terminal_.isVisible());
  Present();
  EXPECT_EQ(Plot()->Rows().axis(), Axis::kRow);
}

TEST_F(ValuesWindowTest, StopsObservingTheStoreWhenDestroyed) {
  Present();
  delete window_;
  Fill(3);
  EXPECT_EQ(store_.rows(), 3u);
}

}  // namespace
}  // namespace kolvane::values
