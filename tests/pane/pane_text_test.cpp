#include "pane/pane_text.h"

#include <gtest/gtest.h>

#include "pane/pane_state.h"

namespace kolvane::pane {
namespace {

using namespace std::string_view_literals;

PaneText MakeText(std::string_view text) {
  PaneText pane;
  pane.SetText(text);
  return pane;
}

TEST(PaneText, StartsEmpty) {
  const PaneText pane;
  EXPECT_EQ(State(pane), "|");
  EXPECT_EQ(pane.Text("\r\n"), "");
  EXPECT_EQ(pane.store().LineCount(), 1u);
}

TEST(PaneText, EachLineStartsWithABreak) {
  PaneText pane;
  pane.AppendLine("line 1", base::kNoColor);
  pane.AppendLine("line 2", base::kNoColor);
  pane.AppendLine("line 3", base::kNoColor);
  EXPECT_EQ(pane.Text("\r\n"), "\r\nline 1\r\nline 2\r\nline 3");
  EXPECT_EQ(State(pane), "/line 1/line 2/line 3|");
}

TEST(PaneText, AnEmptyLineIsABreak) {
  PaneText pane;
  pane.AppendLine("", base::kNoColor);
  EXPECT_EQ(pane.Text("\r\n"), "\r\n");
  pane.AppendLine("", base::kCommandColor);
  EXPECT_EQ(State(pane), "//|");
}

TEST(PaneText, BreaksWithinALineBreakIt) {
  PaneText pane;
  pane.AppendLine("1\r\n2\r3\n4\r\n", base::kNoColor);
  EXPECT_EQ(State(pane), "/1/2/3/4/|");
}

TEST(PaneText, ControlCharactersSurvive) {
  PaneText pane;
  pane.AppendLine("\0\x1B[0m\x07\t\x7F"sv, base::kNoColor);
  EXPECT_EQ(pane.Text("\r\n"), "\r\n\0\x1B[0m\x07\t\x7F"sv);
}

TEST(PaneText, AppendingMovesCaretAndSelectionToTheEnd) {
  PaneText pane = MakeText("abc");
  pane.Select(1, 2);
  pane.AppendLine("d", base::kNoColor);
  EXPECT_EQ(State(pane), "abc/d|");
}

TEST(PaneText, AColorAppliesToItsLineOnly) {
  PaneText pane;
  pane.AppendLine("plain", base::kNoColor);
  pane.AppendLine("*IDN?", base::kCommandColor);
  pane.AppendLine("answer", base::kNoColor);
  EXPECT_EQ(Colors(pane), "0:/plain/ 255:*IDN? 0:/answer");
}

TEST(PaneText, AColoredLineWithBreaksIsColoredThroughout) {
  PaneText pane;
  pane.AppendLine("a\nb", base::kCommandColor);
  pane.AppendLine("c", base::kNoColor);
  EXPECT_EQ(Colors(pane), "255:/a/b 0:/c");
}

TEST(PaneText, AColoredLineLeavesNoTraceAfterTheCaretMoved) {
  PaneText pane;
  pane.AppendLine("red", base::kCommandColor);
  pane.MoveTo(2);
  EXPECT_EQ(pane.SelectionColor(), base::kCommandColor);
  pane.AppendLine("plain", base::kNoColor);
  EXPECT_EQ(Colors(pane), "0:/ 255:red 0:/plain");
  EXPECT_EQ(pane.SelectionColor(), base::kNoColor);
}

TEST(PaneText, AppendedTextIsBeforeTheCaretExceptForTheGivenCount) {
  PaneText pane;
  pane.AppendLine("12.5", base::kNoColor);
  pane.AppendText("(dt = 3.5 ms)\r\n", 1);
  EXPECT_EQ(pane.Text("\r\n"), "\r\n12.5(dt = 3.5 ms)\r\n");
  EXPECT_EQ(State(pane), "/12.5(dt = 3.5 ms)|/") << "a position inside CR LF counts as before it";
}

TEST(PaneText, TheCaretCountsABreakAsTwo) {
  PaneText pane;
  pane.AppendText("a\nb", 0);
  EXPECT_EQ(State(pane), "a/b|");
  pane.AppendText("", 1);
  EXPECT_EQ(State(pane), "a/|b");
  pane.AppendText("", 2);
  EXPECT_EQ(State(pane), "a|/b");
  pane.AppendText("", 3);
  EXPECT_EQ(State(pane), "a|/b");
  pane.AppendText("", 4);
  EXPECT_EQ(State(pane), "|a/b");
  pane.AppendText("", 99);
  EXPECT_EQ(State(pane), "|a/b");
}

TEST(PaneText, AppendedTextIsInThePanesOwnColor) {
  PaneText pane;
  pane.AppendLine("red", base::kCommandColor);
  pane.AppendText("\r\nWrite error: x", 0);
  EXPECT_EQ(Colors(pane), "0:/ 255:red 0:/Write error: x");
}

TEST(PaneText, SettingTheTextReplacesItAndItsColors) {
  PaneText pane;
  pane.AppendLine("red", base::kCommandColor);
  pane.SetText("new\r\ntext");
  EXPECT_EQ(State(pane), "|new/text");
  EXPECT_EQ(Colors(pane), "0:new/text");
  pane.SetText("");
  EXPECT_EQ(State(pane), "|");
}

TEST(PaneText, TypingReplacesTheSelection) {
  PaneText pane = MakeText("abcdef");
  pane.Select(4, 1);
  EXPECT_EQ(State(pane), "a[|bcd]ef");
  pane.ReplaceSelection("X\r\nY");
  EXPECT_EQ(State(pane), "aX/Y|ef");
  pane.ReplaceSelection("");
  EXPECT_EQ(State(pane), "aX/Y|ef");
}

TEST(PaneText, SelectedTextHasTheRequestedBreaks) {
  PaneText pane = MakeText("ab\ncd\nef");
  pane.Select(1, 7);
  EXPECT_EQ(pane.SelectedText("\n"), "b\ncd\ne");
  EXPECT_EQ(pane.SelectedText("\r\n"), "b\r\ncd\r\ne");
  pane.MoveTo(3);
  EXPECT_EQ(pane.SelectedText("\n"), "");
}

TEST(PaneText, TheSelectionExtendsFromItsAnchor) {
  PaneText pane = MakeText("abcdef");
  pane.MoveTo(2);
  pane.MoveTo(4, true);
  EXPECT_EQ(State(pane), "ab[cd|]ef");
  pane.MoveTo(1, true);
  EXPECT_EQ(State(pane), "a[|b]cdef");
  pane.MoveTo(99, true);
  EXPECT_EQ(State(pane), "ab[cdef|]");
}

TEST(PaneText, ErasingMovesCaretAndAnchorAlong) {
  PaneText pane = MakeText("abcdef");
  pane.Select(1, 5);
  pane.Erase({2, 3});
  EXPECT_EQ(State(pane), "a[bde|]f");
  pane.Erase({0, 2});
  EXPECT_EQ(State(pane), "[de|]f");
  pane.Erase({1, 1});
  EXPECT_EQ(State(pane), "[de|]f");
  pane.Erase({0, 3});
  EXPECT_EQ(State(pane), "|");
}

TEST(PaneText, InsertingMovesCaretAndAnchorAlong) {
  PaneText pane = MakeText("abc");
  pane.Select(1, 2);
  pane.Insert(0, "xy");
  EXPECT_EQ(State(pane), "xya[b|]c");
  pane.Insert(4, "\n");
  EXPECT_EQ(State(pane), "xya[b/|]c");
  pane.Insert(6, "z");
  EXPECT_EQ(State(pane), "xya[b/|]cz");
}

TEST(PaneText, ACommentIsOnItsOwnLineAtTheCaret) {
  PaneText pane = MakeText("abcd");
  pane.Select(1, 3);
  pane.InsertComment("note");
  EXPECT_EQ(State(pane), "a/note/|d");
  EXPECT_EQ(Colors(pane), "0:a 32768:/note/ 0:d");
  EXPECT_EQ(pane.SelectionColor(), base::kCommentColor) << "the colour is not restored";
}

TEST(PaneText, ACommentAtTheEndColorsWhatFollows) {
  PaneText pane;
  pane.AppendLine("a", base::kNoColor);
  pane.InsertComment("note");
  pane.AppendLine("b", base::kNoColor);
  EXPECT_EQ(Colors(pane), "0:/a 32768:/note/ 0:/ 32768:b");
  pane.SetText("");
  pane.SetSelectionColor(base::kNoColor);
  pane.AppendLine("c", base::kNoColor);
  EXPECT_EQ(Colors(pane), "0:/c");
}

TEST(PaneText, ACommentElsewhereDoesNotChangeTheEnd) {
  PaneText pane;
  pane.AppendLine("a", base::kNoColor);
  pane.MoveTo(0);
  pane.InsertComment("note");
  pane.AppendLine("b", base::kNoColor);
  EXPECT_EQ(Colors(pane), "32768:/note/ 0:/a/b");
}

TEST(PaneText, InsertionsTakeTheColorBeforeThem) {
  PaneText pane;
  pane.AppendLine("red", base::kCommandColor);
  pane.AppendLine("plain", base::kNoColor);
  pane.MoveTo(4);
  pane.ReplaceSelection("!");
  pane.MoveTo(1);
  pane.ReplaceSelection(">");
  EXPECT_EQ(Colors(pane), "0:/ 255:>red! 0:/plain");
}

TEST(PaneText, SettingTheSelectionColorColorsTheSelection) {
  PaneText pane = MakeText("abcd");
  pane.Select(1, 3);
  EXPECT_EQ(pane.SelectionColor(), base::kNoColor);
  pane.SetSelectionColor(255);
  EXPECT_EQ(Colors(pane), "0:a 255:bc 0:d");
  EXPECT_EQ(pane.SelectionColor(), 255);
  pane.SetSelectionColor(base::kNoColor);
  EXPECT_EQ(Colors(pane), "0:abcd");
}

TEST(PaneText, ABlockIsRememberedInRichCharacters) {
  PaneText pane = MakeText("ab\ncd\nef");
  pane.MoveTo(7);
  pane.MoveBack(5);
  EXPECT_EQ(State(pane), "ab/|cd/ef");
  pane.SelectForward(5);
  EXPECT_EQ(State(pane), "ab/[cd/e|]f");
  pane.SelectForward(0);
  EXPECT_EQ(State(pane), "ab/|cd/ef");
  pane.SelectForward(99);
  EXPECT_EQ(State(pane), "ab/[cd/ef|]");
}

}  // namespace
}  // namespace kolvane::pane
