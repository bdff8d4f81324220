#include "devlnk/serial_channel.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kolvane::devlnk {
namespace {

/// A line that sends `rate` bytes a second once `starts_at_ms` have passed.
struct FakeOutput final : OutputQueue {
  FakeOutput(double bytes, double rate, std::int32_t starts_at_ms = 0)
      : left(bytes), per_ms(rate / 1000), starts_at(starts_at_ms) {}

  int Bytes() override { return static_cast<int>(left + 0.999); }
  void Wait(std::int32_t milliseconds) override {
    const std::int32_t idle = std::clamp(starts_at - waited, 0, milliseconds);
    left = std::max(0.0, left - (milliseconds - idle) * per_ms);
    waited += milliseconds;
  }
  void Drop() override { dropped = true; }

  double left;
  double per_ms;
  std::int32_t starts_at;
  std::int32_t waited = 0;
  bool dropped = false;
};

TEST(FinishOutput, DoesNotWaitIfNothingIsQueued) {
  FakeOutput output(0, 0);
  FinishOutput(output, 9600);
  EXPECT_EQ(output.waited, 0);
  EXPECT_FALSE(output.dropped);
}

TEST(FinishOutput, GivesShortOutputTheTimeThatItNeeds) {
  FakeOutput output(8, 960);
  FinishOutput(output, 9600);
  EXPECT_EQ(output.waited, 20);
  EXPECT_FALSE(output.dropped);
}

TEST(FinishOutput, SendsALongCommandAsLongAsItMoves) {
  FakeOutput output(4000, 960);
  FinishOutput(output, 9600);
  EXPECT_FALSE(output.dropped);
  EXPECT_EQ(output.Bytes(), 0);
  EXPECT_GE(output.waited, 4000);
  EXPECT_LE(output.waited, 5500);
}

TEST(FinishOutput, DropsOutputThatStandsStillForASecond) {
  for (const double bytes : {1, 100, 4096}) {
    FakeOutput output(bytes, 0);
    FinishOutput(output, 9600);
    EXPECT_TRUE(output.dropped) << bytes;
    EXPECT_GE(output.waited, 1000) << bytes;
    EXPECT_LE(output.waited, 1100) << bytes;
  }
}

TEST(FinishOutput, WaitsThroughAShorterStandstill) {
  FakeOutput output(20, 960, 800);
  FinishOutput(output, 9600);
  EXPECT_FALSE(output.dropped);
  EXPECT_LE(output.waited, 900);
}

TEST(FinishOutput, TakesTenSecondsAtMost) {
  FakeOutput output(100'000, 5);
  FinishOutput(output, 50);
  EXPECT_TRUE(output.dropped);
  EXPECT_GE(output.waited, 10'000);
  EXPECT_LE(output.waited, 11'000);
}

}  // namespace
}  // namespace kolvane::devlnk
