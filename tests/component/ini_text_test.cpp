#include "component/ini_text.h"

#include <gtest/gtest.h>

namespace kolvane::component {
namespace {

std::string Find(const std::string& bytes, const std::string& section = "S", const std::string& key = "K") {
  return IniText(bytes).Find(section, key).value_or("(none)");
}

std::string WithEntry(const std::string& bytes, const std::string& text = "new") {
  return WithIniEntries(bytes, {{{"S", "K"}, text}});
}

TEST(IniText, FindsAKeyInItsSection) {
  EXPECT_EQ(Find("[S]\nK=1\n"), "1");
  EXPECT_EQ(Find("K=0\n[R]\nK=2\n[S]\nJ=3\nK=1"), "1");
  EXPECT_EQ(Find(""), "(none)");
  EXPECT_EQ(Find("K=1\n"), "(none)");
  EXPECT_EQ(Find("[S]\nK=\n"), "");
}

TEST(IniText, CaseCounts) {
  EXPECT_EQ(Find("[s]\nK=1\n"), "(none)");
  EXPECT_EQ(Find("[S]\nk=1\n"), "(none)");
}

TEST(IniText, EveryLineEndIsAccepted) {
  EXPECT_EQ(Find("[S]\r\nK=1\r\nJ=2\r\n"), "1");
  EXPECT_EQ(Find("[S]\rK=1\rJ=2\r"), "1");
  EXPECT_EQ(Find("\n\n[S]\n\n\nK=1"), "1");
}

TEST(IniText, SpacesAroundNamesDoNotCount) { EXPECT_EQ(Find(" [ S ] x\n\tK\t = 1 \n"), "1"); }

TEST(IniText, AByteOrderMarkDoesNotCount) {
  EXPECT_EQ(Find("\xEF\xBB\xBF[S]\nK=1\n"), "1");
  EXPECT_EQ(WithEntry("\xEF\xBB\xBF"), "\xEF\xBB\xBF[S]\nK=new\n");
}

TEST(IniText, OfRepeatedKeysTheLastOneCountsOverRepeatedSectionsToo) {
  EXPECT_EQ(Find("[S]\nK=1\nK=2\n"), "2");
  EXPECT_EQ(Find("[S]\nK=1\n[R]\nK=9\n[S]\nK=3\n"), "3");
  EXPECT_EQ(Find("[S]\nK=1\n[R]\n[S]\nJ=3\n"), "1");
}

TEST(IniText, InvalidLinesAreIgnored) {
  EXPECT_EQ(Find("[S]\nK\n"), "(none)");
  EXPECT_EQ(Find("[S]\n;K=1\n ; K=2\n"), "(none)");
  EXPECT_EQ(Find("[S]\n=1\nK=2\n"), "2");
  EXPECT_EQ(Find("[S]\nK=1=2\n"), "1=2");
  EXPECT_EQ(Find("[S]\nK=1 ; note\n"), "1");
}

TEST(IniText, ASectionWithoutABracketEndsWithTheLine) { EXPECT_EQ(Find("[S\nK=1\n"), "1"); }

TEST(IniText, NulIsACharacterLikeAnyOther) {
  EXPECT_EQ(Find(std::string("\0\n[S]\nK=a\0b\n", 13)), std::string("a\0b", 3));
}

TEST(IniText, CreatesMissingSectionsAndKeys) {
  EXPECT_EQ(WithEntry(""), "[S]\nK=new\n");
  EXPECT_EQ(WithEntry("[R]\nK=1\n"), "[R]\nK=1\n\n[S]\nK=new\n");
  EXPECT_EQ(WithEntry("[S]\nJ=1\n\n[R]\nK=1\n"), "[S]\nJ=1\nK=new\n\n[R]\nK=1\n");
  EXPECT_EQ(WithEntry("[S]\n[R]\n"), "[S]\nK=new\n[R]\n");
}

TEST(IniText, EndsALastLineThatHasNoEnd) {
  EXPECT_EQ(WithEntry("[R]"), "[R]\n\n[S]\nK=new\n");
  EXPECT_EQ(WithEntry("[S]\nJ=1"), "[S]\nJ=1\nK=new\n");
  EXPECT_EQ(WithEntry("[S]\nK=1"), "[S]\nK=new\n");
  EXPECT_EQ(WithIniEntries("[S]\nK=1", {{{"S", "J"}, "2"}, {{"S", "K"}, "3"}}), "[S]\nK=3\nJ=2\n");
}

TEST(IniText, LeavesEveryOtherLineAsItIs) {
  const std::string head = "; note\n\xFF junk\n [S] ; x\n K = ";
  const std::string tail = "\nL : \"odd\n\n[General]\n#z=\\q\n";
  EXPECT_EQ(WithEntry(head + "1" + tail), "; note\n\xFF junk\n [S] ; x\nK=new" + tail);
}

TEST(IniText, LeavesALineWithTheSameValueAsItIs) {
  EXPECT_EQ(WithEntry("[S]\n K = \"new\" ; note\n"), "[S]\n K = \"new\" ; note\n");
}

TEST(IniText, RepeatedKeysBecomeOne) {
  EXPECT_EQ(WithEntry("[S]\nK=1\nJ=2\n[R]\nK=5\n[S]\nK=3\nK=4\n"), "[S]\nJ=2\n[R]\nK=5\n[S]\nK=new\n");
}

TEST(IniText, UsesTheFilesLineEnds) { EXPECT_EQ(WithEntry("[R]\r\n"), "[R]\r\n\r\n[S]\r\nK=new\r\n"); }

TEST(IniText, WrittenValuesAreFound) {
  for (const std::string text : {"", " ", "\r\n", "a;b", "\"", "\\", "[x]", "=", "ä€", "@x"}) {
    EXPECT_EQ(Find(WithEntry("[S]\nK=1\n", text)), text);
    EXPECT_EQ(Find(WithEntry("", text)), text);
  }
}

TEST(IniText, WritingTwiceChangesNothingMore) {
  for (const std::string bytes : {"", "[S", "[S]\nK=1\nK=2", "K=1", "\xEF\xBB\xBF;x", "[R]\r"}) {
    const std::string once = WithEntry(bytes);
    EXPECT_EQ(WithEntry(once), once);
    EXPECT_EQ(Find(once), "new") << bytes;
  }
}

}  // namespace
}  // namespace kolvane::component
