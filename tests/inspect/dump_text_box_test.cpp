#include "inspect/ui/dump_text_box.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "inspect/marked_bytes.h"

namespace kolvane::inspect {
namespace {

class DumpTextBoxTest : public testing::Test {
 protected:
  DumpTextBoxTest() {
    box_.SetDump(DumpOf(Ramp(48)));
    box_.show();
    box_.setFocus();
  }

  void SetCaret(Position position) {
    DumpView view = box_.View();
    view.MoveTo(position);
    box_.Show(view);
  }
  Position Caret() const { return box_.View().caret; }

  DumpTextBox box_;
};

TEST_F(DumpTextBoxTest, ShowsTheDumpWithItsLines) {
  EXPECT_EQ(box_.toPlainText().left(61), "0000 00010203 04050607 08090A0B 0C0D0E0F    ................\n");
  EXPECT_EQ(box_.blockCount(), 4);
  EXPECT_TRUE(box_.fontInfo().fixedPitch());
  EXPECT_EQ(box_.font().family(), "Courier New");
}

TEST_F(DumpTextBoxTest, ItsSelectionLooksTheSameWithoutTheFocus) {
  const QPalette usual = QApplication::palette();
  QPalette pale = usual;
  for (const auto role : {QPalette::Highlight, QPalette::HighlightedText})
    pale.setColor(QPalette::Inactive, role, Qt::gray);
  QApplication::setPalette(pale);
  const DumpTextBox box;
  QApplication::setPalette(usual);
  for (const auto role : {QPalette::Highlight, QPalette::HighlightedText})
    EXPECT_EQ(box.palette().color(QPalette::Inactive, role), usual.color(QPalette::Active, role));
}

TEST_F(DumpTextBoxTest, CountsALineEndAsTwoPositions) {
  SetCaret(2 * 62 + 5);
  EXPECT_EQ(box_.textCursor().position(), 2 * 61 + 5);
  EXPECT_EQ(box_.textCursor().blockNumber(), 2);
  QTextCursor cursor = box_.textCursor();
  cursor.setPosition(61 + 7);
  box_.setTextCursor(cursor);
  EXPECT_EQ(Caret(), 62 + 7);
}

TEST_F(DumpTextBoxTest, KeepsAPositionInsideALineEnd) {
  SetCaret(61);
  EXPECT_EQ(Caret(), 61);
  QTest::keyClick(&box_, Qt::Key_Left);
  EXPECT_EQ(Caret(), 59);
}

TEST_F(DumpTextBoxTest, TheSelectionStartsAtTheCaret) {
  DumpView view = box_.View();
  view.Select(38, 62 + 7 - 38);
  box_.Show(view);
  EXPECT_EQ(box_.textCursor().position(), 38);
  EXPECT_EQ(box_.textCursor().selectionEnd(), 61 + 7);
  EXPECT_EQ(box_.View().caret, 38);
  EXPECT_EQ(box_.View().selected, 62 + 7 - 38);
}

TEST_F(DumpTextBoxTest, LeftAndRightGoTwoPositions) {
  SetCaret(5);
  QTest::keyPress(&box_, Qt::Key_Right);
  EXPECT_EQ(Caret(), 7);
  QTest::keyPress(&box_, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(Caret(), 9);
  EXPECT_FALSE(box_.textCursor().hasSelection());
  QTest::keyPress(&box_, Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(Caret(), 7);
}

TEST_F(DumpTextBoxTest, NoOtherKeyMovesTheCaretOrChangesTheText) {
  SetCaret(67);
  const QString text = box_.toPlainText();
  for (const auto key :
       {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Return,
        Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_A, Qt::Key_Space}) {
    for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier})
      QTest::keyClick(&box_, key, modifier);
  }
  EXPECT_EQ(Caret(), 67);
  EXPECT_FALSE(box_.textCursor().hasSelection());
  EXPECT_EQ(box_.toPlainText(), text);
}

TEST_F(DumpTextBoxTest, EveryReleasedKeyIsReported) {
  QSignalSpy key_up(&box_, &DumpTextBox::KeyUp);
  QTest::keyPress(&box_, Qt::Key_Right);
  EXPECT_EQ(key_up.count(), 0);
  QTest::keyRelease(&box_, Qt::Key_Right);
  QTest::keyClick(&box_, Qt::Key_A);
  EXPECT_EQ(key_up.count(), 2);
}

TEST_F(DumpTextBoxTest, AKeyThatIsHeldDownIsNotReleased) {
  QSignalSpy key_up(&box_, &DumpTextBox::KeyUp);
  SetCaret(67);
  for (int repeat = 0; repeat < 14; ++repeat) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier, {}, repeat > 0);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Left, Qt::NoModifier, {}, true);
    QCoreApplication::sendEvent(&box_, &press);
    QCoreApplication::sendEvent(&box_, &release);
  }
  EXPECT_EQ(key_up.count(), 0);
  EXPECT_EQ(Caret(), 39);
}

