#include "terminal/state_line.h"

#include <gtest/gtest.h>

namespace kolvane::terminal {
namespace {

TEST(StateLine, ShowsTheMostUrgent) {
  StateLine line;
  EXPECT_EQ(line.Text(), "");
  EXPECT_TRUE(line.Set(StateKind::kLeftOver, "left"));
  EXPECT_TRUE(line.Set(StateKind::kBytes, "bytes"));
  EXPECT_TRUE(line.Set(StateKind::kModem, "modem"));
  EXPECT_TRUE(line.Set(StateKind::kLost, "lost"));
  EXPECT_TRUE(line.Set(StateKind::kRun, "run"));
  EXPECT_TRUE(line.Set(StateKind::kWait, "wait"));
  EXPECT_EQ(line.Text(), "wait");
  line.Set(StateKind::kWait, "");
  EXPECT_EQ(line.Text(), "run");
}

TEST(StateLine, ReportsOnlyWhatChangesTheText) {
  StateLine line;
  EXPECT_TRUE(line.Set(StateKind::kRun, "run"));
  EXPECT_FALSE(line.Set(StateKind::kRun, "run"));
  EXPECT_FALSE(line.Set(StateKind::kBytes, "12"));
  EXPECT_TRUE(line.Set(StateKind::kRun, ""));
  EXPECT_EQ(line.Text(), "12");
}

}  // namespace
}  // namespace kolvane::terminal
