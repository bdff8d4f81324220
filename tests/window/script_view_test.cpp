// Grid and Toolbar3 in the window.

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <string>
#include <utility>

#include "window/grid_fixture.h"

namespace kolvane::window {
namespace {

class ScriptViewTest : public GridFixture {};

TEST_F(ScriptViewTest, WhatIsBeingTypedIsPartOfTheListThatIsPlayed) {
  GoTo(2);
  ASSERT_NE(StartTyping("STP"), nullptr);
  Press("TB_PLAY");
  EXPECT_EQ(std::count(library_.calls.begin(), library_.calls.end(), "WritePort(\"STP\n\")"), 1);
  EXPECT_EQ(Row(2), "STP");
}

TEST_F(ScriptViewTest, WhatIsBeingTypedIsSaved) {
  const std::string file = folder_.Path("a.CMD");
  base::WriteBytes(file, "");
  window_.OpenCommandFile(file);
  ASSERT_NE(StartTyping("eins"), nullptr);
  Press("mnuSaveCommandFile");
  EXPECT_EQ(base::ReadBytes(file).substr(0, 6), "eins\r\n");
  EXPECT_EQ(CurrentRow(), 1);
}

TEST_F(ScriptViewTest, ClearingTheListDiscardsWhatIsBeingTyped) {
  GoTo(3);
  ASSERT_NE(StartTyping("drei"), nullptr);
  Press("TB_NEWSCRIPT");
  QApplication::processEvents();
  EXPECT_EQ(Grid()->list().LastUsedRow(), 0);
  EXPECT_EQ(CurrentRow(), 1);
}

TEST_F(ScriptViewTest, TheRowWithAnErrorStaysInView) {
  QStringList rows(60, "$DELAY 0");
  rows[49] = "$FALSCH";
  Fill(rows);
  const auto in_view = [this] {
    return Grid()->viewport()->rect().contains(Grid()->visualRect(Grid()->model()->index(49, 1)));
  };
  GoTo(1);
  ASSERT_FALSE(in_view());
  // The view follows the run once a frame, even while the message is shown.
  bool shown_with_the_message = false;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    timer.stop();
    shown_with_the_message = QTest::qWaitFor(in_view);
    box->accept();
  });
  timer.start(0);
  Press("TB_PLAY");
  EXPECT_TRUE(shown_with_the_message);
  EXPECT_EQ(CurrentRow(), 50);
  EXPECT_TRUE(in_view());
}

TEST_F(ScriptViewTest, ARunWithoutItsDeviceEndsFromWithinAMessage) {
  library_.mode = device::FakePortLibrary::Mode::kFail;
  device_.connected = false;
  QStringList rows;
  for (int row = 0; row < 40; ++row) rows << "MSV? " + QString::number(row);
  Fill(rows);
  int boxes = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    EXPECT_EQ(box->text(), "Fehler beim Verbindungsaufbau: -7 (-7)");
    if (++boxes < 3) return box->accept();
    auto* end = box->findChild<QPushButton*>("EndRun");
    ASSERT_NE(end, nullptr);
    EXPECT_EQ(end->text(), "Befehlsliste beenden");
    end->click();
  });
  timer.start(0);
  Press("TB_PLAY");
  EXPECT_EQ(boxes, 3);
  EXPECT_FALSE(window_.property("busy").toBool());
  // Without a run there is nothing to end.
  timer.stop();
  OnDialog<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.findChild<QPushButton*>("EndRun"), nullptr);
    box.accept();
  });
  Press("mnuConnect");
}

TEST_F(ScriptViewTest, AnErrorOfARowCanOnlyBeConfirmed) {
  Fill({"$FALSCH"});
  const auto check = [](QMessageBox& box) {
    EXPECT_EQ(box.text(), "Fehler in Befehlsliste (Zeile 1): Unbekannter $ Befehl");
    EXPECT_EQ(box.buttons(), QList<QAbstractButton*>{box.button(QMessageBox::Ok)});
    box.accept();
  };
  OnDialog<QMessageBox>(check);
  Press("TB_PLAY");
  GoTo(2);
  GoTo(1);
  OnDialog<QMessageBox>(check);
  Press("TB_SINGLESTEP");
  EXPECT_EQ(dialogs_, 2);
}

TEST_F(ScriptViewTest, AMessageThatConcernsNoRowOfARunCanOnlyBeConfirmed) {
  FillLongList();
  QTimer::singleShot(20, &window_, [&] {
    OnDialog<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(box.buttons(), QList<QAbstractButton*>{box.button(QMessageBox::Ok)});
      box.accept();
    });
    Press("mnuBinInspect");
    Press("TB_BREAK");
  });
  Press("TB_PLAY");
  EXPECT_EQ(dialogs_, 1);
  EXPECT_TRUE(WasEndedEarly());
}

