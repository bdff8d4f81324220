#include "pane/pane_search.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace kolvane::pane {
namespace {

std::vector<std::string> Found(const Matcher& matcher, const std::string& lines) {
  std::vector<std::string> found;
  for (const PaneRange& hit : matcher.FindIn(lines))
    found.push_back(lines.substr(hit.begin, hit.end - hit.begin));
  return found;
}

using Texts = std::vector<std::string>;

TEST(PlainMatcher, MatchesWithOrWithoutCase) {
  EXPECT_EQ(Found(PlainMatcher("err", true), "Err err ERR\n"), Texts({"err"}));
  EXPECT_EQ(Found(PlainMatcher("eRr", false), "Err err ERR\n"), Texts({"Err", "err", "ERR"}));
}

TEST(PlainMatcher, KnowsTheCaseOfUmlauts) {
  EXPECT_EQ(Found(PlainMatcher("über", false), "ÜBER uber\nÄ Über\n"), Texts({"ÜBER", "Über"}));
  EXPECT_EQ(Found(PlainMatcher("STRAßE", false), "Straße\n"), Texts({"Straße"}));
}

TEST(PlainMatcher, KnowsTheCaseAfterLongStretchesOfAscii) {
  const std::string ascii(200, 'a');
  EXPECT_EQ(Found(PlainMatcher("Ä", false), ascii + "ä" + ascii + "Ä\n"), Texts({"ä", "Ä"}));
}

TEST(PlainMatcher, FindsHitsThatDoNotOverlap) {
  EXPECT_EQ(PlainMatcher("aa", true).FindIn("aaaaa\n"), (Hits{{0, 2}, {2, 4}}));
}

TEST(PlainMatcher, ReplacesEachHit) {
  EXPECT_EQ(ReplaceHits(PlainMatcher("a", true), "banana", "o"), "bonono");
  EXPECT_EQ(ReplaceHits(PlainMatcher("x", true), "banana", "o"), "banana");
  EXPECT_EQ(ReplaceHits(PlainMatcher("a", true), "banana", ""), "bnn");
}

/// A text of many chunks with a hit, "x", in every tenth line.
class LongSearch : public testing::Test {
 protected:
  static constexpr int kLines = 50000;

  LongSearch() {
    for (int line = 0; line < kLines; ++line)
      store_.AppendLine(line % 10 == 0 ? "x 12.5" : "o 12.5", kNoColor);
    search_.Start(std::make_shared<PlainMatcher>("x", true), 0);
  }
  void SearchAll() {
    search_.Advance([] { return false; });
  }
  std::size_t StartOf(int line) const { return store_.LineStart(static_cast<std::size_t>(line) + 1); }

  PaneStore store_;
  PaneSearch search_{store_};
};

TEST_F(LongSearch, ContinuesPieceByPiece) {
  ASSERT_GT(store_.ChunkCount(), 5U);
  std::size_t pieces = 0;
  while (!search_.IsComplete()) {
    search_.Advance([] { return true; });
    ++pieces;
  }
  EXPECT_EQ(pieces, store_.ChunkCount());
  EXPECT_EQ(search_.Count(), kLines / 10U);
}

TEST_F(LongSearch, KnowsTheHitsOfTheTextSearchedSoFar) {
  search_.Start(std::make_shared<PlainMatcher>("x", true), StartOf(25000));
  EXPECT_FALSE(search_.NextHit(StartOf(25001)).known);
  search_.Advance([] { return true; });
  const auto next = search_.NextHit(StartOf(25001));
  ASSERT_TRUE(next.known && next.hit) << "it starts at the user's position";
  EXPECT_EQ(next.hit->begin, StartOf(25010));
  EXPECT_FALSE(search_.PreviousHit(0).known);
}

TEST_F(LongSearch, FindsTheNextAndThePreviousHitAndWrapsAround) {
  SearchAll();
  EXPECT_EQ(search_.NextHit(StartOf(0)).hit->begin, StartOf(0));
  EXPECT_EQ(search_.NextHit(StartOf(0) + 1).hit->begin, StartOf(10));
  EXPECT_EQ(search_.NextHit(StartOf(kLines - 1)).hit->begin, StartOf(0)) << "the first follows the last";
  EXPECT_EQ(search_.PreviousHit(StartOf(10)).hit->begin, StartOf(0));
  EXPECT_EQ(search_.PreviousHit(StartOf(0)).hit->begin, StartOf(kLines - 10))
      << "the last precedes the first";
  EXPECT_EQ(search_.CountBefore(StartOf(20000)), 2000U);
}

TEST_F(LongSearch, CountsHitsInAddedText) {
  SearchAll();
  const std::size_t before = search_.Count();
  store_.AppendLine("xx", kNoColor);
  search_.Sync();
  EXPECT_FALSE(search_.IsComplete());
  std::size_t pieces = 0;
  search_.Advance([&pieces] { return ++pieces > 1000; });
  EXPECT_EQ(pieces, 1U) << "only the last part is searched again";
  EXPECT_EQ(search_.Count(), before + 2);
}

TEST_F(LongSearch, DropsHitsInRemovedText) {
  SearchAll();
  store_.Erase(StartOf(10), StartOf(21));
  search_.Sync();
  SearchAll();
  EXPECT_EQ(search_.Count(), kLines / 10U - 2);
  store_.Clear();
  search_.Sync();
  SearchAll();
  EXPECT_EQ(search_.Count(), 0U);
  EXPECT_FALSE(search_.NextHit(0).hit);
  EXPECT_TRUE(search_.NextHit(0).known);
}

TEST_F(LongSearch, EndsWithoutAMatcher) {
  SearchAll();
  search_.Start(nullptr, 0);
  EXPECT_FALSE(search_.IsOn());
  EXPECT_EQ(search_.Count(), 0U);
  EXPECT_TRUE(search_.IsComplete());
}

}  // namespace
}  // namespace kolvane::pane
