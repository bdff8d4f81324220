#include "pane/pane_text.h"

#include <gtest/gtest.h>

#include "pane/pane_state.h"

namespace kolvane::pane {
namespace {

class Undoing : public testing::Test {
 protected:
  void Type(std::string_view text) {
    for (const char c : text) pane_.ReplaceSelection({&c, 1});
  }
  void Delete(std::size_t begin, std::size_t end) {
    pane_.Select(begin, end);
    pane_.ReplaceSelection("");
  }
  std::string AfterUndo() {
    pane_.Undo();
    return State(pane_);
  }

  PaneText pane_;
};

TEST_F(Undoing, WithoutEditsUndoChangesNothing) {
  EXPECT_EQ(pane_.Undoable(), std::nullopt);
  EXPECT_EQ(AfterUndo(), "|");
  pane_.AppendLine("from the session", base::kNoColor);
  pane_.AppendText("(dt)", 0);
  EXPECT_EQ(pane_.Undoable(), std::nullopt);
}

TEST_F(Undoing, TypedCharactersAreUndoneTogether) {
  Type("abc");
  pane_.ReplaceSelection("\n");
  Type("de");
  EXPECT_EQ(State(pane_), "abc/de|");
  EXPECT_EQ(AfterUndo(), "abc/|");
  EXPECT_EQ(AfterUndo(), "abc|");
  EXPECT_EQ(AfterUndo(), "|");
}

TEST_F(Undoing, CharactersElsewhereAreASeparateEdit) {
  Type("ab");
  pane_.MoveTo(0);
  Type("cd");
  EXPECT_EQ(AfterUndo(), "|ab");
  EXPECT_EQ(AfterUndo(), "|");
}

TEST_F(Undoing, PastedTextIsUndoneSeparatelyFromTypedText) {
  Type("ab");
  pane_.ReplaceSelection("pasted");
  Type("cd");
  EXPECT_EQ(AfterUndo(), "abpasted|");
  EXPECT_EQ(AfterUndo(), "ab|");
  EXPECT_EQ(AfterUndo(), "|");
}

TEST_F(Undoing, DeletedTextIsRestoredInItsColours) {
  pane_.AppendLine("red", base::kCommandColor);
  pane_.AppendLine("plain", base::kNoColor);
  pane_.AppendLine("bold", base::kCommentColor | base::kBold);
  const std::string before = Colors(pane_);
  Delete(2, 12);
  EXPECT_EQ(State(pane_), "/r|old");
  EXPECT_EQ(AfterUndo(), "/red/plain/b|old");
  EXPECT_EQ(Colors(pane_), before);
}

TEST_F(Undoing, ReplacedTextIsRestored) {
  pane_.SetText("abcd");
  pane_.Select(1, 3);
  pane_.ReplaceSelection("xyz");
  EXPECT_EQ(State(pane_), "axyz|d");
  EXPECT_EQ(pane_.Undoable()->begin, 1u);
  EXPECT_EQ(pane_.Undoable()->end, 4u);
  EXPECT_EQ(AfterUndo(), "abc|d");
}

TEST_F(Undoing, LinesOfTheSessionAreKept) {
  pane_.AppendLine("one", base::kNoColor);
  Type("ab");
  pane_.AppendLine("two", base::kCommandColor);
  Delete(0, 2);
  pane_.AppendLine("three", base::kNoColor);
  EXPECT_EQ(AfterUndo(), "/o|neab/two/three");
  EXPECT_EQ(AfterUndo(), "/one|/two/three");
  EXPECT_EQ(Colors(pane_), "0:/one/ 255:two 0:/three");
}

TEST_F(Undoing, ACommentIsUndoneWithItsColour) {
  pane_.AppendLine("abcd", base::kNoColor);
  pane_.Select(3, 5);
  pane_.InsertComment("note");
  EXPECT_EQ(State(pane_), "/ab/note/|");
  EXPECT_EQ(AfterUndo(), "/abcd|");
  pane_.AppendLine("next", base::kNoColor);
  EXPECT_EQ(Colors(pane_), "0:/abcd/next");
}

TEST_F(Undoing, EditsFromElsewhereAreTakenIntoAccount) {
  pane_.SetText("abcd");
  pane_.Erase({0, 2});
  pane_.Insert(1, "xy");
  EXPECT_EQ(AfterUndo(), "c|d");
  EXPECT_EQ(AfterUndo(), "ab|cd");
}

TEST_F(Undoing, SettingTheTextEndsTheRecord) {
  Type("ab");
  pane_.SetText("new");
  EXPECT_EQ(pane_.Undoable(), std::nullopt);
}

TEST_F(Undoing, SeveralChunksAreRestored) {
  for (int i = 0; i < 5000; ++i)
    pane_.AppendLine("line " + std::to_string(i), i % 2 ? 0 : base::kCommandColor);
  const std::string text = pane_.Text("\n");
  const std::string colors = Colors(pane_);
  ASSERT_GT(pane_.store().ChunkCount(), 1u);
  Delete(3, pane_.Length() - 3);
  pane_.Undo();
  EXPECT_EQ(pane_.Text("\n"), text);
  EXPECT_EQ(Colors(pane_), colors);
}

// One edit more than are kept.
TEST(PaneUndoLimits, TheOldestEditsAreDropped) {
  PaneUndo undo;
  for (std::size_t i = 0; i <= PaneUndo::kMaxEdits; ++i) undo.Note({i, 1, {}, base::kNoColor}, false);
  std::size_t count = 0;
  std::size_t oldest = 0;
  for (; undo.Newest() != nullptr; ++count) oldest = undo.Take().begin;
  EXPECT_EQ(count, PaneUndo::kMaxEdits);
  EXPECT_EQ(oldest, 1u);
}

TEST(PaneUndoLimits, WhatWasRemovedIsBounded) {
  PaneUndo undo;
  undo.Note({0, 1, {}, base::kNoColor}, false);
  undo.Note({1, 0, {std::string(PaneUndo::kMaxRemoved, 'x'), {}}, base::kNoColor}, false);
  EXPECT_EQ(undo.Newest()->begin, 1u);
  undo.Note({2, 0, {"y", {}}, base::kNoColor}, false);
  EXPECT_EQ(undo.Take().begin, 2u);
  EXPECT_EQ(undo.Newest(), nullptr) << "older than what was dropped";
  undo.Note({3, 1, {}, base::kNoColor}, false);
  undo.Note({4, 0, {std::string(PaneUndo::kMaxRemoved + 1, 'x'), {}}, base::kNoColor}, false);
  EXPECT_EQ(undo.Newest(), nullptr);
}

}  // namespace
}  // namespace kolvane::pane
