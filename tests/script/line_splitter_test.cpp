#include "script/command_file.h"

#include <gtest/gtest.h>

#include <vector>

using namespace std::string_literals;

namespace kolvane::script {
namespace {

using Lines = std::vector<std::string>;

Lines Split(const std::vector<std::string>& pieces) {
  Lines lines;
  LineSplitter splitter([&lines](std::string_view line) { lines.emplace_back(line); });
  for (const std::string& piece : pieces) splitter.Feed(piece);
  splitter.Finish();
  return lines;
}

TEST(LineSplitterTest, EndsLinesAtCrLfLfAndCr) {
  EXPECT_EQ(Split({"a\r\nb\nc\rd"}), (Lines{"a", "b", "c", "d"}));
  EXPECT_EQ(Split({"\r\r\n\n"}), (Lines{"", "", ""}));
  EXPECT_EQ(Split({"\n\r"}), (Lines{"", ""}));
}

TEST(LineSplitterTest, TheLastLineNeedsNoEnd) {
  EXPECT_EQ(Split({"a\r\n"}), Lines{"a"});
  EXPECT_EQ(Split({"a\r\nb"}), (Lines{"a", "b"}));
  EXPECT_EQ(Split({""}), Lines{});
  EXPECT_EQ(Split({}), Lines{});
}

TEST(LineSplitterTest, PiecesMayEndAnywhere) {
  EXPECT_EQ(Split({"a\r", "\nb"}), (Lines{"a", "b"}));
  EXPECT_EQ(Split({"a\r", "", "\n"}), Lines{"a"});
  EXPECT_EQ(Split({"a\r", "b"}), (Lines{"a", "b"}));
  EXPECT_EQ(Split({"a", "b\nc", "d", "\r\n", "\n"}), (Lines{"ab", "cd", ""}));
}

TEST(LineSplitterTest, NulIsACharacterLikeAnyOther) {
  EXPECT_EQ(Split({"\0a\0\n\0"s}), (Lines{"\0a\0"s, "\0"s}));
}

TEST(LineSplitterTest, ReportsTheLengthOfTheOpenLine) {
  LineSplitter splitter([](std::string_view) {});
  splitter.Feed("ab\ncde");
  EXPECT_EQ(splitter.pending(), 3u);
  splitter.Feed("f\n");
  EXPECT_EQ(splitter.pending(), 0u);
}

}  // namespace
}  // namespace kolvane::script
