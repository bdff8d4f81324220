#include "pane/ui/pane_find.h"

#include "pane/pane_window.h"
#include "pane/ui/regex_matcher.h"

namespace kolvane::pane {
namespace {

TEST(RegexMatcher, SearchesEachLineSeparately) {
  EXPECT_EQ(RegexMatcher("^b.*$", true).FindIn("ab\nbc\nbd\n"), (Hits{{3, 5}, {6, 8}}));
  EXPECT_EQ(RegexMatcher("[^x]+", true).FindIn("ab\ncd\nxe\n"), (Hits{{0, 2}, {3, 5}, {7, 8}}));
  EXPECT_EQ(RegexMatcher("b\\s*c", true).FindIn("a b c b\nc\n"), (Hits{{2, 5}}));
  EXPECT_TRUE(RegexMatcher("y*", true).FindIn("abc\n").empty()) << "an empty hit does not count";
}

TEST(RegexMatcher, SeesNothingBeyondTheLine) {
  const auto find = [](const char* pattern) { return RegexMatcher(pattern, true).FindIn("ab\nab\n"); };
  const Hits as{{0, 1}, {3, 4}};
  const Hits bs{{1, 2}, {4, 5}};
  for (const char* pattern : {"\\Aa", "\\Ga", "(?<!\\s)a", "(?-m)^a", "(?<!.)a"})
    EXPECT_EQ(find(pattern), as) << pattern;
  for (const char* pattern : {"b\\z", "b\\Z", "b(?!\\s)", "b(?=$)", "(?<x>b)(?!\\n)"})
    EXPECT_EQ(find(pattern), bs) << pattern;
  for (const char* pattern : {"b(?=\\s)", "(?<=\\n)a", "b(?=\\W)"})
    EXPECT_TRUE(find(pattern).empty()) << pattern;
  EXPECT_EQ(ReplaceHits(RegexMatcher("b(?=\\s)", true), "ab", "c"), "ab");
}

TEST(RegexMatcher, CountsBytes) {
  EXPECT_EQ(RegexMatcher("e", true).FindIn("äe\n€e😀e\n"), (Hits{{2, 3}, {7, 8}, {12, 13}}));
  EXPECT_EQ(RegexMatcher("Ä\\w", false).FindIn("xäöx\n"), (Hits{{1, 5}}));
}

TEST(RegexMatcher, ReportsWhatIsWrong) {
  EXPECT_EQ(RegexMatcher("a+", true).Fault(), "");
  EXPECT_TRUE(RegexMatcher("a(", true).Fault().startsWith("Kein gültiger Ausdruck, Fehler an Stelle 3: "));
  EXPECT_TRUE(RegexMatcher("a(", true).FindIn("a(\n").empty());
}

TEST(RegexMatcher, PutsGroupsIntoTheReplacement) {
  EXPECT_EQ(ReplaceHits(RegexMatcher("(\\w)=(\\d+)", true), "ä a=12, b=3", "\\2:\\1 (\\0)\\\\"),
            "ä 12:a (a=12)\\, 3:b (b=3)\\");
}

TEST(RegexMatcher, KeepsABackslashThatEscapesNothing) {
  EXPECT_EQ(ReplaceHits(RegexMatcher("a", true), "a", "C:\\neu\\"), "C:\\neu\\");
}

TEST(RegexMatcher, PutsTheGroupsOfItsOwnHitIntoTheReplacement) {
  EXPECT_EQ(ReplaceHits(RegexMatcher("a\\Kb(\\d)", true), "ab1 ab2", "c\\1"), "ac1 ac2");
}

class PaneFindTest : public PaneWindow {
 protected:
  void Search(const char* text) {
    find_->Search(std::make_shared<PlainMatcher>(text, false));
    Finish();
  }
  void Finish() {
    while (!find_->State().complete) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  std::string Shown() const {
    const FindState state = find_->State();
    return std::to_string(state.current) + "/" + std::to_string(state.count);
  }

  PaneFind* find_ = new PaneFind(&pane_);
};

TEST_F(PaneFindTest, GoesThroughTheHits) {
  SetText("one\ntwo one\nthree\none");
  pane_.Select(1, 1);
  Search("one");
  EXPECT_EQ(Shown(), "2/3") << "the first one after the caret";
  EXPECT_EQ(pane_.selectedText(), "one");
  find_->GoToNext();
  Finish();
  EXPECT_EQ(Shown(), "3/3");
  find_->GoToNext();
  Finish();
  EXPECT_EQ(Shown(), "1/3");
  find_->GoToPrevious();
  Finish();
  EXPECT_EQ(Shown(), "3/3");
}

TEST_F(PaneFindTest, SearchesAnotherTextFromItsStart) {
  SetText("ab\nab");
  pane_.Select(3, 3);
  Search("a");
  EXPECT_EQ(Shown(), "2/2");
  PaneText other;
  other.SetText("xa\nxa");
  pane_.ShowAside(std::move(other));
  Search("x");
  EXPECT_EQ(Shown(), "1/2");
}

TEST_F(PaneFindTest, SearchesFromItsStartWhileTheTextIsTyped) {
  SetText("ab\nabc\nab");
  pane_.Select(3, 3);
  Search("a");
  Search("ab");
  Search("abc");
  EXPECT_EQ(Shown(), "1/1");
  Search("ab");
  EXPECT_EQ(Shown(), "2/3");
}

TEST_F(PaneFindTest, ScrollsToTheHit) {
  AppendLines(300);
  Search("line 7");
  EXPECT_EQ(pane_.selectedText(), "line 7");
  EXPECT_TRUE(pane_.viewport()->rect().contains(PointOf(pane_.text().Selection().begin)));
}

TEST_F(PaneFindTest, CountsAddedLines) {
  AppendLines(3);
  Search("line");
  EXPECT_EQ(Shown().substr(1), "/3");
  pane_.AppendLine(LineKind::kAnswer, "line after line");
  pane_.Flush();
  Finish();
  EXPECT_EQ(Shown().substr(1), "/5");
}

TEST_F(PaneFindTest, FindsNothingInAnotherText) {
  SetText("one");
  Search("one");
  pane_.SetText(PaneText());
  Finish();
  EXPECT_EQ(Shown(), "0/0");
}

TEST_F(PaneFindTest, CountsNoHitAsCurrentThatIsNoLongerOne) {
  SetText("one\none");
  Search("one");
  EXPECT_EQ(Shown(), "1/2");
  PaneText other;
  other.SetText("no hit here\none");
  pane_.SetText(std::move(other));
  Finish();
  EXPECT_EQ(Shown(), "0/1");
  find_->GoToNext();
  Finish();
  EXPECT_EQ(Shown(), "1/1");
  pane_.Clear();
  AppendLines(2);
  pane_.AppendLine(LineKind::kAnswer, "one");
  pane_.Flush();
  Finish();
  EXPECT_EQ(Shown(), "0/1");
}

TEST_F(PaneFindTest, HighlightsHitsInViewAndScrollBar) {
  AppendLines(300);
  auto* marks = static_cast<base::MarkedScrollBar*>(&bar());
  EXPECT_EQ(marks->MarkCount(), 0);
  Search("line 29");
  EXPECT_GT(marks->MarkCount(), 1);
  pane_.FollowEnd();
  pane_.Select(0, 0);
  pane_.FollowEnd();
  const PaneRange hit = {pane_.text().Length() - 8 - 9, 0};  // "line 299", the last line but one
  const QImage shown = pane_.viewport()->grab().toImage();
  const QRect cell = pane_.CharacterRect(hit.begin);
  EXPECT_EQ(shown.pixelColor(cell.left() + 1, cell.top() + 1), base::HitBackground(Qt::white));
  const QRect after = pane_.CharacterRect(hit.begin + 7);
  EXPECT_EQ(shown.pixelColor(after.left() + 1, after.top() + 1), QColor(Qt::white)) << "the hit has ended";
  find_->Search(nullptr);
  EXPECT_EQ(marks->MarkCount(), 0);
  EXPECT_EQ(pane_.viewport()->grab().toImage().pixelColor(cell.left() + 1, cell.top() + 1),
            QColor(Qt::white));
}

TEST_F(PaneFindTest, OffersASelectionWithinOneLine) {
  SetText("one\ntwo");
  pane_.Select(0, 3);
  EXPECT_EQ(find_->SelectedText(), "one");
  pane_.Select(0, 5);
  EXPECT_EQ(find_->SelectedText(), "");
}

}  // namespace
}  // namespace kolvane::pane