TEST_F(ScriptViewTest, TheViewDoesNotFollowARunPastTheEndOfTheList) {
  Fill({"' eins", "' zwei"});
  Press("TB_PLAY");
  EXPECT_EQ(CurrentRow(), 1);
  EXPECT_EQ(Grid()->list().current_row(), 1025);
  EXPECT_EQ(Grid()->rowAt(0), 0);
}

TEST_F(ScriptViewTest, TypingAfterARunGoesToTheVisibleCursor) {
  Fill({"$SILENT OFF", "$SILENT OFF", "' Ende"});
  GoTo(1);
  Press("TB_PLAY");
  EXPECT_EQ(CurrentRow(), 2);
  Type("$SILENT ON");
  EXPECT_EQ(Row(2), "$SILENT ON");
  EXPECT_EQ(Grid()->list().LastUsedRow(), 3);
  EXPECT_EQ(CurrentRow(), 3);
}

TEST_F(ScriptViewTest, AfterAJumpToNowhereTheCursorIsOnTheJump) {
  Fill({"$SILENT OFF", "$GOTO weg", "$SILENT OFF"});
  AnswerBoxes();
  Press("TB_PLAY");
  EXPECT_EQ(boxes_.texts(), QStringList{"Fehler in Befehlsliste (Zeile 1024): Sprungziel nicht gefunden"});
  EXPECT_EQ(CurrentRow(), 2);
}

TEST_F(ScriptViewTest, AfterARunAStepStartsAtTheFirstRowUnlessTheUserSelectsAnother) {
  Fill({"$SILENT OFF", "$SILENT OFF", "$SILENT OFF"});
  Press("TB_PLAY");
  EXPECT_EQ(CurrentRow(), 3);
  Press("TB_SINGLESTEP");
  EXPECT_EQ(CurrentRow(), 1);
  Press("TB_PLAY");
  QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, {},
                    Grid()->visualRect(Grid()->model()->index(2, 1)).center());
  EXPECT_EQ(Grid()->list().current_row(), 3);
}

TEST_F(ScriptViewTest, TheWindowMayBeDestroyedWhileARowIsEdited) {
  Fill({"MSV?"});
  QTest::keyClicks(Grid(), "RANGE");
  EXPECT_NE(Grid()->findChild<QLineEdit*>(), nullptr);
  // The fixture's destructor follows: an editor that commits its text then has no list.
}

TEST_F(ScriptViewTest, RecordsWhatIsSentByHand) {
  Press("TB_RECORD");
  EXPECT_EQ(Find<QAction>("TB_RECORD")->property("Tag").toString(), "1");
  EXPECT_EQ(Find<QAction>("TB_RECORD")->property("Image").toInt(), 16);
  auto* box = Find<QComboBox>("cmbCommand");
  library_.replies = {{"1\r\n"}};
  box->setCurrentText("ONE?");
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_EQ(Row(1), "ONE?");
  Press("TB_RECORD");
  EXPECT_EQ(Find<QAction>("TB_RECORD")->property("Image").toInt(), 14);
}

TEST_F(ScriptViewTest, TheRowThatRanLastIsInViewAfterARun) {
  const auto in_view = [this](int row) {
    return Grid()->viewport()->rect().contains(Grid()->visualRect(Grid()->model()->index(row - 1, 1)));
  };
  QStringList rows(200, "$DELAY 0");
  rows[119] = "$STOP";
  Fill(rows);
  GoTo(1);
  Press("TB_PLAY");
  EXPECT_EQ(CurrentRow(), 120);
  EXPECT_TRUE(in_view(120));
  GoTo(120);
  QTest::keyClick(Grid(), Qt::Key_Delete);
  GoTo(1);
  Press("TB_PLAY");
  EXPECT_TRUE(in_view(200));
}

