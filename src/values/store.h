#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "values/column.h"
#include "values/row.h"

namespace kolvane::values {

/// The values of one field of a command, in row order. A row with fewer fields has no value here.
class Series {
 public:
  /// `rows` are those of the command; they must outlive the series.
  Series(std::uint32_t command, std::size_t field, const Chunks<std::uint32_t>& rows)
      : command_(command), field_(field), rows_(&rows) {}

  /// Number of the command in the store; number of the field, from 0.
  std::uint32_t command() const { return command_; }
  std::size_t field() const { return field_; }
  const Column& values() const { return values_; }

  /// The number of values in the store's rows before `row`.
  std::size_t CountBefore(std::size_t row) const;
  /// The store's row that holds value `index`.
  std::size_t RowOf(std::size_t index) const;

  /// The value in the command's n-th row, if it has one.
  std::optional<double> InRowOfCommand(std::size_t n) const;
  void Append(std::size_t row_of_command, double value);
  /// Keeps the values of the command's first `rows_of_command` rows.
  void Truncate(std::size_t rows_of_command);

 private:
  friend class SeriesScan;

  // From this row of the command on, consecutive rows have values, up to the next run's index.
  struct Run {
    std::uint32_t row;
    std::uint32_t index;
  };

  std::size_t CountBeforeRowOfCommand(std::size_t n) const;

  std::uint32_t command_;
  std::size_t field_;
  const Chunks<std::uint32_t>* rows_;
  Column values_;
  Chunks<Run> runs_;
};

/// Counts a series' values before ascending rows, which costs less than searching for each row again.
class SeriesScan {
 public:
  explicit SeriesScan(const Series& series) : series_(series) {}
  /// `row` must not be below that of the previous call.
  std::size_t CountBefore(std::size_t row);

 private:
  const Series& series_;
  std::size_t row_ = 0;  // of the store
  std::size_t n_ = 0;    // rows of the command before it
};

/// Notified of each row added to a store, and when it is cleared.
class StoreObserver {
 public:
  virtual ~StoreObserver() = default;
  virtual void StoreChanged() = 0;
};

/// The numeric answers of a session, in columns. Made for tens of millions of values: each takes at most 21
/// bytes, less if an answer has several, and adding a row never waits for others to be moved.
class Store {
 public:
  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  /// Adds a row with at least one field. If memory runs out, throws std::bad_alloc and adds no value,
  /// although the row's command and series may have been added.
  void Add(const Row& row);
  void Clear();
  /// One observer at most; null removes it.
  void Observe(StoreObserver* observer) { observer_ = observer; }

  std::size_t rows() const { return command_of_row_.size(); }
  std::size_t values() const { return values_; }
  /// The number of fields of the longest row.
  std::size_t fields() const { return fields_; }
  /// Incremented by each Clear.
  std::uint64_t generation() const { return generation_; }

  /// Commands and series are numbered in the order of their first occurrence.
  std::size_t commands() const { return commands_.size(); }
  const std::string& command(std::size_t number) const { return commands_[number].text; }
  std::size_t series_count() const { return series_.size(); }
  const Series& series(std::size_t number) const { return series_[number]; }
  /// The number of fields in the command's longest answer.
  std::size_t FieldsOf(std::size_t command) const { return commands_[command].series.size(); }

  std::size_t CommandOf(std::size_t row) const { return command_of_row_[row]; }
  /// Which of its command's rows `row` is.
  std::size_t RowOfCommand(std::size_t row) const;
  /// The value in `field` of the command's n-th row.
  std::optional<double> Value(std::size_t command, std::size_t n, std::size_t field) const;
  const TimeColumn& times() const { return times_; }

 private:
  struct Command {
    std::string text;
    Chunks<std::uint32_t> rows;
    std::vector<std::size_t> series;  // by field
  };

  std::uint32_t NumberOf(std::string_view command);
  void Append(const Row& row, Command& command, std::uint32_t number);
  void RemoveLast(std::size_t rows_of_command, Command& command);

  TimeColumn times_;
  Chunks<std::uint32_t> command_of_row_;
  std::deque<Command> commands_;  // never moved
  std::unordered_map<std::string_view, std::uint32_t> numbers_;
  std::vector<Series> series_;
  std::size_t values_ = 0;
  std::size_t fields_ = 0;
  std::uint64_t generation_ = 0;
  StoreObserver* observer_ = nullptr;
};

/// Reads the rows of a store in order, which costs less than looking up each one. The store may grow in
/// between, but not be cleared.
class RowReader {
 public:
  explicit RowReader(const Store& store, std::size_t first = 0) : store_(store), row_(first) {}

  /// Number of the row that Next returns.
  std::size_t row() const { return row_; }
  /// The next row, which must exist; valid until the next call.
  Row Next();

 private:
  std::size_t RowOfCommand(std::size_t command);

  const Store& store_;
  std::size_t row_;
  std::vector<std::size_t> next_;  // by command: its next row
  std::vector<double> fields_;
};

/// Rows from `first` to before `last`.
struct RowRange {
  std::size_t first;
  std::size_t last;
  bool operator==(const RowRange&) const = default;
};

/// Ranges in order, none of which touches the next.
using RowRanges = std::vector<RowRange>;

/// Sorts and joins ranges into that form; empty ones are dropped.
RowRanges Ordered(RowRanges ranges);

std::size_t CountOf(const RowRanges& ranges);

/// The part of the ranges before row `end`.
RowRanges Before(RowRanges ranges, std::size_t end);

/// The statistics of a series in these rows.
Summary Summarize(const Series& series, const RowRanges& ranges);

}  // namespace kolvane::values
