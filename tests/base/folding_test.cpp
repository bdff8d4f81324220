#include "base/text.h"

#include <gtest/gtest.h>

namespace kolvane::base {
namespace {

TEST(Folding, ComparesWithoutCaseUmlautsIncluded) {
  EXPECT_TRUE(EqualsNoCase("Größe é ž ÷", "gRÖßE É Ž ÷"));
  EXPECT_FALSE(EqualsNoCase("a", "ab"));
  EXPECT_FALSE(EqualsNoCase("÷", "×"));
}

TEST(Folding, KnowsTheCapitalOfEachLetterOfTheCodePage) {
  EXPECT_EQ(UpperCase("àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿ šœž"), "ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸ ŠŒŽ");
  EXPECT_EQ(UpperCase("ß÷×µªº"), "ß÷×µªº");
}

TEST(Folding, CapitalisesLettersAtEveryOffset) {
  for (std::size_t offset = 0; offset < 200; ++offset) {
    const std::string before(offset, 'a');
    const std::string after(200, 'b');
    EXPECT_EQ(UpperCase(before + "äÿ" + after),
              std::string(offset, 'A') + "ÄŸ" + std::string(after.size(), 'B'))
        << offset;
  }
}

TEST(Folding, FindsPartsWithoutCase) {
  EXPECT_TRUE(ContainsNoCase("*rst PRes?", "RES"));
  EXPECT_FALSE(ContainsNoCase("*RST", "RES"));
  EXPECT_TRUE(StartsWithNoCase("größe?", "GRÖ"));
  EXPECT_TRUE(StartsWithNoCase("RES", ""));
  EXPECT_FALSE(StartsWithNoCase("RE", "RES"));
}

TEST(Folding, TrimsOnlySpaces) {
  EXPECT_EQ(TrimSpaces("  a b\t  "), "a b\t");
  EXPECT_EQ(TrimSpaces("   "), "");
  EXPECT_EQ(TrimSpaces(""), "");
}

TEST(Folding, TrimsWhiteSpaceWithTabsAndLineEnds) {
  EXPECT_EQ(TrimWhiteSpace("\t \r\n a\t b \r\n\t"), "a\t b");
  EXPECT_EQ(TrimWhiteSpace(" \t\r\n"), "");
  EXPECT_EQ(TrimWhiteSpace(""), "");
}

TEST(Folding, TrimsLongRunsOfSpacesAtEveryOffset) {
  for (std::size_t used : {0u, 1u, 511u, 512u, 513u, 1024u, 15999u, 16000u}) {
    std::string text(16000, ' ');
    for (std::size_t i = 0; i < used; ++i) text[i] = 'x';
    EXPECT_EQ(TrimSpacesRight(text).size(), used);
  }
}

}  // namespace
}  // namespace kolvane::base
