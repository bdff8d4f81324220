#include <gtest/gtest.h>

#include "rtf_dump.h"

namespace kolvane::help {
namespace {

using namespace std::string_literals;

TEST(RtfText, IsSplitIntoParagraphs) {
  EXPECT_EQ(Read(""), "");
  EXPECT_EQ(Read("a"), "[a]/");
  EXPECT_EQ(Read("a\\par b\\par"), "[a]/[b]/");
  EXPECT_EQ(Read("a\\par\\par b"), "[a]//[b]/");
  EXPECT_EQ(Read("\\pard a\\par"), "[a]/");
  EXPECT_EQ(Read("a\\\nb\\\r\nc\\page d\\sect e"), "[a]/[b]/[c]/[d]/[e]/");
  EXPECT_EQ(Read("{a\\par b}c"), "[a]/[bc]/");
}

TEST(RtfText, KnowsTabsAndLineBreaks) {
  EXPECT_EQ(Read("a\\tab b\tc\\line d"), "[a\tb\tc\nd]/");
  EXPECT_EQ(Read("x\\cell y\\cell\\row z"), "[x\ty\t]/[z]/");
}

TEST(RtfText, LeavesOutLineEndsAndControlBytesOfTheSource) {
  EXPECT_EQ(Read("Mess\r\nwert\0e\x07"s), "[Messwerte]/");
  EXPECT_EQ(Read("a\\'00\\'0d\\'09b"), "[a\tb]/");
}

TEST(RtfText, ReadsWindows1252) {
  EXPECT_EQ(Read("\\'e4\\'F6\\'fc\\'df \\'80\\'b5"), "[äöüß €µ]/");
  EXPECT_EQ(Read("\xC4\x96\x81"), "[Ä–\xC2\x81]/");
}

TEST(RtfText, KnowsEscapes) {
  EXPECT_EQ(Read("\\\\\\{\\}"), "[\\{}]/");
  EXPECT_EQ(Read("a\\~b\\_c\\-d"), "[a\u00A0b\u2011c\u00ADd]/");
  EXPECT_EQ(Read("a\\|\\:b"), "[ab]/");
}

TEST(RtfText, KnowsNamedCharacters) {
  EXPECT_EQ(Read("\\bullet\\endash\\emdash\\lquote\\rquote\\ldblquote\\rdblquote"), "[•–—‘’“”]/");
}

TEST(RtfUnicodeText, SkipsItsFallback) {
  EXPECT_EQ(Read("\\u937 ?x"), "[Ωx]/");
  EXPECT_EQ(Read("\\u937?x"), "[Ωx]/");
  EXPECT_EQ(Read("\\u937\\'3fx"), "[Ωx]/");
  EXPECT_EQ(Read("\\u937\\endash x"), "[Ωx]/");
  EXPECT_EQ(Read("\\u937\\~x"), "[Ωx]/");
  EXPECT_EQ(Read("\\u937\\bin2 {{x"), "[Ωx]/");
  EXPECT_EQ(Read("\\u937\r\n?x"), "[Ωx]/");
}

TEST(RtfUnicodeText, FallbackLengthBelongsToItsGroup) {
  EXPECT_EQ(Read("\\uc0\\u937 x"), "[Ωx]/");
  EXPECT_EQ(Read("\\uc3\\u937 a\\'62cx"), "[Ωx]/");
  EXPECT_EQ(Read("{\\uc2\\u937 ??}\\u937 ?x"), "[ΩΩx]/");
  EXPECT_EQ(Read("\\uc-1\\u937 x"), "[Ωx]/");
  EXPECT_EQ(Read("{\\uc2147483647\\u937 all of it}x"), "[Ωx]/");
}

TEST(RtfUnicodeText, FallbackEndsAtABrace) {
  EXPECT_EQ(Read("\\uc5\\u937 a{bc}d"), "[Ωbcd]/");
  EXPECT_EQ(Read("{\\u937}x"), "[Ωx]/");
}

TEST(RtfUnicodeText, TakesNumbersOfEverySize) {
  EXPECT_EQ(Read("\\u65?\\u228?\\u-10179?"), "[Aä\uFFFD]/");
  EXPECT_EQ(Read("\\u-2?\\u65534?"), "[\uFFFE\uFFFE]/");
  EXPECT_EQ(Read("\\u65536?\\u1114111?"), "[\U00010000\U0010FFFF]/");
  EXPECT_EQ(Read("\\u1114112?\\u-65537?\\u2147483647?\\u-2147483648?"), "[\uFFFD\uFFFD\uFFFD\uFFFD]/");
  EXPECT_EQ(Read("a\\u0?\\u13?\\u?b"), "[ab]/");
}

TEST(RtfUnicodeText, JoinsSurrogatePairs) {
  EXPECT_EQ(Read("\\u-10179?\\u-8704?"), "[\U0001F600]/");
  EXPECT_EQ(Read("\\u55357?\\u56832?"), "[\U0001F600]/");
  EXPECT_EQ(Read("\\u56832?x"), "[\uFFFDx]/");
  EXPECT_EQ(Read("\\u55357?x\\u56832?"), "[\uFFFDx\uFFFD]/");
  EXPECT_EQ(Read("\\u55357?\\u55357?\\u56832?"), "[\uFFFD\U0001F600]/");
  EXPECT_EQ(Read("\\u55357?\\u937?"), "[\uFFFDΩ]/");
  EXPECT_EQ(Read("\\u55357?\\par x"), "[\uFFFD]/[x]/");
}

}  // namespace
}  // namespace kolvane::help
