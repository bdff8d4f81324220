#include "amplifier/command.h"

#include <gtest/gtest.h>

namespace kolvane::amplifier {
namespace {

TEST(Arguments, AreSplitAtCommasAndTrimmed) {
  const Arguments arguments(" 1 , two words,,3 ");
  ASSERT_EQ(arguments.size(), 4u);
  EXPECT_EQ(arguments[0], "1");
  EXPECT_EQ(arguments[1], "two words");
  EXPECT_EQ(arguments[2], "");
  EXPECT_EQ(arguments[3], "3");
  EXPECT_EQ(arguments[4], "");
  EXPECT_EQ(arguments.whole(), " 1 , two words,,3 ");
}

TEST(Arguments, OnlySpacesAreNoArgument) {
  EXPECT_EQ(Arguments("").size(), 0u);
  EXPECT_EQ(Arguments("   ").size(), 0u);
  EXPECT_EQ(Arguments(",").size(), 2u);
}

TEST(Arguments, CountOneMoreThanTheyKeep) {
  EXPECT_EQ(Arguments("1,2,3,4,5,6,7,8").size(), Arguments::kMax);
  const Arguments many("1,2,3,4,5,6,7,8,9,10");
  EXPECT_EQ(many.size(), Arguments::kMax + 1);
  EXPECT_EQ(many[7], "8");
  EXPECT_EQ(many[8], "");
}

TEST(Integers, AreWholeTextsWithinTheBounds) {
  EXPECT_EQ(ParseInteger("1", 1, 8), 1);
  EXPECT_EQ(ParseInteger("8", 1, 8), 8);
  EXPECT_EQ(ParseInteger("+8", 1, 8), 8);
  EXPECT_EQ(ParseInteger("-3", -3, 8), -3);
  for (const char* text : {"0", "9", "", "1x", " 1", "1.0", "+-1", "++1", "-", "99999999999999999999"})
    EXPECT_FALSE(ParseInteger(text, 1, 8)) << text;
}

TEST(Numbers, AreFiniteAndBounded) {
  EXPECT_EQ(ParseNumber("-2.5"), -2.5);
  EXPECT_EQ(ParseNumber("+1e3"), 1000);
  EXPECT_EQ(ParseNumber(".5"), 0.5);
  EXPECT_EQ(ParseNumber("1e9"), 1e9);
  for (const char* text : {"", "1,5", "1.5 ", "inf", "nan", "1.000001e9", "-1e10", "0x10", "1e999"})
    EXPECT_FALSE(ParseNumber(text)) << text;
}

TEST(Channels, AreOneARangeOrAll) {
  const auto is = [](std::string_view text, std::size_t first, std::size_t count) {
    const auto range = ParseChannels(text);
    return range && range->first == first && range->count == count;
  };
  EXPECT_TRUE(is("1", 0, 1));
  EXPECT_TRUE(is("8", 7, 1));
  EXPECT_TRUE(is("2-5", 1, 4));
  EXPECT_TRUE(is("2 - 5", 1, 4));
  EXPECT_TRUE(is("3-3", 2, 1));
  EXPECT_TRUE(is("1-8", 0, 8));
  EXPECT_TRUE(is("0", 0, 8));
  for (const char* text : {"", "9", "-1", "0-3", "1-9", "5-2", "1-", "-", "1-2-3", "a", "1.5"})
    EXPECT_FALSE(ParseChannels(text)) << text;
}

TEST(Words, AreFoundWithoutRegardToCase) {
  constexpr std::string_view kWords[] = {"CRLF", "CR"};
  EXPECT_EQ(ParseWord("crlf", kWords), 0u);
  EXPECT_EQ(ParseWord("Cr", kWords), 1u);
  EXPECT_FALSE(ParseWord("CRL", kWords));
  EXPECT_FALSE(ParseWord("", kWords));
}

}  // namespace
}  // namespace kolvane::amplifier