TEST_F(ScriptViewTest, ARowPastTheEndOfTheListIsScrolledIntoView) {
  Fill({"eins"});
  QTest::keyClick(Grid(), Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(CurrentRow(), 1024);
  EXPECT_TRUE(Grid()->viewport()->rect().contains(Grid()->visualRect(Grid()->currentIndex()).center()));
}

TEST_F(ScriptViewTest, TheRowRecordedLastIsInView) {
  for (int row = 1; row <= 200; ++row) Grid()->list().AddToScript("MSV?");
  EXPECT_EQ(CurrentRow(), 200);
  EXPECT_TRUE(Grid()->viewport()->rect().contains(Grid()->visualRect(Grid()->currentIndex()).center()));
}

TEST_F(ScriptViewTest, PrintsTheList) {
  Fill({"MSV?"});
  ChooseFile(folder_.Path("a.PDF"));
  Press("TB_PRINTSCRIPT");
  EXPECT_TRUE(base::ReadBytes(folder_.Path("a.PDF")).starts_with("%PDF"));
}

TEST_F(ScriptViewTest, SaveAsEmptiesTheFileAndSaveFillsIt) {
  Fill({"eins", "zwei"});
  GoTo(2);
  Cancel<QFileDialog>();
  Press("mnuSaveCommandFileAs");
  EXPECT_EQ(CurrentRow(), 2);
  EXPECT_EQ(Status(), "Befehlsliste: Unbenannt");
  ChooseFile(folder_.Path("a.CMD"), "Befehlsliste speichern");
  Press("mnuSaveCommandFileAs");
  EXPECT_EQ(CurrentRow(), 1);
  EXPECT_EQ(Row(1), "eins");
  EXPECT_EQ(base::ReadBytes(folder_.Path("a.CMD")), "");
  EXPECT_EQ(Status().toStdString(), "Befehlsliste: " + folder_.Path("a.CMD"));
  Press("mnuSaveCommandFile");
  EXPECT_EQ(base::ReadBytes(folder_.Path("a.CMD")).substr(0, 14), "eins\r\nzwei\r\n\r\n");
}

TEST_F(ScriptViewTest, SavesAndLoadsThroughTheDialogs) {
  Fill({"Größe?"});
  ChooseFile(folder_.Path("a.CMD"), "Befehlsliste speichern");
  Press("TB_SAVESCRIPT");
  EXPECT_EQ(base::ReadBytes(folder_.Path("a.CMD")).substr(0, 9),
            "Gr\xF6\xDF"
            "e?\r\n\r");
  Press("TB_NEWSCRIPT");
  EXPECT_EQ(Row(1), "");
  EXPECT_EQ(Status(), "Befehlsliste: Unbenannt");
  ChooseFile(folder_.Path("a.CMD"), "Befehlsliste öffnen");
  Press("TB_OPENSCRIPT");
  EXPECT_EQ(Row(1), "Größe?");
  EXPECT_EQ(Status().toStdString(), "Befehlsliste: " + folder_.Path("a.CMD"));
}

TEST_F(ScriptViewTest, AStepHighlightsTheNextRow) {
  Fill({"$SILENT OFF", "$SILENT OFF"});
  GoTo(1);
  Press("TB_SINGLESTEP");
  EXPECT_EQ(CurrentRow(), 2);
  EXPECT_EQ(CellData(2, Qt::BackgroundRole).value<QColor>(), QColor(0, 0, 255));
  EXPECT_EQ(CellData(2, Qt::ForegroundRole).value<QColor>(), QColor(255, 255, 0));
  EXPECT_TRUE(CellData(2, Qt::FontRole).value<QFont>().bold());
}

TEST_F(ScriptViewTest, StopEndsAnEndlessListAndEnablesTheControls) {
  FillLongList();
  bool locked = false;
  QTimer::singleShot(20, &window_, [&] {
    locked = !Find<QToolBar>("Toolbar1")->isEnabled() && !Enabled("TB_OPENSCRIPT") && Enabled("TB_STOP");
    Press("TB_PLAY");
    Press("TB_SINGLESTEP");
    Press("TB_STOP");
  });
  Press("TB_PLAY");
  EXPECT_TRUE(locked);
  EXPECT_TRUE(WasEndedEarly());
  EXPECT_EQ(script_.run.ScriptRunning, 0);
  EXPECT_TRUE(Find<QToolBar>("Toolbar1")->isEnabled());
  EXPECT_TRUE(Enabled("TB_OPENSCRIPT"));
}

// Calls a function from the event loop after the exchange of one command.
class AfterCommand final : public terminal::ExchangeListener {
 public:
  AfterCommand(std::string command, std::function<void()> event)
      : command_(std::move(command)), event_(std::move(event)) {}

  void ExchangeEnded(std::string_view command, const terminal::ExchangeResult&) override {
    if (command == command_) QTimer::singleShot(0, qApp, event_);
  }

 private:
  std::string command_;
  std::function<void()> event_;
};

TEST_F(ScriptViewTest, BreakEndsARunAfterACommandHoweverShortItIs) {
  Fill({"STP 1", "STP 2", "STP 3", "STP 4"});
  AfterCommand listener("STP 3", [this] { Press("TB_BREAK"); });
  window_.core().exchange.Listen(&listener);
  Press("TB_PLAY");
  window_.core().exchange.Listen(nullptr);
  EXPECT_EQ(library_.calls.back(), "WritePort(\"STP 3\n\")");
  EXPECT_EQ(Grid()->list().current_row(), 3);
}

TEST_F(ScriptViewTest, BreakEndsARunAfterAnAnswerReadWithoutACommand) {
  Fill({"STP 1", "$READ", "STP 2"});
  AfterCommand listener("", [this] { Press("TB_BREAK"); });
  window_.core().exchange.Listen(&listener);
  Press("TB_PLAY");
  window_.core().exchange.Listen(nullptr);
  EXPECT_EQ(Grid()->list().current_row(), 2);
}

TEST_F(ScriptViewTest, ACommandTypedDuringARunIsSentBetweenTwoRows) {
  FillLongList();
  library_.replies = {{"1\r\n"}};
  QTimer::singleShot(20, &window_, [&] {
    auto* box = Find<QComboBox>("cmbCommand");
    box->setCurrentText("ONE?");
    QTest::keyClick(box, Qt::Key_Return);
    Press("TB_BREAK");
  });
  Press("TB_PLAY");
  EXPECT_TRUE(WasEndedEarly());
  EXPECT_EQ(std::count(library_.calls.begin(), library_.calls.end(), "WritePort(\"ONE?\n\")"), 1);
  EXPECT_TRUE(PaneText().endsWith("ONE?\n1"));
}

TEST_F(ScriptViewTest, ThePopupMenuActsOnTheGridItWasOpenedOn) {
  Fill({"eins", "zwei"});
  AddLine("bleibt");
  GoTo(2);
  Q_EMIT Grid()->popupRequested(QPoint(0, 0));
  window_.findChild<QMenu*>("mnuPOP1")->close();
  Press("mnuCopy");
  EXPECT_EQ(QApplication::clipboard()->text(), "zwei");
  Press("mnuCut");
  EXPECT_EQ(Row(2), "");
  GoTo(3);
  Press("mnuPaste");
  EXPECT_EQ(Row(3), "zwei");
  Press("mnuClearAll");
  EXPECT_EQ(Row(1) + Row(3), "");
  EXPECT_TRUE(PaneText().endsWith("bleibt"));
}

TEST_F(ScriptViewTest, AClickMakesTheControlTheTargetOfThePopupMenu) {
  Fill({"bleibt"});
  AddLine("geht");
  QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, {},
                    Grid()->visualRect(Grid()->model()->index(0, 1)).center());
  Press("mnuCopy");
  EXPECT_EQ(QApplication::clipboard()->text(), "bleibt");
  QTest::mouseClick(Pane()->viewport(), Qt::RightButton, {}, QPoint(5, 5));
  auto* popup = window_.findChild<QMenu*>("mnuPOP1");
  EXPECT_TRUE(popup->isVisible());
  popup->close();
  Press("mnuClearAll");
  EXPECT_EQ(PaneText(), "");
  EXPECT_EQ(Row(1), "bleibt");
}

