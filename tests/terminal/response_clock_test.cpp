#include "terminal/response_clock.h"

#include <gtest/gtest.h>

#include "terminal/session_fakes.h"

namespace kolvane::terminal {
namespace {

FakeClock ClockAt(double seconds) {
  FakeClock clock;
  clock.seconds = {seconds};
  return clock;
}

TEST(ResponseClock, RoundsSecondsAndMillisecondsToSingle) {
  EXPECT_EQ(SingleMilliseconds(ClockAt(0)), 0.0f);
  EXPECT_EQ(SingleMilliseconds(ClockAt(0.0035)), 3.5f);
  EXPECT_EQ(SingleMilliseconds(ClockAt(100000.001)), 100000000.0f);
  EXPECT_EQ(SingleMilliseconds(ClockAt(100000.005)), 100000008.0f);
}

TEST(ResponseClock, IsDoubleForTheCommandList) {
  EXPECT_DOUBLE_EQ(DoubleMilliseconds(ClockAt(100000.001)), 100000001.0);
}

}  // namespace
}  // namespace kolvane::terminal
