#include "base/encoding.h"

#include <gtest/gtest.h>

namespace kolvane::base {
namespace {

TEST(EightBitText, IsOneBytePerCharacter) {
  EXPECT_EQ(EightBitText(""), "");
  EXPECT_EQ(EightBitText("Bridge 8 ~\x7F"), "Bridge 8 ~\x7F");
  EXPECT_EQ(EightBitText("Pr\xC3\xBC"
                         "f \xC2\xB5V \xC2\x80\xC3\xBF"),
            "Pr\xFC"
            "f \xB5V \x80\xFF");
}

TEST(EightBitText, HasAQuestionMarkForCharactersThatDoNotFit) {
  EXPECT_EQ(EightBitText("\xE2\x82\xAC 5"), "? 5") << "does not fit into a byte";
  EXPECT_EQ(EightBitText("\xC4\x80"), "?");
  EXPECT_EQ(EightBitText("\xF0\x9F\x98\x80!"), "?!");
}

TEST(EightBitText, SurvivesMalformedText) {
  EXPECT_EQ(EightBitText("\xC3"), "?");
  EXPECT_EQ(EightBitText("\xC3z"), "?z");
  EXPECT_EQ(EightBitText("\xBF\xBFz"), "?z");
  EXPECT_EQ(EightBitText("\xC1\x81"), "?") << "overlong";
}

}  // namespace
}  // namespace kolvane::base
