#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "devlnk/gpib_channel.h"

namespace kolvane::devlnk {
namespace {

TEST(GpibTimeoutCode, IsTheShortestThatIsLongEnough) {
  const struct {
    std::int32_t milliseconds;
    int code;
  } cases[] = {{0, 1},        {1, 5},        {2, 6},        {3, 6},          {4, 7},
               {10, 7},       {11, 8},       {30, 8},       {31, 9},         {100, 9},
               {101, 10},     {300, 10},     {301, 11},     {1000, 11},      {1001, 12},
               {3000, 12},    {5000, 13},    {10'000, 13},  {10'001, 14},    {30'000, 14},
               {100'000, 15}, {300'000, 16}, {300'001, 17}, {1'000'000, 17}, {INT32_MAX, 17}};
  for (const auto& expected : cases)
    EXPECT_EQ(GpibTimeoutCode(expected.milliseconds), expected.code) << expected.milliseconds;
}

TEST(GpibTimeoutCode, ChangesPastEachOfTheDriversTimes) {
  constexpr std::int32_t kTimes[] = {1,    3,      10,     30,      100,     300,      1000,
                                     3000, 10'000, 30'000, 100'000, 300'000, 1'000'000};
  constexpr int kCodeOfFirst = 5;
  constexpr int kLast = 17;
  for (int i = 0; i < static_cast<int>(std::size(kTimes)); ++i) {
    EXPECT_EQ(GpibTimeoutCode(kTimes[i]), kCodeOfFirst + i) << kTimes[i];
    EXPECT_EQ(GpibTimeoutCode(kTimes[i] + 1), std::min(kCodeOfFirst + i + 1, kLast)) << kTimes[i] + 1;
  }
}

TEST(GpibTimeoutCode, IsNeverTheOneThatWaitsForEver) {
  EXPECT_EQ(GpibTimeoutCode(0), 1);
  EXPECT_EQ(GpibTimeoutCode(-1), 1);
}

TEST(GpibEosWord, HasTheCharacterIfItHasAnEffect) {
  EXPECT_EQ(GpibEosWord({true, false, false, '\n', false}), 0);
  EXPECT_EQ(GpibEosWord({true, true, false, '\n', false}), 0x140A);
  EXPECT_EQ(GpibEosWord({true, false, true, 0xFF, false}), 0x18FF);
  EXPECT_EQ(GpibEosWord({true, true, true, 0, false}), 0x1C00);
}

}  // namespace
}  // namespace kolvane::devlnk
