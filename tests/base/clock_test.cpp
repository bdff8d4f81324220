#include "base/clock.h"

#include <gtest/gtest.h>

#include <ctime>

namespace kolvane::base {
namespace {

double Uptime() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

TEST(SteadyClock, CountsFromItsOwnStart) {
  const double before = Uptime();
  const SteadyClock clock;
  const double first = clock.Seconds();
  const double second = clock.Seconds();
  EXPECT_LE(first, Uptime() - before) << "however long the machine has been up";
  EXPECT_GE(first, 0);
  EXPECT_GE(second, first);
}

TEST(CoarseClock, IsNeverAheadOfTheSystemsAndMovesOn) {
  const CoarseClock clock;
  const double first = clock.Seconds();
  EXPECT_LE(first, Uptime());
  EXPECT_GT(first, 0);
  double next = first;
  while (next == first) next = clock.Seconds();
  EXPECT_GT(next, first);
  EXPECT_LE(next, Uptime());
}

TEST(SteadyClock, NoTimeIsLeftUntilAMomentThatHasPassed) {
  using std::chrono::steady_clock;
  const timespec none = TimeUntil(steady_clock::now() - std::chrono::hours(1));
  EXPECT_EQ(none.tv_sec, 0);
  EXPECT_EQ(none.tv_nsec, 0);
  const timespec hour = TimeUntil(steady_clock::now() + std::chrono::hours(1));
  EXPECT_GT(hour.tv_sec, 3500);
  EXPECT_LE(hour.tv_sec, 3600);
}

}  // namespace
}  // namespace kolvane::base
