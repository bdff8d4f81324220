// Moving the caret by keys, and the remembered block.
#include <QSignalSpy>

#include "pane_window.h"

namespace kolvane::pane {
namespace {

TEST_F(PaneWindow, ArrowsMoveAndShiftSelects) {
  SetText("abc\ndef");
  Key(Qt::Key_Right);
  EXPECT_EQ(State(), "a|bc/def");
  Key(Qt::Key_Down);
  EXPECT_EQ(State(), "abc/d|ef");
  Key(Qt::Key_Right, Qt::ShiftModifier);
  Key(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(State(), "ab[|c/d]ef");
  Key(Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(State(), "a[|bc/d]ef");
  Key(Qt::Key_Right);
  EXPECT_EQ(State(), "abc/d|ef") << "Right ends a selection at its end";
}

TEST_F(PaneWindow, HomeAndEndMoveWithinTheLine) {
  SetText("abc\ndef");
  pane_.Select(5, 5);
  Key(Qt::Key_Home);
  EXPECT_EQ(State(), "abc/|def");
  Key(Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(State(), "abc/[def|]");
  Key(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(State(), "|abc/def");
  Key(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(State(), "[abc/def|]");
}

TEST_F(PaneWindow, ControlMovesByWords) {
  SetText("one two");
  Key(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(State(), "one |two");
  Key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(State(), "one [two|]");
  Key(Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(State(), "one |two");
}

TEST_F(PaneWindow, UpAndDownKeepTheirColumnOverShortLines) {
  SetText("abcd\n\nabcd");
  pane_.Select(3, 3);
  Key(Qt::Key_Down);
  EXPECT_EQ(State(), "abcd/|/abcd");
  Key(Qt::Key_Down);
  EXPECT_EQ(State(), "abcd//abc|d");
}

TEST_F(PaneWindow, PagesMoveTheCaretAndTheView) {
  AppendLines(100);
  Key(Qt::Key_PageUp);
  const std::size_t page = pane_.text().store().LineAt(pane_.text().caret());
  EXPECT_EQ(page, 100u - static_cast<std::size_t>(bar().pageStep()) + 1);
  Key(Qt::Key_PageUp);
  EXPECT_FALSE(IsAtEnd());
  EXPECT_TRUE(pane_.viewport()->rect().contains(PointOf(pane_.text().caret())));
  Key(Qt::Key_PageDown, Qt::ShiftModifier);
  EXPECT_FALSE(pane_.selectedText().isEmpty());
  for (int i = 0; i < 30; ++i) Key(Qt::Key_PageUp);
  EXPECT_EQ(pane_.text().store().LineAt(pane_.text().caret()), 0u);
}

TEST_F(PaneWindow, MovesThroughWrappedRows) {
  pane_.setPlainText(QString(100, u'x'));
  const std::size_t second = pane_.RowAround(0).end;
  ASSERT_LT(second, 100u);
  Key(Qt::Key_Down);
  EXPECT_EQ(pane_.text().caret(), second);
  Key(Qt::Key_End);
  EXPECT_EQ(pane_.RowAround(pane_.text().caret()).begin, second) << "a row's end is the next row's start";
  EXPECT_EQ(pane_.text().caret(), 2 * second - 1);
  Key(Qt::Key_Home);
  EXPECT_EQ(pane_.text().caret(), second);
  Key(Qt::Key_Up);
  EXPECT_EQ(pane_.text().caret(), 0u);
}

TEST_F(PaneWindow, RightSelectsTheRememberedBlockBeforeTheCaret) {
  SetText("ab\ncdef");
  pane_.Select(5, 5);
  pane_.SetRememberedBlockLength(4);
  Key(Qt::Key_Right);
  EXPECT_EQ(State(), "ab[/cd|]ef") << "a line break is two characters";
  EXPECT_EQ(pane_.RememberedBlockLength(), 0);
  Key(Qt::Key_Right);
  EXPECT_EQ(State(), "ab/cd|ef") << "used up";
}

TEST_F(PaneWindow, LeftSelectsTheRememberedBlockAfterTheCaret) {
  SetText("abcdef");
  pane_.Select(2, 2);
  pane_.SetRememberedBlockLength(3);
  Key(Qt::Key_Left);
  EXPECT_EQ(State(), "ab[cde|]f");
  EXPECT_EQ(pane_.RememberedBlockLength(), 0);
}

TEST_F(PaneWindow, ARememberedBlockOfOneCharacterIsSelected) {
  SetText("ab");
  pane_.Select(2, 2);
  pane_.SetRememberedBlockLength(1);
  Key(Qt::Key_Right);
  EXPECT_EQ(State(), "a[b|]");
}

TEST_F(PaneWindow, OtherKeysKeepTheRememberedBlock) {
  SetText("ab\ncd");
  pane_.SetRememberedBlockLength(2);
  Key(Qt::Key_Down);
  Type("x");
  EXPECT_EQ(pane_.RememberedBlockLength(), 2);
}

TEST_F(PaneWindow, WithoutARememberedBlockTheKeysActAsUsual) {
  SetText("abcd");
  pane_.Select(1, 3);
  Key(Qt::Key_Left);
  EXPECT_EQ(State(), "a|bcd") << "Left ends a selection at its start";
  Key(Qt::Key_Left);
  EXPECT_EQ(State(), "|abcd");
  Key(Qt::Key_Right);
  EXPECT_EQ(State(), "a|bcd");
}

TEST_F(PaneWindow, KeysThatThePaneDoesNotUseArePassedOn) {
  SetText("a");
  QKeyEvent press(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier);
  QCoreApplication::sendEvent(&pane_, &press);
  EXPECT_FALSE(press.isAccepted());
  QKeyEvent control(QEvent::KeyPress, Qt::Key_Q, Qt::ControlModifier, QStringLiteral("\x11"));
  QCoreApplication::sendEvent(&pane_, &control);
  EXPECT_FALSE(control.isAccepted());
  Key(Qt::Key_Tab);
  EXPECT_EQ(State(), "|a");
}

TEST_F(PaneWindow, ItsOwnKeysTakePrecedenceOverTheWindowsShortcuts) {
  const auto takes = [this](int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QKeyEvent event(QEvent::ShortcutOverride, key, modifiers, text);
    event.ignore();
    QCoreApplication::sendEvent(&pane_, &event);
    return event.isAccepted();
  };
  EXPECT_TRUE(takes(Qt::Key_C, Qt::ControlModifier, QString()));
  EXPECT_TRUE(takes(Qt::Key_Delete, Qt::NoModifier, QString()));
  EXPECT_TRUE(takes(Qt::Key_X, Qt::NoModifier, QStringLiteral("x")));
  EXPECT_FALSE(takes(Qt::Key_O, Qt::ControlModifier, QString()));
  EXPECT_FALSE(takes(Qt::Key_F1, Qt::NoModifier, QString()));
}

TEST_F(PaneWindow, TheMenuKeyAsksForThePopup) {
  SetText("abc");
  QSignalSpy popups(&pane_, &OutputPane::popupRequested);
  QContextMenuEvent keyboard(QContextMenuEvent::Keyboard, {}, {});
  QCoreApplication::sendEvent(pane_.viewport(), &keyboard);
  EXPECT_EQ(popups.count(), 1);
  QContextMenuEvent mouse(QContextMenuEvent::Mouse, {}, {});
  QCoreApplication::sendEvent(pane_.viewport(), &mouse);
  EXPECT_EQ(popups.count(), 1) << "the mouse asks when its button is released";
}

}  // namespace
}  // namespace kolvane::pane
