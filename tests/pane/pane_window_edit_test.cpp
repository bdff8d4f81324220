// Typing, clipboard, comments, input methods, read-only.
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>

#include "pane_window.h"

namespace kolvane::pane {
namespace {

QString Clipboard() { return QGuiApplication::clipboard()->text(); }

TEST_F(PaneWindow, TypedTextIsInsertedAtTheCaret) {
  SetText("ad");
  Key(Qt::Key_Right);
  Type("bC");
  Key(Qt::Key_Return);
  Key(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(State(), "abC//|d");
}

TEST_F(PaneWindow, TypedTextReplacesTheSelection) {
  SetText("abcd");
  pane_.Select(1, 3);
  Type("x");
  EXPECT_EQ(State(), "ax|d");
}

TEST_F(PaneWindow, ErasesCharactersWordsAndTheSelection) {
  SetText("one two three");
  pane_.Select(4, 4);
  Key(Qt::Key_Delete);
  EXPECT_EQ(State(), "one |wo three");
  Key(Qt::Key_Backspace);
  EXPECT_EQ(State(), "one|wo three");
  Key(Qt::Key_Delete, Qt::ControlModifier);
  EXPECT_EQ(State(), "one|three");
  Key(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(State(), "|three");
  Key(Qt::Key_Backspace);
  EXPECT_EQ(State(), "|three");
  pane_.Select(1, 3);
  Key(Qt::Key_Backspace);
  EXPECT_EQ(State(), "t|ee");
  pane_.Select(3, 3);
  Key(Qt::Key_Delete);
  EXPECT_EQ(State(), "tee|");
}

TEST_F(PaneWindow, UndoesTypingAndDeleting) {
  PaneText text;
  text.AppendLine("one", base::kCommandColor);
  pane_.SetText(std::move(text));
  Type("ab");
  Key(Qt::Key_Backspace);
  AppendLines(1);
  pane_.selectAll();
  Key(Qt::Key_Delete);
  EXPECT_EQ(State(), "|");
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(State(), "/onea/line 1|");
  EXPECT_EQ(Colors(), "0:/ 255:one 0:a/line 1");
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(State(), "/oneab|/line 1");
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(State(), "/one|/line 1");
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(State(), "/one|/line 1");
}

TEST_F(PaneWindow, DeletingEverythingCanBeUndoneUntilATextIsSet) {
  SetText("abc");
  pane_.deleteAll();
  EXPECT_EQ(State(), "|");
  pane_.undo();
  EXPECT_EQ(State(), "abc|");
  pane_.deleteAll();
  pane_.clear();
  pane_.undo();
  EXPECT_EQ(State(), "|");
}

TEST_F(PaneWindow, HowATextThatIsSetWasMadeCannotBeUndone) {
  const auto edited = [] {
    PaneText text;
    text.SetText("a");
    text.Insert(1, "b");
    return text;
  };
  pane_.SetText(edited());
  pane_.undo();
  EXPECT_EQ(pane_.text().Text("/"), "ab");
  pane_.ShowAside(edited());
  pane_.undo();
  EXPECT_EQ(pane_.text().Text("/"), "ab");
}

TEST_F(PaneWindow, AReadOnlyPaneUndoesNothing) {
  Type("abc");
  pane_.setReadOnly(true);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(State(), "abc|");
}

TEST_F(PaneWindow, CopiesCutsAndPastes) {
  SetText("ab\ncd");
  pane_.Select(1, 4);
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Clipboard(), QStringLiteral("b\nc"));
  EXPECT_EQ(State(), "a[b/c|]d");
  Key(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(State(), "a|d");
  QGuiApplication::clipboard()->setText(QStringLiteral("1\r\nß"));
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(State(), "a1/ß|d");
}

TEST_F(PaneWindow, CopyingNothingKeepsTheClipboard) {
  QGuiApplication::clipboard()->setText(QStringLiteral("kept"));
  SetText("ab");
  pane_.copy();
  pane_.cut();
  pane_.deleteSelection();
  EXPECT_EQ(Clipboard(), QStringLiteral("kept"));
  EXPECT_EQ(State(), "|ab");
}

TEST_F(PaneWindow, CopyingAllIncludesLinesJustAdded) {
  AppendLines(2000);
  pane_.AppendLine(LineKind::kAnswer, "last");
  Key(Qt::Key_A, Qt::ControlModifier);
  pane_.copy();
  EXPECT_EQ(Clipboard(), pane_.plainText());
  EXPECT_TRUE(Clipboard().endsWith(QStringLiteral("\nlast")));
}

TEST_F(PaneWindow, SelectingAllDoesNotScroll) {
  AppendLines(100);
  bar().setValue(5);
  pane_.selectAll();
  EXPECT_EQ(bar().value(), 5);
  EXPECT_EQ(pane_.selectedText(), pane_.plainText());
}

TEST_F(PaneWindow, TypingShowsTheCaret) {
  AppendLines(100);
  bar().setValue(0);
  Type("x");
  EXPECT_TRUE(IsAtEnd());
}

TEST_F(PaneWindow, ACommentIsGreenAndStaysSo) {
  SetText("abcd");
  pane_.Select(1, 3);
  pane_.InsertComment(QStringLiteral("größer"));
  EXPECT_EQ(State(), "a/größer/|d");
  EXPECT_EQ(Colors(), "0:a 32768:/größer/ 0:d");
  EXPECT_EQ(pane_.SelectionColor(), base::kCommentColor);
}

TEST_F(PaneWindow, TheSelectionColorCanBeSet) {
  SetText("ab");
  pane_.SetSelectionColor(16711680);
  Type("x");
  EXPECT_EQ(Colors(), "16711680:x 0:ab");
}

TEST_F(PaneWindow, ReadOnlyAcceptsLinesButNoEdits) {
  EXPECT_FALSE(pane_.property("readOnly").toBool());
  pane_.setProperty("readOnly", true);
  pane_.AppendLine(LineKind::kAnswer, "abc");
  QGuiApplication::clipboard()->setText(QStringLiteral("pasted"));
  pane_.Select(1, 2);
  Type("x");
  for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Return}) Key(key);
  for (const Qt::Key key : {Qt::Key_X, Qt::Key_V, Qt::Key_Delete}) Key(key, Qt::ControlModifier);
  pane_.cut();
  pane_.paste();
  pane_.deleteSelection();
  QInputMethodEvent commit;
  commit.setCommitString(QStringLiteral("x"));
  QCoreApplication::sendEvent(&pane_, &commit);
  EXPECT_EQ(State(), "/[a|]bc");
  EXPECT_EQ(Clipboard(), QStringLiteral("pasted"));
  EXPECT_FALSE(pane_.inputMethodQuery(Qt::ImEnabled).toBool());
}

TEST_F(PaneWindow, AcceptsTextFromInputMethods) {
  SetText("ab");
  pane_.Select(1, 1);
  QInputMethodEvent compose(QStringLiteral("^"), {});
  QCoreApplication::sendEvent(&pane_, &compose);
  EXPECT_EQ(State(), "a|b") << "what is being composed is not part of the text yet";
  QInputMethodEvent commit;
  commit.setCommitString(QStringLiteral("ê"));
  QCoreApplication::sendEvent(&pane_, &commit);
  EXPECT_EQ(State(), "aê|b");
  QInputMethodEvent replace;
  replace.setCommitString(QStringLiteral("e"), -1, 1);
  QCoreApplication::sendEvent(&pane_, &replace);
  EXPECT_EQ(State(), "ae|b");
}

TEST_F(PaneWindow, ReportsTheLineToInputMethods) {
  SetText("first\nsecond");
  pane_.Select(6, 9);
  EXPECT_EQ(pane_.inputMethodQuery(Qt::ImSurroundingText).toString(), QStringLiteral("second"));
  EXPECT_EQ(pane_.inputMethodQuery(Qt::ImCursorPosition).toInt(), 3);
  EXPECT_EQ(pane_.inputMethodQuery(Qt::ImAnchorPosition).toInt(), 0);
  EXPECT_EQ(pane_.inputMethodQuery(Qt::ImCurrentSelection).toString(), QStringLiteral("sec"));
  EXPECT_TRUE(pane_.inputMethodQuery(Qt::ImEnabled).toBool());
}

TEST_F(PaneWindow, ReportsASelectionFromAnotherLineToInputMethodsUpToTheLinesEnd) {
  SetText("first\nsecond");
  pane_.Select(2, 9);
  EXPECT_EQ(pane_.inputMethodQuery(Qt::ImCursorPosition).toInt(), 3);
  EXPECT_EQ(pane_.inputMethodQuery(Qt::ImAnchorPosition).toInt(), 0);
  pane_.Select(9, 2);
  EXPECT_EQ(pane_.inputMethodQuery(Qt::ImCursorPosition).toInt(), 2);
  EXPECT_EQ(pane_.inputMethodQuery(Qt::ImAnchorPosition).toInt(), 6);
}

}  // namespace
}  // namespace kolvane::pane
