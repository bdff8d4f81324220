#include "devlnk/deadline.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <ctime>
#include <vector>

namespace {

std::vector<timespec> sleeps;  // requested

}  // namespace

extern "C" int clock_nanosleep(clockid_t clock, int flags, const timespec* time, timespec* left) {
  sleeps.push_back(*time);
  return syscall(SYS_clock_nanosleep, clock, flags, time, left) == 0 ? 0 : errno;
}

namespace kolvane::devlnk {
namespace {

TEST(Deadline, StartsWhenTheRestIsFirstAskedFor) {
  Deadline deadline(INT32_MAX);
  EXPECT_FALSE(deadline.HasExpired());
  EXPECT_FALSE(deadline.started());
  EXPECT_EQ(deadline.RemainingMs(), INT32_MAX);
  EXPECT_TRUE(deadline.started());
  EXPECT_GT(deadline.RemainingMs(), 0);
  EXPECT_FALSE(deadline.HasExpired());
}

TEST(Deadline, OfZeroIsOverAtOnce) {
  Deadline deadline(0);
  EXPECT_TRUE(deadline.HasExpired());
  EXPECT_EQ(deadline.RemainingMs(), 0);
}

TEST(Deadline, PassesAndStaysOver) {
  Deadline deadline(2);
  deadline.Start();
  SleepMs(2);
  EXPECT_TRUE(deadline.HasExpired());
  deadline.Start();
  EXPECT_EQ(deadline.RemainingMs(), 0);
}

TEST(SleepMs, SleepsInOneCall) {
  for (const std::int32_t milliseconds : {3, 1001}) {
    sleeps.clear();
    SleepMs(milliseconds);
    // If the system wakes it a little early, it sleeps once more.
    ASSERT_GE(sleeps.size(), 1u);
    ASSERT_LE(sleeps.size(), 2u);
    EXPECT_EQ(sleeps[0].tv_sec, milliseconds / 1000);
    EXPECT_EQ(sleeps[0].tv_nsec, milliseconds % 1000 * 1'000'000);
  }
}

}  // namespace
}  // namespace kolvane::devlnk
