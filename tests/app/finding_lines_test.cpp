#include "app/listings.h"

#include <gtest/gtest.h>

namespace kolvane::app {
namespace {

const CheckedCommandList kGood{"a.CMD", "", {}};
const CheckedCommandList kOdd{"./b.CMD", "", {{3, false, "Odd", "$STOP", 1}}};
const CheckedCommandList kWrong{"c.CMD", "", {{1, true, "Wrong", "", 0}, {1024, false, "Odd", "", 0}}};
const CheckedCommandList kUnread{"d.CMD", "cannot read", {}};

TEST(FindingLines, NameFileRowAndKind) {
  EXPECT_EQ(FindingLines({}), "");
  EXPECT_EQ(FindingLines({kGood, kUnread}), "");
  EXPECT_EQ(FindingLines({kOdd, kWrong}),
            "./b.CMD:3: Hinweis: Odd\n"
            "c.CMD:1: Fehler: Wrong\n"
            "c.CMD:1024: Hinweis: Odd\n");
}

TEST(CheckStatus, IsThatOfTheWorstList) {
  EXPECT_EQ(CheckStatus({kGood}), 0);
  EXPECT_EQ(CheckStatus({kOdd, kGood}), 0);
  EXPECT_EQ(CheckStatus({kWrong, kOdd}), 1);
  EXPECT_EQ(CheckStatus({kWrong, kUnread, kGood}), 2);
}

}  // namespace
}  // namespace kolvane::app
