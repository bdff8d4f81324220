// Editing the command list in its grid, and what the grid shows.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QDropEvent>
#include <QHelpEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QToolTip>
#include <QUrl>

#include "window/grid_fixture.h"

namespace kolvane::window {
namespace {

class GridTest : public GridFixture {
 protected:
  QLineEdit* Edit(int row) {
    GoTo(row);
    QTest::keyClick(Grid(), Qt::Key_F2);
    return Grid()->findChild<QLineEdit*>();
  }
  void PasteInto(QLineEdit* editor, const QString& text) {
    QApplication::clipboard()->setText(text);
    QTest::keyClick(editor, Qt::Key_V, Qt::ControlModifier);
  }
  QStringList Rows(int count) {
    QStringList rows;
    for (int row = 1; row <= count; ++row) rows << Row(row);
    return rows;
  }
  QString ToolTipOfRow(int row, int column = 1) {
    QToolTip::hideText();
    const QPoint at = Grid()->visualRect(Grid()->model()->index(row - 1, column)).center();
    QHelpEvent hover(QEvent::ToolTip, at, Grid()->viewport()->mapToGlobal(at));
    QApplication::sendEvent(Grid()->viewport(), &hover);
    return QToolTip::text();
  }
  // Whether the grid accepts the drag; it must before the drop.
  bool Drop(const QStringList& files) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& file : files) urls << QUrl::fromLocalFile(file);
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(20, 40), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Grid()->viewport(), &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent drop(QPoint(20, 40), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Grid()->viewport(), &drop);
    QApplication::processEvents();
    return true;
  }
  QColor PixelOf(int row, int from_right = 3) {
    const QRect cell = Grid()->visualRect(Grid()->model()->index(row - 1, 1));
    const QImage image = Grid()->viewport()->grab().toImage();
    return image.pixelColor(cell.right() - from_right, cell.center().y());
  }
  QAccessibleInterface* Cell(int row) {
    return QAccessible::queryAccessibleInterface(Grid())->tableInterface()->cellAt(row - 1, 1);
  }
};

TEST_F(GridTest, TypingOverARowAndEnterMovesDown) {
  GoTo(3);
  Type("$DELAY 5");
  EXPECT_EQ(Row(3), "$DELAY 5");
  EXPECT_EQ(CurrentRow(), 4);
  EXPECT_EQ(CellData(3, Qt::ForegroundRole).value<QColor>(), QColor(0, 0, 255));
}

TEST_F(GridTest, AnEditIsReportedAtOnceDuringARunToo) {
  const QSignalSpy changes(Grid()->model(), &QAbstractItemModel::dataChanged);
  script_.run.ScriptRunning = 1;
  Grid()->model()->setData(Grid()->model()->index(1, 1), "A");
  script_.run.ScriptRunning = 0;
  ASSERT_EQ(changes.size(), 1);
  EXPECT_EQ(changes[0][0].toModelIndex().row(), 1);
}

TEST_F(GridTest, TheMarkerColumnIsNeverCurrent) {
  GoTo(2);
  QTest::keyClick(Grid(), Qt::Key_Left);
  EXPECT_EQ(Grid()->currentIndex().column(), 1);
  Type("MSV?");
  EXPECT_EQ(Row(2), "MSV?");
  Grid()->setCurrentIndex(Grid()->model()->index(4, 0));
  EXPECT_EQ(CurrentRow(), 5);
  EXPECT_EQ(Grid()->currentIndex().column(), 1);
}

TEST_F(GridTest, AClickSelectsTheWholeRow) {
  Fill({"A", "B"});
  QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, {},
                    Grid()->visualRect(Grid()->model()->index(0, 1)).center());
  EXPECT_TRUE(Grid()->selectionModel()->isRowSelected(0));
  EXPECT_EQ(Grid()->selectionModel()->selectedRows().size(), 1);
}

TEST_F(GridTest, AHighlightHasItsOwnBoldness) {
  QFont font = Grid()->font();
  font.setBold(true);
  Grid()->list().HighlightLine(1, 0, 0xFFFF, false);
  EXPECT_FALSE(CellData(1, Qt::FontRole).value<QFont>().resolve(font).bold());
  Grid()->list().HighlightLine(1, 0, 0xFFFF, true);
  font.setBold(false);
  EXPECT_TRUE(CellData(1, Qt::FontRole).value<QFont>().resolve(font).bold());
  Grid()->list().ClearLineSelection(1);
  EXPECT_FALSE(CellData(1, Qt::FontRole).isValid());
}

