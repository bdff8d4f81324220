#include "base/encoding.h"

#include <gtest/gtest.h>

#include <vector>

namespace kolvane::base {
namespace {

TEST(Utf8, RecognizesWellFormedText) {
  for (const char* good : {"", "a", "ä€", "\xEF\xBF\xBD", "\U0001F600", "\U0010FFFF", "\u0800", "\u07FF"})
    EXPECT_TRUE(IsUtf8(good)) << good;
  // Truncated, overlong, half of a surrogate pair, past the last code point.
  for (const char* bad : {"\xC3", "\xC3 ", "\xC0\x80", "\xE2\x82", "\x80", "\xFF", "\xC0\xAF", "\xE0\x80\xAF",
                          "\xF0\x80\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x28\xA1"})
    EXPECT_FALSE(IsUtf8(bad)) << bad;
}

TEST(Utf8, AppendsEachLength) {
  std::string text;
  for (const char32_t point : {0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}) AppendUtf8(text, point);
  EXPECT_EQ(text, "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(Utf8, RecognizesAsciiAtEveryLength) {
  for (std::size_t length = 1; length < 20; ++length) {
    EXPECT_TRUE(IsAscii(std::string(length, 'a')));
    for (std::size_t at = 0; at < length; ++at) {
      std::string text(length, 'a');
      text[at] = '\x80';
      EXPECT_FALSE(IsAscii(text)) << length << ' ' << at;
    }
  }
}

TEST(Utf8, DecodesEachLength) {
  const std::string text = "a\u00E4\u20AC\U0001F600";
  std::vector<char32_t> points;
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint next = DecodeUtf8(text, at);
    EXPECT_EQ(next.length, Utf8Length(text[at]));
    points.push_back(next.value);
    at += next.length;
  }
  EXPECT_EQ(points, (std::vector<char32_t>{'a', 0xE4, 0x20AC, 0x1F600}));
}

TEST(Utf8, GroupsMalformedBytes) {
  const auto length_of = [](std::string_view text) {
    const CodePoint next = DecodeUtf8(text, 0);
    EXPECT_EQ(next.value, kMalformed) << text;
    return next.length;
  };
  EXPECT_EQ(length_of("\xFFx"), 1u);
  EXPECT_EQ(length_of("\x80x"), 1u);
  EXPECT_EQ(length_of("\xE2\x82x"), 2u);
  EXPECT_EQ(length_of("\xED\xA0\x80"), 3u);
  EXPECT_EQ(length_of("\xE2\x82"), 1u) << "the text ends within it";
}

TEST(Utf8Prefix, EndsWithAWholeCharacter) {
  EXPECT_EQ(Utf8Prefix("aä€", 10), "aä€");
  EXPECT_EQ(Utf8Prefix("aä€", 6), "aä€");
  EXPECT_EQ(Utf8Prefix("aä€", 5), "aä");
  EXPECT_EQ(Utf8Prefix("aä€", 3), "aä");
  EXPECT_EQ(Utf8Prefix("aä€", 2), "a");
  EXPECT_EQ(Utf8Prefix("aä€", 1), "a");
  EXPECT_EQ(Utf8Prefix("aä€", 0), "");
}

TEST(Utf8, OnlyTheStartOfACharacterIsUnfinished) {
  for (const char* whole : {"", "a", "ä", "€", "a😀"}) EXPECT_EQ(UnfinishedUtf8(whole), 0u) << whole;
  EXPECT_EQ(UnfinishedUtf8("a\xC3"), 1u);
  EXPECT_EQ(UnfinishedUtf8("a\xE2\x82"), 2u);
  EXPECT_EQ(UnfinishedUtf8("\xF0\x9F\x98"), 3u);
  for (const char* never : {"\xFF", "\xC0", "\xF5\x80", "\x80\x80\x80\x80"})
    EXPECT_EQ(UnfinishedUtf8(never), 0u);
}

}  // namespace
}  // namespace kolvane::base
