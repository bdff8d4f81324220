#include "script/special_line.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"

namespace kolvane::script {
namespace {

TEST(SpecialLineTest, SplitsCommandAndOneArgument) {
  const SpecialLine line("$Goto start ignored, ignored too");
  EXPECT_EQ(line.Command(), "$GOTO");
  EXPECT_EQ(line.Argument(), "start");
  EXPECT_EQ(SpecialLine("$splitparams").Command(), "$SPLITPARAMS");
  EXPECT_EQ(SpecialLine("$").Command(), "$");
}

TEST(SpecialLineTest, EachSpaceEndsAWordAndACommaTheLine) {
  EXPECT_EQ(SpecialLine("$A  b").Argument(), "");
  EXPECT_EQ(SpecialLine("$A ").Argument(), "");
  EXPECT_EQ(SpecialLine("$A ,b").Argument(), "");
  EXPECT_EQ(SpecialLine("$A b,c").Argument(), "b");
  EXPECT_EQ(SpecialLine("$A\tb c").Command(), "$A\tB");
}

TEST(SpecialLineTest, AnArgumentThatIsMissingIsAnError) {
  for (const char* line : {"$A", "$A,", "$A,b", "$A,b c"}) {
    EXPECT_EQ(SpecialLine(line).Command(), "$A") << line;
    EXPECT_THROW(SpecialLine(line).Argument(), base::RuntimeError) << line;
    EXPECT_THROW(SpecialLine(line).Number(), base::RuntimeError) << line;
    EXPECT_THROW(SpecialLine(line).Unquoted(), base::RuntimeError) << line;
  }
}

TEST(SpecialLineTest, AWordLongerThanEveryCommandIsNotACommand) {
  EXPECT_EQ(SpecialLine("$SPLITPARAM12").Command(), "");
  EXPECT_EQ(SpecialLine("$SPLITPARAM1").Command(), "$SPLITPARAM1");
  EXPECT_EQ(SpecialLine("$" + std::string(100000, 'x') + " a").Argument(), "a");
}

TEST(SpecialLineTest, ReadsTheNumberAtTheArgumentsStart) {
  EXPECT_EQ(SpecialLine("$A 12x").Number(), 12);
  EXPECT_EQ(SpecialLine("$A -3.5").Number(), -3.5);
  EXPECT_EQ(SpecialLine("$A abc").Number(), 0);
  EXPECT_EQ(SpecialLine("$A  7").Number(), 0);
  EXPECT_EQ(SpecialLine("$A 1,5").Number(), 1);
}

TEST(SpecialLineTest, StripsTheFirstAndLastCharacterOfAQuotedArgument) {
  EXPECT_EQ(SpecialLine("$A x").Unquoted(), "x");
  EXPECT_EQ(SpecialLine("$A \"x\"").Unquoted(), "x");
  EXPECT_EQ(SpecialLine("$A \"xy").Unquoted(), "x");
  EXPECT_EQ(SpecialLine("$A \"xü").Unquoted(), "x");
  EXPECT_EQ(SpecialLine("$A x\"").Unquoted(), "x\"");
  EXPECT_EQ(SpecialLine("$A \"\"").Unquoted(), "");
  EXPECT_EQ(SpecialLine("$A \"").Unquoted(), "");
  EXPECT_EQ(SpecialLine("$A  x").Unquoted(), "");
  EXPECT_EQ(SpecialLine("$A \"a b\"").Unquoted(), "");
}

}  // namespace
}  // namespace kolvane::script