TEST_F(GridTest, ColoursFollowTheKindOfARow) {
  Fill({"' Kommentar", "$STOP", ":marke", "MSV?"});
  EXPECT_EQ(CellData(1, Qt::ForegroundRole).value<QColor>(), QColor(0, 128, 0));
  EXPECT_EQ(CellData(3, Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
  EXPECT_EQ(CellData(4, Qt::ForegroundRole).value<QColor>(), QColor(0, 0, 0));
  EXPECT_FALSE(CellData(4, Qt::BackgroundRole).isValid());
}

TEST_F(GridTest, ARowIsEditedInTheColoursOfTheList) {
  QPalette dark = Grid()->palette();
  dark.setColor(QPalette::Text, Qt::white);
  Grid()->setPalette(dark);
  Grid()->ShowLook(Grid()->font(), 0x0000FF, QColor(1, 2, 3));
  Fill({"MSV?"});
  Grid()->edit(Grid()->currentIndex());
  const auto* editor = Grid()->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->palette().color(QPalette::Text), QColor(255, 0, 0));
  EXPECT_EQ(editor->palette().color(QPalette::Base), QColor(1, 2, 3));
}

TEST_F(GridTest, RowsGoThroughTheClipboardAsLines) {
  Fill({"eins", "zwei", "drei"});
  Grid()->selectRow(0);
  Grid()->selectionModel()->select(Grid()->model()->index(1, 1),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
  QTest::keyClick(Grid(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "eins\nzwei");
  QTest::keyClick(Grid(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Row(1) + Row(2) + Row(3), "drei");
  GoTo(5);
  QTest::keyClick(Grid(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Row(6), "zwei");
  QTest::keyClick(Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Row(6), "");
}

TEST_F(GridTest, DeleteEmptiesARowAndThenRemovesIt) {
  Fill({"eins", "zwei"});
  GoTo(1);
  QTest::keyClick(Grid(), Qt::Key_Delete);
  EXPECT_EQ(Row(1), "");
  EXPECT_EQ(Row(2), "zwei");
  QTest::keyClick(Grid(), Qt::Key_Delete);
  EXPECT_EQ(Row(1), "zwei");
  QTest::keyClick(Grid(), Qt::Key_Insert);
  EXPECT_EQ(Row(2), "zwei");
}

TEST_F(GridTest, LinesThatDoNotFitAreReported) {
  QApplication::clipboard()->setText("x\ny\nz\n");
  GoTo(1023);
  EXPECT_EQ(MessageDuring([&] { Grid()->paste(); }), "Die Befehlsliste ist voll. Nicht eingefügte Zeilen: 1");
  EXPECT_EQ(Row(1023) + Row(1024), "xy");
  GoTo(5);
  EXPECT_EQ(MessageDuring([&] { QTest::keyClick(Grid(), Qt::Key_Insert); }),
            "Die Befehlsliste ist voll. Es wurde keine Zeile eingefügt.");
  EXPECT_EQ(Row(1024), "y");
}

TEST_F(GridTest, RedoRevertsUndo) {
  Fill({"eins"});
  Fill({"zwei"});
  QTest::keyClick(Grid(), Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Row(1), "");
  QTest::keyClick(Grid(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(Row(1), "eins");
  QTest::keyClick(Grid(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Row(1), "zwei");
}

TEST_F(GridTest, TheStatusBarCountsTheLinesOfAFileThatWereLeftOut) {
  const std::string file = folder_.Path("a.CMD");
  base::WriteBytes(file, std::string(1025, '\n') + "B\n");
  const auto* left_out = Find<QLabel>("StatusBar2_3");
  EXPECT_TRUE(left_out->isHidden());
  window_.OpenCommandFile(file);
  EXPECT_EQ(Find<QLabel>("StatusBar2_2")->text().toStdString(), "Befehlsliste: " + file);
  EXPECT_EQ(left_out->text(), "2 Zeilen nicht geladen");
  EXPECT_FALSE(left_out->isHidden());
  Press("mnuNewCommandFile");
  EXPECT_TRUE(left_out->isHidden());
}

TEST_F(GridTest, AListThatWasOpenedCanBeOpenedAgainFromTheMenu) {
  const std::string file = folder_.Path("a.CMD");
  base::WriteBytes(file, "eins\r\n");
  window_.OpenCommandFile(file);
  OpenOnlyRecentList();
  EXPECT_EQ(Row(1), "eins");
}

TEST_F(GridTest, UndoBringsBackTheListThatWasCleared) {
  const std::string file = folder_.Path("a.CMD");
  base::WriteBytes(file, "eins\r\n");
  window_.OpenCommandFile(file);
  Press("mnuNewCommandFile");
  EXPECT_EQ(Status(), "Befehlsliste: Unbenannt");
  QTest::keyClick(Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Row(1), "eins");
  EXPECT_EQ(Status().toStdString(), "Befehlsliste: " + file);

  Q_EMIT Grid()->popupRequested(QPoint(0, 0));
  window_.findChild<QMenu*>("mnuPOP1")->close();
  Press("mnuClearAll");
  EXPECT_EQ(Row(1), "");
  QTest::keyClick(Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Row(1), "eins");
}

TEST_F(GridTest, TheCaptionShowsThatTheListIsModified) {
  const std::string file = folder_.Path("a.CMD");
  base::WriteBytes(file, "eins\r\n");
  window_.OpenCommandFile(file);
  EXPECT_FALSE(window_.isWindowModified());
  Fill({"zwei"});
  EXPECT_TRUE(window_.isWindowModified());
  EXPECT_TRUE(window_.windowTitle().startsWith("Kolvane Terminal - a.CMD[*]"));
  Press("mnuSaveCommandFile");
  EXPECT_FALSE(window_.isWindowModified());
  EXPECT_TRUE(window_.windowTitle().startsWith("Kolvane Terminal - a.CMD - "));
}

TEST_F(GridTest, LinesPastedIntoACellBecomeFurtherRows) {
  Fill({"eins", "zwei", "drei"});
  QLineEdit* editor = Edit(2);
  ASSERT_NE(editor, nullptr);
  editor->setCursorPosition(2);
  PasteInto(editor, "A\r\nB\nC");
  QApplication::processEvents();
  EXPECT_EQ(Rows(6), (QStringList{"eins", "zwA", "B", "Cei", "drei", ""}));
  EXPECT_EQ(CurrentRow(), 4);
  QTest::keyClick(Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Rows(4), (QStringList{"eins", "zwei", "drei", ""}));
}

TEST_F(GridTest, EnterContinuesAfterThePastedLines) {
  Fill({"eins"});
  QLineEdit* editor = Edit(2);
  ASSERT_NE(editor, nullptr);
  PasteInto(editor, "A\nB");
  QTest::keyClick(editor, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(Rows(4), (QStringList{"eins", "A", "B", ""}));
}

TEST_F(GridTest, ALinePastedWithItsEndIsStillBeingEdited) {
  QLineEdit* editor = Edit(1);
  ASSERT_NE(editor, nullptr);
  PasteInto(editor, "MSV?\n");
  QApplication::processEvents();
  ASSERT_EQ(Grid()->findChild<QLineEdit*>(), editor);
  EXPECT_EQ(editor->text(), "MSV?");
}

TEST_F(GridTest, LinesPastedIntoACellThatDoNotFitAreReported) {
  Grid()->list().SetText(1024, "letzte");
  QLineEdit* editor = Edit(3);
  ASSERT_NE(editor, nullptr);
  AnswerBoxes();
  PasteInto(editor, "A\nB");
  EXPECT_TRUE(QTest::qWaitFor([this] { return !boxes_.texts().isEmpty(); }));
  EXPECT_EQ(boxes_.texts(), QStringList{"Die Befehlsliste ist voll. Nicht eingefügte Zeilen: 1"});
  EXPECT_EQ(Row(3), "A");
  EXPECT_EQ(Row(1024), "letzte");
}

TEST_F(GridTest, ACharacterThatCannotBeSentIsMarkedWhileItIsTyped) {
  QLineEdit* editor = StartTyping("5 V");
  ASSERT_NE(editor, nullptr);
  const QImage plain = editor->grab().toImage();
  EXPECT_EQ(editor->toolTip(), "");
  editor->setText("5 Ω");
  QApplication::processEvents();
  EXPECT_EQ(editor->toolTip(), "Das Zeichen „Ω“ kann weder gesendet noch gespeichert werden");
  EXPECT_EQ(editor->accessibleDescription(), editor->toolTip());
  const auto red = [](const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QColor color = image.pixelColor(x, y);
        count += color.red() > 180 && color.green() < 100 && color.blue() < 100 ? 1 : 0;
      }
    }
    return count;
  };
  EXPECT_EQ(red(plain), 0);
  EXPECT_GT(red(editor->grab().toImage()), 0);
  editor->setText("5 µ");
  QApplication::processEvents();
  EXPECT_EQ(editor->toolTip(), "");
  EXPECT_EQ(red(editor->grab().toImage()), 0);

  editor->setText("5 Ω");
  QTest::keyClick(editor, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_GT(red(Grid()->viewport()->grab().toImage()), 0);
  EXPECT_EQ(ToolTipOfRow(1), "<qt>5 Ω<br>Das Zeichen „Ω“ kann weder gesendet noch gespeichert werden</qt>");
}

TEST_F(GridTest, ARowLongerThanItsColumnHasAToolTip) {
  const QString row = "' <b>" + QString(300, 'x');
  Fill({"kurz", row});
  EXPECT_EQ(ToolTipOfRow(1), "");
  EXPECT_EQ(ToolTipOfRow(2), "<qt>" + row.toHtmlEscaped() + "</qt>");
}

TEST_F(GridTest, AMarkHasAToolTip) {
  Fill({"A", "B"});
  Grid()->list().ToggleBreakpoint(2);
  EXPECT_EQ(ToolTipOfRow(1, 0), "");
  EXPECT_EQ(ToolTipOfRow(2, 0), "<qt>Haltepunkt</qt>");
}

TEST_F(GridTest, AVeryLongRowIsPaintedLikeALongOne) {
  const auto picture = [this](int times) {
    Fill({QStringLiteral("Ω 5 ").repeated(times), "", "Ende"});
    QApplication::processEvents();
    return Grid()->viewport()->grab().toImage();
  };
  const QImage lengthy = picture(300);
  // With the work for each mark growing with its position, this would take minutes.
  EXPECT_EQ(picture(200'000), lengthy);
  EXPECT_EQ(ToolTipOfRow(1), "<qt>" + QStringLiteral("Ω 5 ").repeated(500) +
                                 "…<br>Das Zeichen „Ω“ kann weder gesendet noch gespeichert werden</qt>");
}

TEST_F(GridTest, AHitFarBeyondTheColumnIsNotPainted) {
  Fill({QString(300, 'x') + QString(3000, ' ') + "y"});
  Grid()->ShowHits([](int) { return script::RowHits{{{3300, 3301}, true}}; }, {});
  const QImage with_hit = Grid()->viewport()->grab().toImage();
  Grid()->ShowHits({}, {});
  EXPECT_EQ(with_hit, Grid()->viewport()->grab().toImage());
}

TEST_F(GridTest, ACommandFileDroppedOnTheListOpens) {
  base::WriteBytes(folder_.Path("a.cmd"), "eins\r\n");
  base::WriteBytes(folder_.Path("a.txt"), "zwei\r\n");
  const QString list = QString::fromStdString(folder_.Path("a.cmd"));
  const QString text = QString::fromStdString(folder_.Path("a.txt"));
  EXPECT_FALSE(Drop({text}));
  EXPECT_FALSE(Drop({list, list}));
  EXPECT_EQ(Row(1), "");
  EXPECT_TRUE(Drop({list}));
  EXPECT_EQ(Row(1), "eins");
  EXPECT_EQ(Status(), "Befehlsliste: " + list);
  AnswerBoxes();
  EXPECT_TRUE(Drop({"/none/x.CMD"}));
  EXPECT_EQ(
      boxes_.texts(),
      QStringList{
          "Die Befehlsliste „/none/x.CMD“ kann nicht gelesen werden: Datei oder Ordner nicht gefunden"});
  script_.run.ScriptRunning = 1;
  EXPECT_FALSE(Drop({list}));
  script_.run.ScriptRunning = 0;
}

TEST_F(GridTest, TheCurrentRowIsGreyWhenTheListHasNoFocus) {
  QApplication::setActiveWindow(&window_);
  GoTo(1);
  Grid()->setFocus();
  const QColor highlight = Grid()->palette().color(QPalette::Active, QPalette::Highlight);
  EXPECT_GT(PixelOf(1).hsvSaturation(), 100);
  EXPECT_EQ(Grid()->grab().toImage().pixelColor(0, 5), highlight);
  Pane()->setFocus();
  EXPECT_LT(PixelOf(1).hsvSaturation(), 10);
  EXPECT_NE(PixelOf(1), PixelOf(2));
  EXPECT_NE(Grid()->grab().toImage().pixelColor(0, 5), highlight);
}

TEST_F(GridTest, TheFrameStaysWhileARowIsEdited) {
  QApplication::setActiveWindow(&window_);
  const QColor highlight = Grid()->palette().color(QPalette::Active, QPalette::Highlight);
  ASSERT_NE(Edit(2), nullptr);
  EXPECT_EQ(Grid()->grab().toImage().pixelColor(0, 5), highlight);
}

TEST_F(GridTest, RowsAreDraggedByTheirNumbers) {
  Fill({"A", "B", "C", "D"});
  GoTo(4);
  Grid()->verticalHeader()->moveSection(0, 2);
  EXPECT_EQ(Row(1) + Row(2) + Row(3) + Row(4), "BCAD");
  EXPECT_EQ(CurrentRow(), 3);
  EXPECT_EQ(Grid()->verticalHeader()->visualIndex(0), 0);
  // All selected rows move.
  Grid()->selectionModel()->select({Grid()->model()->index(2, 0), Grid()->model()->index(3, 1)},
                                   QItemSelectionModel::ClearAndSelect);
  Grid()->verticalHeader()->moveSection(3, 0);
  EXPECT_EQ(Row(1) + Row(2) + Row(3) + Row(4), "ADBC");
  QTest::keyClick(Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Row(1) + Row(2) + Row(3) + Row(4), "BCAD");
}

TEST_F(GridTest, TheMouseDragsAllSelectedRows) {
  Fill({"A", "B", "C", "D", "E"});
  GoTo(1);
  QTest::keyClick(Grid(), Qt::Key_Down, Qt::ShiftModifier);
  QHeaderView* numbers = Grid()->verticalHeader();
  const auto center = [numbers](int row) {
    return QPoint(5, numbers->sectionViewportPosition(row - 1) + numbers->sectionSize(row - 1) / 2);
  };
  QTest::mousePress(numbers->viewport(), Qt::LeftButton, {}, center(2));
  QTest::mouseMove(numbers->viewport(), center(3));
  QTest::mouseMove(numbers->viewport(), center(4) + QPoint(0, 4));
  QTest::mouseRelease(numbers->viewport(), Qt::LeftButton, {}, center(4) + QPoint(0, 4));
  EXPECT_EQ(Rows(5).join(""), "CDABE");
  EXPECT_EQ(Grid()->selectionModel()->selectedRows().size(), 2);
  // A click selects its row alone, as outside the selection.
  QTest::mouseClick(numbers->viewport(), Qt::LeftButton, {}, center(4));
  EXPECT_EQ(Grid()->selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(CurrentRow(), 4);
}

TEST_F(GridTest, ALongRowIsEditedWhole) {
  constexpr int kLength = 100'000;
  Fill({QString(kLength, 'x')});
  QTest::keyClick(Edit(1), Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(Row(1).size(), kLength);
}

TEST_F(GridTest, ManyLinesPastedIntoAnOpenRowAllArrive) {
  const QStringList lines(1000, QString(100, 'y'));
  PasteInto(Edit(1), lines.join('\n'));
  QApplication::processEvents();
  EXPECT_EQ(Rows(1000), lines);
}

TEST_F(GridTest, TheFailedRowIsReportedToScreenReaders) {
  Fill({"$SILENT OFF", "$FALSCH"});
  EXPECT_EQ(Grid()->accessibleDescription(), "");
  AnswerBoxes();
  Press("TB_PLAY");
  EXPECT_EQ(Grid()->accessibleDescription(), "Zeile 2: Fehler");
  EXPECT_EQ(Cell(2)->text(QAccessible::Name), "$FALSCH");
  EXPECT_EQ(Cell(2)->text(QAccessible::Description), "Fehler");
  EXPECT_EQ(Cell(1)->text(QAccessible::Description), "");
  Fill({"$SILENT OFF", "$SILENT OFF"});
  EXPECT_EQ(Grid()->accessibleDescription(), "");
}

TEST_F(GridTest, TheRunningRowIsReportedToScreenReaders) {
  Fill({"$SILENT OFF", "$SILENT OFF"});
  GoTo(1);
  Press("TB_SINGLESTEP");
  EXPECT_EQ(Grid()->accessibleDescription(), "Zeile 2: läuft");
  EXPECT_EQ(Cell(2)->text(QAccessible::Description), "läuft");
  EXPECT_EQ(StartTyping("x")->accessibleName(), "Zeile 2");
}

class GridLookTest : public testing::Test, protected WindowRecords {
 protected:
  device::FakePortLibrary library_;
  device::FakePortLibrarySource source_{&library_};
};

TEST_F(GridLookTest, TheGridHasTheFontAndColoursOfTheSettings) {
  settings_.command_list = {"Liberation Mono", 13, true, 0x0000FF, 0x00FFFF};
  const MainWindow window(ContextWith(source_, ""));
  const auto* grid = window.findChild<script::CommandGrid*>();
  EXPECT_EQ(grid->font().family(), "Liberation Mono");
  EXPECT_EQ(grid->font().pointSize(), 13);
  EXPECT_TRUE(grid->font().bold());
  EXPECT_EQ(grid->palette().color(QPalette::Base), QColor(255, 255, 0));
  const QModelIndex last = grid->model()->index(1023, 1);
  EXPECT_EQ(last.data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
}

}  // namespace
}  // namespace kolvane::window
