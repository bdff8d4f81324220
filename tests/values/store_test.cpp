#include "values/store.h"

#include <gtest/gtest.h>
#include <random>

#include "faults/failing_new.h"
#include "values/filled_store.h"

namespace kolvane::values {
namespace {

/// What a series holds, with the row of each value: "0:1 2:5".
std::string Text(const Series& series) {
  std::ostringstream out;
  for (std::size_t i = 0; i < series.values().size(); ++i)
    out << (i == 0 ? "" : " ") << series.RowOf(i) << ':' << series.values()[i];
  return out.str();
}

std::string SeriesTexts(const Store& store) {
  std::string all;
  for (std::size_t number = 0; number < store.series_count(); ++number) {
    const Series& series = store.series(number);
    all += store.command(series.command()) + '/' + std::to_string(series.field()) + " " + Text(series) + '\n';
  }
  return all;
}

class CountingObserver final : public StoreObserver {
 public:
  void StoreChanged() override { ++changes; }
  int changes = 0;
};

TEST(Store, IsEmptyAtFirst) {
  const Store store;
  EXPECT_EQ(store.rows(), 0u);
  EXPECT_EQ(store.values(), 0u);
  EXPECT_EQ(store.fields(), 0u);
  EXPECT_EQ(store.commands(), 0u);
  EXPECT_EQ(store.series_count(), 0u);
  EXPECT_EQ(Rows(store), "");
}

TEST(Store, ReturnsItsRows) {
  Store store;
  Add(store, "A?", {1, 2});
  Add(store, "B?", {3});
  Add(store, "A?", {4, 5});
  EXPECT_EQ(Rows(store), "0 A? 1 2; 1 B? 3; 2 A? 4 5");
  EXPECT_EQ(store.rows(), 3u);
  EXPECT_EQ(store.values(), 5u);
  EXPECT_EQ(store.fields(), 2u);
  EXPECT_EQ(store.commands(), 2u);
}

TEST(Store, HasASeriesForEachFieldOfACommand) {
  Store store;
  Add(store, "A?", {1, 2});
  Add(store, "B?", {3});
  Add(store, "A?", {4, 5});
  EXPECT_EQ(SeriesTexts(store), "A?/0 0:1 2:4\nA?/1 0:2 2:5\nB?/0 1:3\n");
}

TEST(Store, JoinsAnswersOfDifferentLength) {
  Store store;
  Add(store, "A?", {1});
  Add(store, "A?", {2, 20});
  Add(store, "B?", {3});
  Add(store, "A?", {4, 40, 400});
  Add(store, "A?", {5});
  Add(store, "A?", {6, 60});
  Add(store, "A?", {7, 70});
  EXPECT_EQ(SeriesTexts(store),
            "A?/0 0:1 1:2 3:4 4:5 5:6 6:7\nA?/1 1:20 3:40 5:60 6:70\nB?/0 2:3\nA?/2 3:400\n");
  EXPECT_EQ(Rows(store), "0 A? 1; 1 A? 2 20; 2 B? 3; 3 A? 4 40 400; 4 A? 5; 5 A? 6 60; 6 A? 7 70");
  EXPECT_EQ(store.fields(), 3u);
}

TEST(Store, CountsTheValuesBeforeARow) {
  Store store;
  for (const double more : {0, 1, 0, 0, 1, 1}) more > 0 ? Add(store, "A?", {1, 2}) : Add(store, "A?", {1});
  const Series& second = store.series(1);
  const std::size_t before[] = {0, 0, 1, 1, 1, 2, 3};
  for (std::size_t row = 0; row <= store.rows(); ++row)
    EXPECT_EQ(second.CountBefore(row), before[row]) << row;
}

TEST(Store, LooksUpSingleValues) {
  Store store;
  Add(store, "A?", {1});
  Add(store, "B?", {2, 3});
  Add(store, "A?", {4, 5});
  EXPECT_EQ(store.RowOfCommand(2), 1u);
  EXPECT_EQ(store.Value(store.CommandOf(2), 1, 1), 5);
  EXPECT_EQ(store.Value(store.CommandOf(0), 0, 1), std::nullopt);
  EXPECT_EQ(store.Value(store.CommandOf(0), 0, 2), std::nullopt);
}

TEST(Store, ReadsFromAnyRow) {
  Store store;
  for (int i = 0; i < 50; ++i) i % 3 == 0 ? Add(store, "A?", {1.0 * i, 2}) : Add(store, "B?", {1.0 * i});
  for (std::size_t first = 0; first < store.rows(); ++first) {
    RowReader reader(store, first);
    for (std::size_t row = first; row < store.rows(); ++row) {
      const Row read = reader.Next();
      ASSERT_EQ(read.fields[0], static_cast<double>(row));
      ASSERT_EQ(read.command, row % 3 == 0 ? "A?" : "B?");
    }
  }
}

TEST(Store, IsEmptyAfterClear) {
  Store store;
  Add(store, "A?", {1, 2});
  const std::uint64_t generation = store.generation();
  store.Clear();
  EXPECT_NE(store.generation(), generation);
  EXPECT_EQ(store.rows(), 0u);
  EXPECT_EQ(store.values(), 0u);
  EXPECT_EQ(store.fields(), 0u);
  EXPECT_EQ(store.commands(), 0u);
  EXPECT_EQ(store.series_count(), 0u);
  AddAt(store, 1000, "B?", {3});
  EXPECT_EQ(Rows(store), "0 B? 3");
}

TEST(Store, NotifiesItsObserver) {
  Store store;
  CountingObserver observer;
  store.Observe(&observer);
  Add(store, "A?", {1});
  Add(store, "A?", {1});
  EXPECT_EQ(observer.changes, 2);
  store.Clear();
  EXPECT_EQ(observer.changes, 3);
  store.Observe(nullptr);
  Add(store, "A?", {1});
  EXPECT_EQ(observer.changes, 3);
}

// Commands may hold anything, the empty text included.
TEST(Store, DistinguishesCommandsByEveryByte) {
  using namespace std::string_literals;
  Store store;
  for (const std::string& command : {""s, "\0"s, "A"s, "A "s, "A"s}) Add(store, command, {1});
  EXPECT_EQ(store.commands(), 4u);
  EXPECT_EQ(store.CommandOf(4), store.CommandOf(2));
}

TEST(Store, HoldsManyRowsOfRandomLength) {
  Store store;
  std::mt19937 generator(3);
  std::vector<std::vector<double>> expected;
  for (int row = 0; row < 20000; ++row) {
    std::vector<double> fields(1 + generator() % 4);
    for (double& field : fields) field = static_cast<double>(generator());
    store.Add({{0, 1.0 * row}, generator() % 2 == 0 ? "A?" : "B?", fields});
    expected.push_back(fields);
  }
  RowReader reader(store);
  for (const auto& fields : expected) {
    const Row row = reader.Next();
    ASSERT_EQ(std::vector<double>(row.fields.begin(), row.fields.end()), fields);
  }
  std::size_t values = 0;
  for (std::size_t number = 0; number < store.series_count(); ++number) {
    const Series& series = store.series(number);
    values += series.values().size();
    for (std::size_t i = 0; i < series.values().size(); ++i)
      ASSERT_EQ(expected[series.RowOf(i)][series.field()], series.values()[i]);
  }
  EXPECT_EQ(values, store.values());
}

// Whichever allocation fails, the row is not added, and the next one is correct.
TEST(Store, StaysConsistentWithoutMemory) {
  bool rows_left = true;
  for (long nth = 1; rows_left; ++nth) {
    Store store;
    for (int i = 0; i < 1023; ++i) Add(store, "A?", {1.0 * i, 2});
    const std::vector<double> fields = {7, 8, 9};
    for (const char* command : {"A?", "a command that no short string holds"}) {
      const std::string before = Rows(store);
      const Row row{{kFirstTimeMs, 5000}, command, fields};
      bool failed = false;
      {
        const faults::FailingNew failing(nth);
        try {
          store.Add(row);
        } catch (const std::bad_alloc&) {
          failed = true;
        }
        rows_left = failing.hit();
      }
      if (!failed) continue;
      ASSERT_EQ(Rows(store), before) << nth;
      store.Add(row);
      ASSERT_EQ(Rows(store), before + "; 4900 " + command + " 7 8 9") << nth;
      ASSERT_EQ(store.series(0).values().Summarize(0, 1023).maximum, 1022) << nth;
    }
  }
}

TEST(RowRanges, AreSorted) {
  EXPECT_EQ(Ordered({}), RowRanges{});
  EXPECT_EQ(Ordered({{5, 7}, {0, 2}, {2, 3}, {9, 9}, {6, 8}}), (RowRanges{{0, 3}, {5, 8}}));
  EXPECT_EQ(Ordered({{0, 10}, {2, 3}}), (RowRanges{{0, 10}}));
}

TEST(RowRanges, AreCountedAndCutOff) {
  EXPECT_EQ(CountOf({{0, 3}, {5, 8}}), 6u);
  EXPECT_EQ(Before({{0, 3}, {5, 8}}, 6), (RowRanges{{0, 3}, {5, 6}}));
  EXPECT_EQ(Before({{0, 3}, {5, 8}}, 5), (RowRanges{{0, 3}}));
  EXPECT_EQ(Before({{0, 3}}, 0), RowRanges{});
}

TEST(RowRanges, HaveStatistics) {
  Store store;
  for (const double value : {1, 2, 3, 4, 5, 6})
    value == 3 ? Add(store, "B?", {99}) : Add(store, "A?", {value});
  const Summary summary = Summarize(store.series(0), {{0, 3}, {5, 6}});
  EXPECT_EQ(summary.count, 3u);
  EXPECT_EQ(summary.mean, 3);
  EXPECT_EQ(summary.maximum, 6);
  EXPECT_EQ(Summarize(store.series(1), {{3, 6}}).count, 0u);
}

}  // namespace

}  // namespace kolvane::values
