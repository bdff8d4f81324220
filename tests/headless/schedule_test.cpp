#include "headless/run.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "base/descriptor.h"
#include "headless/line_input.h"

namespace kolvane::headless {
namespace {

using std::chrono::milliseconds;
using Time = Schedule::Clock::time_point;

const Time kStart{std::chrono::hours(1)};

// The start of the next pass, in milliseconds after kStart, if the clock shows `now_ms` after it.
std::optional<std::int64_t> Next(Schedule& schedule, int now_ms) {
  const auto due = schedule.Next(kStart + milliseconds(now_ms));
  if (!due) return std::nullopt;
  return std::chrono::duration_cast<milliseconds>(*due - kStart).count();
}

TEST(Schedule, WithoutOptionsThereIsOnePass) {
  Schedule schedule({}, {}, kStart);
  EXPECT_EQ(Next(schedule, 0), 0);
  EXPECT_EQ(Next(schedule, 5), std::nullopt);
}

TEST(Schedule, WithoutAPeriodPassesFollowAtOnce) {
  Schedule schedule(3, {}, kStart);
  EXPECT_EQ(Next(schedule, 0), 0);
  EXPECT_EQ(Next(schedule, 70), 70);
  EXPECT_EQ(Next(schedule, 71), 71);
  EXPECT_EQ(Next(schedule, 72), std::nullopt);
}

TEST(Schedule, DelaysDoNotAddUp) {
  Schedule schedule({}, 100, kStart);
  for (int pass = 0; pass < 1000; ++pass)
    ASSERT_EQ(Next(schedule, pass == 0 ? 0 : pass * 100 - 3), pass * 100);
}

TEST(Schedule, APassWithoutDurationIsNotRepeatedAtOnce) {
  Schedule schedule(2, 100, kStart);
  EXPECT_EQ(Next(schedule, 0), 0);
  EXPECT_EQ(Next(schedule, 0), 100);
}

TEST(Schedule, TheShortestPeriodIsAMillisecond) {
  Schedule schedule({}, 0, kStart);
  EXPECT_EQ(Next(schedule, 0), 0);
  EXPECT_EQ(Next(schedule, 0), 1);
  EXPECT_EQ(Next(schedule, 7), 7);
}

TEST(Schedule, MissedStartsAreSkipped) {
  Schedule schedule(4, 100, kStart);
  EXPECT_EQ(Next(schedule, 0), 0);
  EXPECT_EQ(Next(schedule, 350), 400);
  EXPECT_EQ(Next(schedule, 500), 500) << "just in time";
  EXPECT_EQ(Next(schedule, 601), 700);
  EXPECT_EQ(Next(schedule, 701), std::nullopt) << "a skipped start is not a pass";
}

TEST(Schedule, AStartThatWasBarelyMissedIsSkipped) {
  Schedule schedule(3, 100, kStart);
  EXPECT_EQ(Next(schedule, 0), 0);
  EXPECT_EQ(schedule.Next(kStart + milliseconds(100)), kStart + milliseconds(100));
  EXPECT_EQ(schedule.Next(kStart + milliseconds(200) + Schedule::Clock::duration(1)),
            kStart + milliseconds(300));
}

TEST(WaitFor, DoesNotWaitForATimeThatHasPassed) {
  const auto never = [] {
    ADD_FAILURE() << "asked";
    return true;
  };
  EXPECT_EQ(WaitFor(-1, Schedule::Clock::now(), never), WaitEnd::kDue);
  EXPECT_EQ(WaitFor(-1, Schedule::Clock::now() + milliseconds(1), never), WaitEnd::kDue);
}

TEST(WaitFor, EndsWhenItIsGivenUp) {
  int asked = 0;
  EXPECT_EQ(WaitFor(-1, Schedule::Clock::now() + std::chrono::hours(1), [&] { return ++asked == 2; }),
            WaitEnd::kGivenUp);
}

TEST(WaitFor, EndsWhenSomethingCanBeRead) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  const base::Descriptor reader(ends[0]);
  base::Descriptor writer(ends[1]);
  ASSERT_EQ(write(writer.get(), "x", 1), 1);
  EXPECT_EQ(WaitFor(reader.get(), {}, [] { return true; }), WaitEnd::kReadable);
  char byte = 0;
  ASSERT_EQ(read(reader.get(), &byte, 1), 1);
  ASSERT_TRUE(writer.Close());
  EXPECT_EQ(WaitFor(reader.get(), {}, [] { return true; }), WaitEnd::kReadable) << "the end, too";
}

}  // namespace
}  // namespace kolvane::headless
