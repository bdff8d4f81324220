#include "window/find_bar.h"

#include <QLayout>
#include <QMenuBar>
#include <QScrollBar>
#include <QSignalSpy>

#include "gui/paint_counter.h"
#include "window/grid_fixture.h"

namespace kolvane::window {
namespace {

/// The terminal window with the find bar, which its tests open.
class FindBarTest : public GridFixture {
 protected:
  FindBar* Bar() { return Find<FindBar>("FindBar"); }
  QLineEdit* Text() { return Find<QLineEdit>("FindText"); }
  QString Count() {
    Finish();
    return Find<QLabel>("FindCount")->text();
  }
  void Finish() {
    while (Bar()->IsOpen() && !Bar()->target()->State().complete)
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  void OpenIn(QWidget* widget) {
    widget->setFocus();
    Press("mnuFind");
  }
  void Search(const QString& text) {
    Text()->setText(text);
    Finish();
  }
  void Click(const char* button) {
    Find<QPushButton>(button)->click();
    Finish();
  }
  QString Selected() { return Pane()->selectedText(); }
};

TEST_F(FindBarTest, IsHiddenAndTakesNoSpaceUntilOpened) {
  EXPECT_FALSE(Bar()->isVisible());
  const int height = Find<QWidget>("SplitContainer")->height();
  OpenIn(Pane());
  EXPECT_TRUE(Bar()->isVisible());
  EXPECT_LT(Find<QWidget>("SplitContainer")->height(), height);
  EXPECT_EQ(window_.focusWidget(), Text());
  Click("FindClose");
  EXPECT_FALSE(Bar()->isVisible());
  EXPECT_EQ(Find<QWidget>("SplitContainer")->height(), height);
}

TEST_F(FindBarTest, ItsFieldsHaveRoomForAWord) {
  OpenIn(Grid());
  for (const char* field : {"FindText", "ReplaceText"})
    EXPECT_GE(Find<QLineEdit>(field)->width(), 20 * Text()->fontMetrics().averageCharWidth()) << field;
  EXPECT_GE(Find<QLabel>("FindCount")->width(), Text()->fontMetrics().horizontalAdvance("Nichts gefunden"));
}

TEST_F(FindBarTest, IsSeenInTheSmallestWindow) {
  for (const int width : {400, 700}) {
    window_.resize(width, 0);
    for (QWidget* widget : {static_cast<QWidget*>(Pane()), static_cast<QWidget*>(Grid())}) {
      OpenIn(widget);
      EXPECT_EQ(Bar()->height(), Bar()->layout()->heightForWidth(Bar()->width())) << width;
      EXPECT_TRUE(Bar()->parentWidget()->rect().contains(Bar()->geometry())) << width;
      EXPECT_GE(Find<QWidget>("SplitContainer")->height(), 60) << width;
      for (const QWidget* part : Bar()->findChildren<QWidget*>()) {
        if (!part->isVisible()) continue;
        const QRect place(part->mapTo(Bar(), QPoint()), part->size());
        EXPECT_TRUE(Bar()->rect().contains(place)) << width << ' ' << part->objectName().toStdString();
      }
      Click("FindClose");
    }
  }
}

TEST_F(FindBarTest, IsAsHighAsItsWidthNeeds) {
  OpenIn(Grid());
  for (int width = 400; width < 1000; width += 3) {
    window_.resize(width, 600);
    EXPECT_EQ(Bar()->height(), Bar()->layout()->heightForWidth(Bar()->width())) << width;
    const QRect place = Bar()->geometry();
    EXPECT_EQ(place.left(), Bar()->parentWidget()->width() - 1 - place.right()) << "margins of " << width;
  }
}

TEST_F(FindBarTest, EachPartHasAKeyOfItsOwnInTheWindow) {
  QStringList keys;
  const auto add = [&keys](const QString& text) {
    const QString key = QKeySequence::mnemonic(text).toString();
    EXPECT_FALSE(key.isEmpty() || keys.contains(key)) << text.toStdString();
    keys << key;
  };
  for (const QAction* menu : window_.menuBar()->actions()) add(menu->text());
  for (const auto* label : Find<QWidget>("Toolbar2")->findChildren<QLabel*>()) add(label->text());
  add(Find<QPushButton>("cmdSend")->text());
  for (const auto* button : Bar()->findChildren<QAbstractButton*>()) add(button->text());
  for (const auto* label : Bar()->findChildren<QLabel*>()) {
    if (label->buddy() == Find<QLineEdit>("ReplaceText")) add(label->text());
  }
}

TEST_F(FindBarTest, FindsInThePane) {
  for (const char* line : {"Messwert 1", "fehler", "messwert 2"}) AddLine(line);
  Pane()->Select(0, 0);
  OpenIn(Pane());
  EXPECT_EQ(Count(), "");
  Search("messwert");
  EXPECT_EQ(Count(), "1 von 2");
  EXPECT_EQ(Selected(), "Messwert");
  Click("FindNext");
  EXPECT_EQ(Count(), "2 von 2");
  Press("mnuFindNext");
  EXPECT_EQ(Count(), "1 von 2") << "from the start again";
  Press("mnuFindPrevious");
  EXPECT_EQ(Count(), "2 von 2");
  AddLine("noch ein Messwert");
  Pane()->Flush();
  EXPECT_EQ(Count(), "2 von 3");
  Find<QCheckBox>("FindCase")->click();
  EXPECT_EQ(Count(), "1 von 1");
  Search("nirgends");
  EXPECT_EQ(Count(), "Nichts gefunden");
}

TEST_F(FindBarTest, EnterFindsTheNextHitAndWithShiftThePrevious) {
  for (const char* line : {"a1", "a2", "a3"}) AddLine(line);
  Pane()->Select(0, 0);
  OpenIn(Pane());
  Search("a");
  QTest::keyClick(Text(), Qt::Key_Return);
  EXPECT_EQ(Count(), "2 von 3");
  QTest::keyClick(Text(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(Count(), "1 von 3");
}

TEST_F(FindBarTest, EscClosesAndReturnsTheFocus) {
  OpenIn(Pane());
  QTest::keyClick(Text(), Qt::Key_Escape);
  EXPECT_FALSE(Bar()->isVisible());
  EXPECT_EQ(window_.focusWidget(), Pane());
  OpenIn(Grid());
  QTest::keyClick(Text(), Qt::Key_Escape);
  EXPECT_EQ(window_.focusWidget(), Grid());
  auto* command = Find<QComboBox>("cmbCommand");
  OpenIn(command);
  OpenIn(Text());
  QTest::keyClick(Text(), Qt::Key_Escape);
  EXPECT_EQ(window_.focusWidget(), command);
  OpenIn(command);
  command->setEnabled(false);
  QTest::keyClick(Text(), Qt::Key_Escape);
  EXPECT_EQ(window_.focusWidget(), Pane());
}

TEST_F(FindBarTest, AButtonPressedJustBeforeItWasClosedDoesNothing) {
  Fill({"MSV? 1"});
  OpenIn(Grid());
  Search("MSV");
  for (const char* name : {"ReplaceAll", "ReplaceNext"}) {
    auto* button = Find<QPushButton>(name);
    QSignalSpy clicked(button, &QPushButton::clicked);
    // As its key does.
    button->animateClick();
    Bar()->Close();
    EXPECT_TRUE(clicked.wait()) << name;
    EXPECT_EQ(Row(1), "MSV? 1") << name;
    OpenIn(Grid());
  }
  Click("ReplaceAll");
  EXPECT_EQ(Row(1), "? 1");
}

TEST_F(FindBarTest, SearchesForTheSelection) {
  AddLine("one two");
  AddLine("two");
  Pane()->Select(5, 8);
  OpenIn(Pane());
  EXPECT_EQ(Text()->text(), "two");
  EXPECT_EQ(Count(), "1 von 2");
}

TEST_F(FindBarTest, ReportsWhatIsWrongWithAnExpression) {
  AddLine("a(b");
  OpenIn(Pane());
  Find<QCheckBox>("FindRegex")->click();
  Search("a(");
  EXPECT_EQ(Count(), "Ungültiger Ausdruck");
  EXPECT_TRUE(Text()->toolTip().startsWith("Kein gültiger Ausdruck"));
  Search("a\\(");
  EXPECT_EQ(Count(), "1 von 1");
  EXPECT_FALSE(Text()->toolTip().startsWith("Kein"));
}

TEST_F(FindBarTest, FindsInTheListAndGoesToTheRow) {
  Fill({"*IDN?", "MEAS?", "$DELAY 10", "MEAS?"});
  GoTo(3);
  OpenIn(Grid());
  Search("meas");
  EXPECT_EQ(Count(), "2 von 2");
  EXPECT_EQ(CurrentRow(), 4);
  Click("FindNext");
  EXPECT_EQ(CurrentRow(), 2);
  EXPECT_EQ(Grid()->list().current_row(), 2);
  Fill({"MEAS?"});
  EXPECT_EQ(Count().right(1), "3") << "added lines count, too";
}

TEST_F(FindBarTest, FindsFromTheRowThatTheUserWentTo) {
  Fill({"$DELAY 10 MEAS?", "", "MEAS?", "MEAS?"});
  GoTo(1);
  OpenIn(Grid());
  Search("meas");
  ASSERT_EQ(Count(), "1 von 3");
  GoTo(3);
  Click("FindNext");
  EXPECT_EQ(Count(), "2 von 3");
  GoTo(1);
  Click("FindNext");
  ASSERT_EQ(Count(), "1 von 3");
  GoTo(3);
  Click("FindPrevious");
  EXPECT_EQ(Count(), "1 von 3");
}

TEST_F(FindBarTest, ReplacesOneHitAfterTheOther) {
  Fill({"a b a", "a"});
  GoTo(1);
  OpenIn(Grid());
  Search("a");
  Find<QLineEdit>("ReplaceText")->setText("aa");
  Click("ReplaceNext");
  EXPECT_EQ(Row(1), "aa b a");
  Click("ReplaceNext");
  EXPECT_EQ(Row(1), "aa b aa");
  Click("ReplaceNext");
  EXPECT_EQ(Row(2), "aa");
}

TEST_F(FindBarTest, ReplacesAllAsOneStepOfUndo) {
  Fill({"A=1", "B", "C=3"});
  OpenIn(Grid());
  Find<QCheckBox>("FindRegex")->click();
  Search("(\\w)=(\\d)");
  Find<QLineEdit>("ReplaceText")->setText("\\2=\\1");
  Click("ReplaceAll");
  EXPECT_EQ(Row(1) + Row(2) + Row(3), "1=AB3=C");
  EXPECT_EQ(Find<QLabel>("FindCount")->text(), "2 ersetzt");
  Grid()->undo();
  EXPECT_EQ(Row(1) + Row(2) + Row(3), "A=1BC=3");
}

TEST_F(FindBarTest, FindsInAListThatWasOpenedMeanwhile) {
  Fill({"ein langer Befehl MSV"});
  OpenIn(Grid());
  Search("MSV");
  EXPECT_EQ(Count(), "1 von 1");
  Grid()->list().ShowFile("", {"IDN?", "MSV? 1", "MSV? 2"}, 0);
  EXPECT_EQ(Count(), "0 von 2");
  Click("ReplaceNext");
  EXPECT_EQ(Row(1), "IDN?");
  Click("FindNext");
  EXPECT_EQ(CurrentRow(), 2);
  Click("ReplaceNext");
  EXPECT_EQ(Row(2), "? 1");
}

TEST_F(FindBarTest, KeepsOneLineOfPastedText) {
  Fill({"MEAS? 1,2"});
  OpenIn(Grid());
  Search(QStringLiteral("\r\n1,2\r\nID?\n"));
  EXPECT_EQ(Text()->text(), "1,2");
  EXPECT_EQ(Count(), "1 von 1");
  auto* replacement = Find<QLineEdit>("ReplaceText");
  replacement->setText(QStringLiteral("3\n"));
  EXPECT_EQ(replacement->text(), "3");
  Click("ReplaceNext");
  EXPECT_EQ(Row(1), "MEAS? 3");
}

// With its line end, a text pasted whole would be found beyond the end of its row.
TEST_F(FindBarTest, ReplacesARowPastedWithItsLineEnd) {
  Fill({"ID?"});
  OpenIn(Grid());
  Search(QStringLiteral("ID?\n"));
  Find<QLineEdit>("ReplaceText")->setText(QStringLiteral("RST"));
  Click("ReplaceNext");
  EXPECT_EQ(Row(1), "RST");
}

TEST_F(FindBarTest, ReplacesInTheListOnly) {
  OpenIn(Pane());
  EXPECT_FALSE(Find<QLineEdit>("ReplaceText")->isVisible());
  OpenIn(Grid());
  EXPECT_TRUE(Find<QLineEdit>("ReplaceText")->isVisible());
}

TEST_F(FindBarTest, TheListIsPaintedAgainWithOtherHits) {
  Fill({"MEAS?"});
  OpenIn(Grid());
  Search("meas");
  QApplication::processEvents();
  gui::PaintCounter rows;
  Grid()->viewport()->installEventFilter(&rows);
  gui::PaintCounter marks;
  Grid()->verticalScrollBar()->installEventFilter(&marks);
  Search("meas without a hit");
  QApplication::processEvents();
  EXPECT_GT(rows.paints, 0);
  EXPECT_GT(marks.paints, 0);
}

TEST_F(FindBarTest, HighlightsTheHitsOfTheList) {
  Fill({"MEAS?"});
  GoTo(5);
  const auto cell = [this] {
    const QRect rect = Grid()->visualRect(Grid()->model()->index(0, 1));
    return Grid()->viewport()->grab(rect).toImage();
  };
  const QImage before = cell();
  OpenIn(Grid());
  Search("eas");
  EXPECT_NE(cell(), before);
}

}  // namespace
}  // namespace kolvane::window