TEST_F(DumpTextBoxTest, OnlyClicksOfTheLeftButtonAreReported) {
  QSignalSpy click(&box_, &DumpTextBox::Click);
  QTest::mouseClick(box_.viewport(), Qt::RightButton);
  EXPECT_EQ(click.count(), 0);
  QTest::mouseClick(box_.viewport(), Qt::LeftButton);
  EXPECT_EQ(click.count(), 1);
}

TEST_F(DumpTextBoxTest, SelectedBytesAreClickedNotDragged) {
  DumpView view = box_.View();
  view.Select(5, 8);
  box_.Show(view);
  const QPoint on_selection = box_.cursorRect().center() + QPoint(2, 0);
  QTest::mousePress(box_.viewport(), Qt::RightButton, {}, on_selection);
  EXPECT_EQ(box_.View().selected, 8);
  QSignalSpy click(&box_, &DumpTextBox::Click);
  QTest::mousePress(box_.viewport(), Qt::LeftButton, {}, on_selection);
  EXPECT_FALSE(box_.textCursor().hasSelection());
  QTest::mouseRelease(box_.viewport(), Qt::LeftButton, {}, on_selection);
  EXPECT_EQ(click.count(), 1);
  EXPECT_EQ(Caret(), 5);
}

TEST_F(DumpTextBoxTest, ADoubleClickSelectsNoWord) {
  SetCaret(9);
  const QPoint position = box_.cursorRect().center();
  QTest::mouseDClick(box_.viewport(), Qt::LeftButton, {}, position);
  EXPECT_EQ(Caret(), 9);
  EXPECT_FALSE(box_.textCursor().hasSelection());
}

TEST_F(DumpTextBoxTest, AHighlightIsShownWithTwoLinesAroundIt) {
  box_.SetDump(DumpOf(std::string(100 * 16, 'A')));
  QScrollBar* bar = box_.verticalScrollBar();
  ASSERT_LT(bar->pageStep(), 40);
  box_.ShowHighlight({50 * 16, 1});
  EXPECT_EQ(bar->value() + bar->pageStep() - 1, 52);
  box_.ShowHighlight({20 * 16, 1});
  EXPECT_EQ(bar->value(), 18);
  box_.ShowHighlight({20 * 16 + 1, 1});
  EXPECT_EQ(bar->value(), 18) << "already in view";
}

TEST_F(DumpTextBoxTest, NeighbouringFieldsHaveDifferentColours) {
  for (const QColor base : {Qt::white, Qt::black}) {
    QPalette palette(base);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, base == Qt::white ? Qt::black : Qt::white);
    box_.setPalette(palette);
    for (std::size_t number = 0; number < 12; ++number) {
      EXPECT_TRUE(box_.FieldColor(number).isValid()) << number;
      EXPECT_NE(box_.FieldColor(number), box_.FieldColor(number + 1)) << number;
    }
    EXPECT_EQ(box_.FieldColor(0).lightness() > 128, base == Qt::white) << "the text stays readable";
  }
}

TEST_F(DumpTextBoxTest, TextInsideTheDumpKeepsItsPositions) {
  box_.SetDump(BuildDump("<41>\r\n<42>\r<43>\n<44>"));
  DumpView view = box_.View();
  for (Position position = 0; position <= view.Length(); ++position) {
    const auto at = static_cast<std::size_t>(position);
    if (position > 0 && position < view.Length() && view.text[at - 1] == '\r' && view.text[at] == '\n')
      continue;
    view.MoveTo(position);
    box_.Show(view);
    const char c = position < view.Length() ? view.text[at] : '\n';
    const QChar expected = c == '\r' || c == '\n' ? QChar(QChar::ParagraphSeparator) : QChar(QLatin1Char(c));
    EXPECT_EQ(box_.document()->characterAt(box_.textCursor().position()), expected) << position;
  }
}

}  // namespace
}  // namespace kolvane::inspect
