#include <gtest/gtest.h>

#include "rtf_dump.h"

namespace kolvane::help {
namespace {

const std::string kTables =
    "{\\fonttbl{\\f0\\fswiss Arial;}{\\f1\\fmodern Courier New;}}"
    "{\\colortbl;\\red0\\green0\\blue255;\\red0\\green128\\blue0;\\red1\\green2\\blue3;}";

TEST(RtfFormat, SwitchesOnAndOff) {
  EXPECT_EQ(Read("a\\b b\\b0 c"), "[a]b[b][c]/");
  EXPECT_EQ(Read("a\\i b\\i0 c"), "[a]i[b][c]/");
  EXPECT_EQ(Read("a\\ul b\\ul0 c\\ul d\\ulnone e"), "[a]u[b][c]u[d][e]/");
  EXPECT_EQ(Read("\\b\\i1\\ul2 x"), "biu[x]/");
}

TEST(RtfFormat, BelongsToItsGroup) { EXPECT_EQ(Read("a{\\b b{\\i c}d}e"), "[a]b[b]bi[c]b[d][e]/"); }

TEST(RtfFormat, ReachesOverParagraphs) { EXPECT_EQ(Read("\\b a\\par\\pard b"), "b[a]/b[b]/"); }

TEST(RtfFormat, NeighboursAlikeAreOneRun) { EXPECT_EQ(Read("a\\b\\b0 b{c}\\'64"), "[abcd]/"); }

TEST(RtfFormat, SizeStaysInItsRange) {
  EXPECT_EQ(Read("\\fs20 x"), "s20[x]/");
  EXPECT_EQ(Read("\\fs2 x"), "s2[x]/");
  EXPECT_EQ(Read("\\fs1 x"), "s2[x]/");
  EXPECT_EQ(Read("\\fs-5 x"), "s2[x]/");
  EXPECT_EQ(Read("\\fs400 x"), "s400[x]/");
  EXPECT_EQ(Read("\\fs401 x"), "s400[x]/");
  EXPECT_EQ(Read("\\fs99999999999 x"), "s400[x]/");
}

TEST(RtfFormat, TakesColoursOutOfTheTable) {
  EXPECT_EQ(Read(kTables + "\\cf1 a\\cf2 b\\cf3 c\\cf0 d"), "#FF0000[a]#008000[b]#030201[c][d]/");
  EXPECT_EQ(Read(kTables + "\\cf1 a\\cf4 b\\cf1 c\\cf-1 d\\cf1 e\\cf f"),
            "#FF0000[a][b]#FF0000[c][d]#FF0000[e][f]/");
}

TEST(RtfFormat, ColourComponentsStayInABytesRange) {
  EXPECT_EQ(Read("{\\colortbl\\red256\\green-1\\blue999999;\\green7;}\\cf0 a\\cf1 b"),
            "#FF00FF[a]#000700[b]/");
}

TEST(RtfFormat, ColourTableEndsAt256Entries) {
  std::string table = "{\\colortbl";
  for (int i = 0; i < 300; ++i) table += "\\red" + std::to_string(i % 256) + ";";
  EXPECT_EQ(Read(table + "}\\cf255 a\\cf256 b"), "#0000FF[a][b]/");
}

TEST(RtfFormat, TakesFontsByNumber) {
  const RtfResult result = ReadRtf("{\\rtf1" + kTables + "a\\f1 b\\f7 c}");
  EXPECT_EQ(Dump(result.document), "[a]f1[b]f7[c]/");
  EXPECT_EQ(result.document.FontName(0), "Arial");
  EXPECT_EQ(result.document.FontName(1), "Courier New");
  EXPECT_EQ(result.document.FontName(7), "");
}

TEST(RtfFormat, PlainLeadsBackToTheDefaultFont) {
  EXPECT_EQ(Read("\\deff1" + kTables + "a\\f0\\fs30\\b\\i\\ul\\cf1 b\\plain c"),
            "f1[a]bius30#FF0000[b]f1[c]/");
}

TEST(RtfFonts, KnowTableWithoutInnerGroups) {
  const RtfResult result = ReadRtf("{\\rtf1{\\fonttbl\\f2\\fswiss A;\\f3 B\\'e4;}x}");
  EXPECT_EQ(result.document.fonts, (std::map<int, std::string>{{2, "A"}, {3, "Bä"}}));
}

TEST(RtfFonts, LeaveOutAlternativeNames) {
  const RtfResult result = ReadRtf("{\\rtf1{\\fonttbl{\\f0{\\*\\panose 020b}Arial{\\*\\falt Helvetica};}}x}");
  EXPECT_EQ(result.document.FontName(0), "Arial");
}

TEST(RtfFonts, NamesEndAt64Bytes) {
  const std::string just(64, 'n');
  const RtfResult result = ReadRtf("{\\rtf1{\\fonttbl{\\f0 " + just + ";}{\\f1 " + just + "n;}{\\f2 n" +
                                   just + "\\'6e;}{\\f3 A;}}}");
  EXPECT_EQ(result.document.fonts, (std::map<int, std::string>{{0, just}, {3, "A"}}));
}

TEST(RtfFonts, TableEndsAt256Fonts) {
  std::string table = "{\\rtf1{\\fonttbl";
  for (int i = 0; i < 257; ++i) table += "{\\f" + std::to_string(i) + " Font;}";
  const RtfResult result = ReadRtf(table + "}}");
  EXPECT_EQ(result.document.fonts.size(), 256u);
  EXPECT_EQ(result.document.FontName(255), "Font");
  EXPECT_EQ(result.document.FontName(256), "");
}

}  // namespace
}  // namespace kolvane::help
