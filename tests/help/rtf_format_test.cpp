#include <gtest/gtest.h>

#include "rtf_dump.h"

namespace kolvane::help {
namespace {

const std::string kTables =
    "{\\fonttbl{\\f0\\fswiss Arial;}{\\f1\\fmodern Courier New;}}"
    "{\\colortbl;\\red0\\green0\\blue255;\\red0\\green128\\blue0;\\red1\\green2\\blue3;}";

TEST(RtfFormat, SwitchesBoldOnAndOff) {
  EXPECT_EQ(Read("a\\b b\\b0 c"), "[a]b[b][c]/");
  EXPECT_EQ(Read("\\b1 a\\b2 b"), "b[ab]/");
}

TEST(RtfFormat, LeavesOutFormatsThatThePaneCannotShow) {
  EXPECT_EQ(Read("\\deff1" + kTables + "a\\i b\\ul c\\ulnone\\fs30 d\\f1 e"), "[abcde]/");
}

TEST(RtfFormat, BelongsToItsGroup) {
  EXPECT_EQ(Read(kTables + "a{\\b b{\\cf1 c}d}e"), "[a]b[b]b#FF0000[c]b[d][e]/");
}

TEST(RtfFormat, ContinuesInTheNextParagraph) { EXPECT_EQ(Read("\\b a\\par\\pard b"), "b[a]/b[b]/"); }

TEST(RtfFormat, EqualNeighboursAreOneRun) { EXPECT_EQ(Read("a\\b\\b0 b{c}\\'64"), "[abcd]/"); }

TEST(RtfFormat, TakesColoursFromTheTable) {
  EXPECT_EQ(Read(kTables + "\\cf1 a\\cf2 b\\cf3 c\\cf0 d"), "#FF0000[a]#008000[b]#030201[c][d]/");
  EXPECT_EQ(Read(kTables + "\\cf1 a\\cf4 b\\cf1 c\\cf-1 d\\cf1 e\\cf f"),
            "#FF0000[a][b]#FF0000[c][d]#FF0000[e][f]/");
}

TEST(RtfFormat, ColourComponentsStayInABytesRange) {
  EXPECT_EQ(Read("{\\colortbl\\red256\\green-1\\blue999999;\\green7;}\\cf0 a\\cf1 b"),
            "#FF00FF[a]#000700[b]/");
}

TEST(RtfFormat, ColourTableEntriesMayBeEmpty) {
  EXPECT_EQ(Read("{\\colortbl;;;\\blue255;}\\cf2 a\\cf3 b"), "[a]#FF0000[b]/");
}

TEST(RtfFormat, ColourTableEndsAt256Entries) {
  std::string table = "{\\colortbl";
  for (int i = 0; i < 300; ++i) table += "\\red" + std::to_string(i % 256) + ";";
  EXPECT_EQ(Read(table + "}\\cf255 a\\cf256 b"), "#0000FF[a][b]/");
}

TEST(RtfFormat, PlainEndsAllFormats) { EXPECT_EQ(Read(kTables + "\\b\\cf1 a\\plain b"), "b#FF0000[a][b]/"); }

}  // namespace
}  // namespace kolvane::help
