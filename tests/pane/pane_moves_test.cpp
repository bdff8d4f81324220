#include "pane/pane_moves.h"

#include <gtest/gtest.h>

#include "pane/pane_state.h"

namespace kolvane::pane {
namespace {

using Step = std::size_t (*)(const PaneStore&, std::size_t);

std::string Stops(std::string_view text, Step step, std::size_t from) {
  PaneText pane;
  pane.SetText(text);
  pane.MoveTo(from);
  std::string out = State(pane);
  for (std::size_t last = from;; last = pane.caret()) {
    pane.MoveTo(step(pane.store(), last));
    if (pane.caret() == last) return out;
    out += ' ' + State(pane);
  }
}

TEST(PaneMoves, StepsOverCharactersAndBreaks) {
  EXPECT_EQ(Stops("ä\n\nb", NextCharacter, 0), "|ä//b ä|//b ä/|/b ä//|b ä//b|");
  EXPECT_EQ(Stops("ä\n\nb", PreviousCharacter, 5), "ä//b| ä//|b ä/|/b ä|//b |ä//b");
}

TEST(PaneMoves, StepsOverMarksWithTheirCharacter) {
  EXPECT_EQ(Stops("e\u0301x", NextCharacter, 0), "|e\u0301x e\u0301|x e\u0301x|");
  EXPECT_EQ(Stops("e\u0301x", PreviousCharacter, 4), "e\u0301x| e\u0301|x |e\u0301x");
}

TEST(PaneMoves, StepsOverWords) {
  EXPECT_EQ(
      Stops("a1  +2,b\nc", NextWord, 0),
      "|a1  +2,b/c a1  |+2,b/c a1  +|2,b/c a1  +2|,b/c a1  +2,|b/c a1  +2,b|/c a1  +2,b/|c a1  +2,b/c|");
  EXPECT_EQ(Stops("a1  +2\n  c", PreviousWord, 10),
            "a1  +2/  c| a1  +2/  |c a1  +2/|  c a1  +2|/  c a1  +|2/  c a1  |+2/  c |a1  +2/  c");
}

TEST(PaneMoves, WordsConsistOfLettersDigitsAndUnderscores) {
  EXPECT_EQ(Stops("azAZ09_ü@[`{/:", NextWord, 0), "|azAZ09_ü@[`{/: azAZ09_ü|@[`{/: azAZ09_ü@[`{/:|");
}

std::string Around(std::string_view text, std::size_t at,
                   PaneRange (*around)(const PaneStore&, std::size_t)) {
  PaneText pane;
  pane.SetText(text);
  const PaneRange range = around(pane.store(), at);
  return pane.store().Text(range.begin, range.end, "/");
}

TEST(PaneMoves, FindsTheWordAround) {
  EXPECT_EQ(Around("MSV? 12,größe", 1, WordAround), "MSV");
  EXPECT_EQ(Around("MSV? 12,größe", 3, WordAround), "?");
  EXPECT_EQ(Around("MSV? 12,größe", 4, WordAround), " ");
  EXPECT_EQ(Around("MSV? 12,größe", 9, WordAround), "größe");
  EXPECT_EQ(Around("ab", 2, WordAround), "ab") << "after the end";
  EXPECT_EQ(Around("a\n\nb", 2, WordAround), "");
}

TEST(PaneMoves, FindsTheLineAround) {
  EXPECT_EQ(Around("ab\ncd", 1, LineAround), "ab/");
  EXPECT_EQ(Around("ab\ncd", 2, LineAround), "ab/");
  EXPECT_EQ(Around("ab\ncd", 3, LineAround), "cd");
  EXPECT_EQ(Around("", 0, LineAround), "");
}

}  // namespace
}  // namespace kolvane::pane