TEST_F(ScriptViewTest, TheButtonsCutCopyAndPasteActOnWhatWasClickedLast) {
  Fill({"eins", "zwei"});
  AddLine("Ausgabe");
  Pane()->selectAll();
  Press("TB_COPY");
  EXPECT_TRUE(QApplication::clipboard()->text().endsWith("Ausgabe"));
  QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, {},
                    Grid()->visualRect(Grid()->model()->index(1, 1)).center());
  Press("TB_CUT");
  EXPECT_EQ(QApplication::clipboard()->text(), "zwei");
  EXPECT_EQ(Row(2), "");
  GoTo(3);
  Press("TB_PASTE");
  EXPECT_EQ(Row(3), "zwei");
  QTest::mouseClick(Pane()->viewport(), Qt::RightButton, {}, QPoint(5, 5));
  window_.findChild<QMenu*>("mnuPOP1")->close();
  Press("TB_CUT");
  EXPECT_EQ(PaneText(), "");
  EXPECT_EQ(Row(1) + Row(3), "einszwei");
}

TEST_F(ScriptViewTest, TheTabKeyAlsoMakesTheGridTheTarget) {
  Fill({"eins"});
  GoTo(1);
  QFocusEvent tab(QEvent::FocusIn, Qt::TabFocusReason);
  QApplication::sendEvent(Grid(), &tab);
  Press("TB_COPY");
  EXPECT_EQ(QApplication::clipboard()->text(), "eins");
}

TEST_F(ScriptViewTest, ClosingEndsARunAndThenTheWindow) {
  FillLongList();
  int unloads = 0;
  window_.OnUnload([&] {
    ++unloads;
    EXPECT_EQ(script_.run.ScriptRunning, 0);
  });
  QTimer::singleShot(20, &window_, [&] {
    window_.close();
    EXPECT_TRUE(window_.isVisible());
  });
  Press("TB_PLAY");
  EXPECT_TRUE(WasEndedEarly());
  EXPECT_FALSE(window_.isVisible());
  EXPECT_EQ(unloads, 1);
}

}  // namespace
}  // namespace kolvane::window
