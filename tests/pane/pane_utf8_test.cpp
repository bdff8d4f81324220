#include "pane/pane_moves.h"

#include <gtest/gtest.h>

namespace kolvane::pane {
namespace {

using namespace std::string_view_literals;

TEST(PaneUtf8, OnlyAsciiWithoutBreaksIsAPlainLine) {
  EXPECT_TRUE(IsPlainLine(""));
  EXPECT_TRUE(IsPlainLine("a\0\x1B\x7F\t"sv));
  EXPECT_FALSE(IsPlainLine("a\rb"));
  EXPECT_FALSE(IsPlainLine("a\nb"));
  EXPECT_FALSE(IsPlainLine("µ"));
}

TEST(PaneUtf8, EveryKindOfBreakBecomesOneLineFeed) {
  EXPECT_EQ(ToPaneText("a\r\nb\rc\nd"), "a\nb\nc\nd");
  EXPECT_EQ(ToPaneText("\r\r\n\n\r"), "\n\n\n\n");
}

TEST(PaneUtf8, KeepsControlCharacters) {
  EXPECT_EQ(ToPaneText("\0\x01\x1B[0m\x7F\t\xC2\x81"sv), "\0\x01\x1B[0m\x7F\t\xC2\x81"sv);
}

TEST(PaneUtf8, ReplacesInvalidUtf8) {
  EXPECT_EQ(ToPaneText("\xFF"), "\uFFFD");
  EXPECT_EQ(ToPaneText("a\xC3"), "a\uFFFD");
  EXPECT_EQ(ToPaneText("\xC3\n"), "\uFFFD\n");
  EXPECT_EQ(ToPaneText("\xC0\x80"), "\uFFFD\uFFFD") << "overlong";
  EXPECT_EQ(ToPaneText("\xE0\x80\x80"), "\uFFFD\uFFFD\uFFFD") << "overlong";
  EXPECT_EQ(ToPaneText("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD") << "half of a pair";
  EXPECT_EQ(ToPaneText("\xF4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD") << "past the last code point";
  EXPECT_EQ(ToPaneText("\xF4\x8F\xBF\xBF"), "\xF4\x8F\xBF\xBF");
}

TEST(PaneUtf8, CountsUtf16Units) {
  EXPECT_EQ(Utf16Length(""), 0u);
  EXPECT_EQ(Utf16Length("aä€\U0001F600"), 5u);
}

TEST(PaneUtf8, FindsTheByteOfAUnit) {
  constexpr auto kText = "aä€\U0001F600b"sv;
  EXPECT_EQ(ByteOfUnit(kText, 0), 0u);
  EXPECT_EQ(ByteOfUnit(kText, 1), 1u);
  EXPECT_EQ(ByteOfUnit(kText, 2), 3u);
  EXPECT_EQ(ByteOfUnit(kText, 3), 6u);
  EXPECT_EQ(ByteOfUnit(kText, 4), 6u) << "inside the pair";
  EXPECT_EQ(ByteOfUnit(kText, 5), 10u);
  EXPECT_EQ(ByteOfUnit(kText, 99), kText.size());
}

TEST(PaneUtf8, KeepsMarksWithTheirCharacter) {
  constexpr auto kText = "ae\u0301b"sv;
  EXPECT_EQ(ClusterEnd(kText, 0), 1u);
  EXPECT_EQ(ClusterEnd(kText, 1), 4u);
  EXPECT_EQ(ClusterEnd(kText, 5), 5u);
  EXPECT_EQ(ClusterStart(kText, 5), 4u);
  EXPECT_EQ(ClusterStart(kText, 4), 1u);
  EXPECT_EQ(ClusterStart(kText, 1), 0u);
}

TEST(PaneUtf8, KeepsJoinedEmojiTogether) {
  constexpr auto kFamily = "x\U0001F468\u200D\U0001F469\u200D\U0001F467y"sv;
  EXPECT_EQ(ClusterEnd(kFamily, 1), kFamily.size() - 1);
  EXPECT_EQ(ClusterStart(kFamily, kFamily.size() - 1), 1u);
  EXPECT_EQ(ClusterStart(kFamily, 1), 0u);
}

}  // namespace
}  // namespace kolvane::pane
