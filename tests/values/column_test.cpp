#include "values/column.h"

#include <gtest/gtest.h>
#include <cmath>
#include <random>
#include <vector>

namespace kolvane::values {
namespace {

// Values of about a million with small differences, so that lost digits show.
std::vector<double> Noise(std::size_t count) {
  std::mt19937 generator(1);
  std::normal_distribution<double> distribution(1e6, 0.5);
  std::vector<double> values(count);
  for (double& value : values) value = distribution(generator);
  return values;
}

Column ColumnOf(const std::vector<double>& values) {
  Column column;
  for (const double value : values) column.Append(value);
  return column;
}

// In two passes, as in a textbook.
Summary SummaryOf(const std::vector<double>& values, std::size_t first, std::size_t last) {
  Summary plain;
  for (std::size_t i = first; i < last; ++i) {
    ++plain.count;
    plain.mean += (values[i] - values[first]) / static_cast<double>(last - first);
    plain.minimum = std::min(plain.minimum, values[i]);
    plain.maximum = std::max(plain.maximum, values[i]);
  }
  if (last > first) plain.mean += values[first];
  for (std::size_t i = first; i < last; ++i) plain.deviations += std::pow(values[i] - plain.mean, 2);
  return plain;
}

void ExpectSame(const Column& column, const std::vector<double>& values, std::size_t first,
                std::size_t last) {
  const Summary plain = SummaryOf(values, first, last);
  const Summary got = column.Summarize(first, last);
  EXPECT_EQ(got.count, plain.count) << first << ' ' << last;
  EXPECT_EQ(got.minimum, plain.minimum) << first << ' ' << last;
  EXPECT_EQ(got.maximum, plain.maximum) << first << ' ' << last;
  EXPECT_NEAR(got.mean, plain.mean, 1e-9) << first << ' ' << last;
  EXPECT_NEAR(got.deviations, plain.deviations, 1e-8 * (1 + plain.deviations)) << first << ' ' << last;
  const Extent extent = column.ExtentOf(first, last);
  EXPECT_EQ(extent.minimum, plain.minimum) << first << ' ' << last;
  EXPECT_EQ(extent.maximum, plain.maximum) << first << ' ' << last;
}

TEST(Column, KeepsItsValues) {
  const std::vector<double> values = Noise(9000);
  const Column column = ColumnOf(values);
  ASSERT_EQ(column.size(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(column[i], values[i]) << i;
}

TEST(Column, SummarizesAnEmptyRange) {
  EXPECT_EQ(Column().Summarize(0, 0).count, 0u);
  EXPECT_TRUE(Column().ExtentOf(0, 0).empty());
  EXPECT_EQ(ColumnOf(Noise(100)).Summarize(50, 50).count, 0u);
}

TEST(Column, SummarizesEveryRangeAroundALeaf) {
  const std::vector<double> values = Noise(3 * Column::kLeaf);
  const Column column = ColumnOf(values);
  for (std::size_t first = 0; first <= values.size(); ++first) {
    for (std::size_t last = first; last <= values.size(); ++last) ExpectSame(column, values, first, last);
  }
}

TEST(Column, SummarizesRangesOverAllLevels) {
  const std::vector<double> values = Noise(Column::kLeaf * Column::kFanOut * Column::kFanOut * 4 + 777);
  const Column column = ColumnOf(values);
  ExpectSame(column, values, 0, values.size());
  std::mt19937 generator(2);
  for (int i = 0; i < 200; ++i) {
    std::size_t first = generator() % (values.size() + 1);
    std::size_t last = generator() % (values.size() + 1);
    if (first > last) std::swap(first, last);
    ExpectSame(column, values, first, last);
  }
}

TEST(Column, ContinuesAfterItWasTruncated) {
  const std::vector<double> values = Noise(Column::kLeaf * Column::kFanOut * 5);
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{1023}, std::size_t{1024},
                                 std::size_t{4096}, values.size()}) {
    Column column = ColumnOf(values);
    column.Truncate(size);
    ASSERT_EQ(column.size(), size);
    for (std::size_t i = size; i < values.size(); ++i) column.Append(values[i]);
    ExpectSame(column, values, 0, values.size());
    ExpectSame(column, values, 3, values.size() - 3);
  }
}

Summary SummaryOfAll(const std::vector<double>& values) {
  Summary summary;
  summary.Add(values);
  return summary;
}

TEST(Summary, OfNothingHasNoDeviation) {
  const Summary none;
  EXPECT_EQ(none.count, 0u);
  EXPECT_EQ(none.StandardDeviation(), std::nullopt);
  EXPECT_EQ(SummaryOfAll({7}).StandardDeviation(), std::nullopt);
}

TEST(Summary, OfSomeValues) {
  const Summary some = SummaryOfAll({2, 4, 4, 4, 5, 5, 7, 9});
  EXPECT_EQ(some.count, 8u);
  EXPECT_EQ(some.minimum, 2);
  EXPECT_EQ(some.maximum, 9);
  EXPECT_DOUBLE_EQ(some.mean, 5);
  EXPECT_DOUBLE_EQ(*some.StandardDeviation() * *some.StandardDeviation(), 32.0 / 7);
}

TEST(Summary, MergesToTheSummaryOfTheWhole) {
  Summary merged;
  for (const auto& part : {std::vector<double>{2, 4}, {}, {4, 4, 5}, {5, 7, 9}})
    merged.Merge(SummaryOfAll(part));
  const Summary whole = SummaryOfAll({2, 4, 4, 4, 5, 5, 7, 9});
  EXPECT_EQ(merged.count, whole.count);
  EXPECT_EQ(merged.minimum, whole.minimum);
  EXPECT_EQ(merged.maximum, whole.maximum);
  EXPECT_DOUBLE_EQ(merged.mean, whole.mean);
  EXPECT_DOUBLE_EQ(merged.deviations, whole.deviations);
}

// A sum of squares would have lost all digits here.
TEST(Summary, KeepsSmallDifferencesBetweenLargeValues) {
  Summary half = SummaryOfAll({1e9 + 4, 1e9 + 7});
  half.Merge(SummaryOfAll({1e9 + 13, 1e9 + 16}));
  EXPECT_DOUBLE_EQ(half.mean, 1e9 + 10);
  EXPECT_DOUBLE_EQ(half.deviations, 90);
}

TEST(Extent, OfNothingIsEmpty) {
  Extent extent;
  EXPECT_TRUE(extent.empty());
  extent.Merge({});
  EXPECT_TRUE(extent.empty());
  extent.Add(3);
  extent.Add(-1);
  EXPECT_FALSE(extent.empty());
  EXPECT_EQ(extent.minimum, -1);
  EXPECT_EQ(extent.maximum, 3);
}

constexpr std::int64_t kNoon = 1795262400000;  // of some day, in milliseconds

TEST(TimeColumn, CountsSecondsFromTheFirstRow) {
  TimeColumn times;
  times.Append({kNoon, 5000.25});
  times.Append({kNoon + 100, 5000.350004});
  EXPECT_EQ(times.size(), 2u);
  EXPECT_DOUBLE_EQ(times.Seconds(0), 0);
  EXPECT_DOUBLE_EQ(times.Seconds(1), 0.100004);
  EXPECT_EQ(times.TimeMs(0), kNoon);
  EXPECT_EQ(times.TimeMs(1), kNoon + 100);
}

TEST(TimeColumn, NeverGoesBack) {
  TimeColumn times;
  for (const double seconds : {10.0, 12.0, 11.0, 13.0}) times.Append({kNoon, seconds});
  EXPECT_DOUBLE_EQ(times.Seconds(2), 2);
  EXPECT_DOUBLE_EQ(times.Seconds(3), 3);
}

TEST(TimeColumn, KeepsTheTimeOfDayWhenTheClockIsSet) {
  TimeColumn times;
  const std::vector<std::int64_t> days = {kNoon, kNoon + 1000, kNoon - 3600000, kNoon - 3599000, kNoon + 7};
  for (std::size_t i = 0; i < days.size(); ++i) times.Append({days[i], static_cast<double>(i)});
  for (std::size_t i = 0; i < days.size(); ++i) EXPECT_EQ(times.TimeMs(i), days[i]) << i;
  for (std::size_t i = 0; i < days.size(); ++i) EXPECT_DOUBLE_EQ(times.Seconds(i), static_cast<double>(i));
}

TEST(TimeColumn, KeepsTimesBefore1970) {
  TimeColumn times;
  times.Append({-1, 0});
  times.Append({-1500, 1});
  EXPECT_EQ(times.TimeMs(0), -1);
  EXPECT_EQ(times.TimeMs(1), -1500);
}

// Hours and days between rows do not fit into the first unit of the offsets.
TEST(TimeColumn, HoldsRowsThatAreFarApart) {
  for (const double gap : {0.00001, 1.0, 3600.0, 86400.0, 2592000.0}) {
    TimeColumn times;
    constexpr std::size_t kRows = 10000;
    for (std::size_t row = 0; row < kRows; ++row) {
      const double seconds = gap * static_cast<double>(row);
      times.Append({kNoon + static_cast<std::int64_t>(seconds * 1000), seconds});
    }
    const double tolerance = std::max(3e-6, gap * 2e-6);
    for (std::size_t row = 0; row < kRows; ++row) {
      const double seconds = gap * static_cast<double>(row);
      ASSERT_NEAR(times.Seconds(row), seconds, tolerance) << gap << ' ' << row;
      ASSERT_NEAR(static_cast<double>(times.TimeMs(row)), static_cast<double>(kNoon) + seconds * 1000,
                  2 + tolerance * 1000)
          << gap << ' ' << row;
    }
  }
}

TEST(TimeColumn, FindsTheFirstRowAtATime) {
  TimeColumn times;
  for (const double seconds : {0.0, 1.0, 1.0, 2.0}) times.Append({kNoon, seconds});
  EXPECT_EQ(times.FirstAt(-1, 4), 0u);
  EXPECT_EQ(times.FirstAt(0, 4), 0u);
  EXPECT_EQ(times.FirstAt(0.5, 4), 1u);
  EXPECT_EQ(times.FirstAt(1, 4), 1u);
  EXPECT_EQ(times.FirstAt(1.5, 4), 3u);
  EXPECT_EQ(times.FirstAt(3, 4), 4u);
  EXPECT_EQ(times.FirstAt(3, 2), 2u);
}

TEST(TimeColumn, ContinuesAfterItWasTruncated) {
  TimeColumn times;
  times.Append({kNoon, 0});
  times.Append({kNoon + 90000000, 1});
  times.Truncate(1);
  EXPECT_EQ(times.size(), 1u);
  times.Append({kNoon + 2000, 2});
  EXPECT_DOUBLE_EQ(times.Seconds(1), 2);
  EXPECT_EQ(times.TimeMs(1), kNoon + 2000);
  times.Truncate(0);
  times.Append({kNoon, 77});
  EXPECT_DOUBLE_EQ(times.Seconds(0), 0);
}

}  // namespace

}  // namespace kolvane::values
