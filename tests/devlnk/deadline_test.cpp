#include "devlnk/deadline.h"

#include <gtest/gtest.h>

namespace kolvane::devlnk {
namespace {

TEST(Deadline, StartsWithTheFirstQuestionForTheRest) {
  Deadline deadline(INT32_MAX);
  EXPECT_FALSE(deadline.IsOver());
  EXPECT_FALSE(deadline.started());
  EXPECT_EQ(deadline.RemainingMs(), INT32_MAX);
  EXPECT_TRUE(deadline.started());
  EXPECT_GT(deadline.RemainingMs(), 0);
  EXPECT_FALSE(deadline.IsOver());
}

TEST(Deadline, OfZeroIsOverAtOnce) {
  Deadline deadline(0);
  EXPECT_TRUE(deadline.IsOver());
  EXPECT_EQ(deadline.RemainingMs(), 0);
}

TEST(Deadline, PassesAndStaysOver) {
  Deadline deadline(2);
  deadline.Start();
  SleepMs(2);
  EXPECT_TRUE(deadline.IsOver());
  deadline.Start();
  EXPECT_EQ(deadline.RemainingMs(), 0);
}

}  // namespace
}  // namespace kolvane::devlnk
