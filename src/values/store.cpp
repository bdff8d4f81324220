#include "values/store.h"

#include <algorithm>
#include <limits>
#include <new>

namespace kolvane::values {

void Series::Append(std::size_t row_of_command, double value) {
  const std::size_t index = values_.size();
  if (runs_.empty() || runs_.back().row + (index - runs_.back().index) != row_of_command)
    runs_.Append({static_cast<std::uint32_t>(row_of_command), static_cast<std::uint32_t>(index)});
  values_.Append(value);
}

void Series::Truncate(std::size_t rows_of_command) {
  values_.Truncate(CountBeforeRowOfCommand(rows_of_command));
  runs_.Truncate(
      runs_.PartitionPoint(0, runs_.size(), [&](const Run& run) { return run.row < rows_of_command; }));
}

std::size_t Series::CountBeforeRowOfCommand(std::size_t n) const {
  const std::size_t run =
      runs_.PartitionPoint(0, runs_.size(), [n](const Run& each) { return each.row < n; });
  if (run == 0) return 0;
  const std::size_t end = run < runs_.size() ? runs_[run].index : values_.size();
  return std::min(end, runs_[run - 1].index + (n - runs_[run - 1].row));
}

std::optional<double> Series::InRowOfCommand(std::size_t n) const {
  const std::size_t index = CountBeforeRowOfCommand(n);
  if (CountBeforeRowOfCommand(n + 1) == index) return std::nullopt;
  return values_[index];
}

std::size_t Series::CountBefore(std::size_t row) const { return SeriesScan(*this).CountBefore(row); }

// Each row of the store adds at most one to the command's, which limits the search.
std::size_t SeriesScan::CountBefore(std::size_t row) {
  const Chunks<std::uint32_t>& rows = *series_.rows_;
  const std::size_t last = std::min(rows.size(), n_ + (row - row_));
  n_ = rows.PartitionPoint(n_, last, [row](std::uint32_t each) { return each < row; });
  row_ = row;
  return series_.CountBeforeRowOfCommand(n_);
}

std::size_t Series::RowOf(std::size_t index) const {
  const std::size_t next =
      runs_.PartitionPoint(0, runs_.size(), [index](const Run& each) { return each.index <= index; });
  const Run& run = runs_[next - 1];
  return (*rows_)[run.row + (index - run.index)];
}

void Store::Add(const Row& row) {
  constexpr std::size_t kMaxRows = std::numeric_limits<std::uint32_t>::max();
  if (rows() == kMaxRows) throw std::bad_alloc();
  const std::uint32_t number = NumberOf(row.command);
  Command& command = commands_[number];
  const std::size_t before = command.rows.size();
  try {
    Append(row, command, number);
  } catch (...) {
    RemoveLast(before, command);
    throw;
  }
  values_ += row.fields.size();
  fields_ = std::max(fields_, row.fields.size());
  if (observer_ != nullptr) observer_->StoreChanged();
}

std::uint32_t Store::NumberOf(std::string_view command) {
  if (const auto found = numbers_.find(command); found != numbers_.end()) return found->second;
  const auto number = static_cast<std::uint32_t>(commands_.size());
  commands_.push_back({std::string(command), {}, {}});
  try {
    numbers_.emplace(commands_.back().text, number);
  } catch (...) {
    commands_.pop_back();
    throw;
  }
  return number;
}

// The row is complete once command_of_row_ holds it.
void Store::Append(const Row& row, Command& command, std::uint32_t number) {
  const std::size_t n = command.rows.size();
  for (std::size_t field = 0; field < row.fields.size(); ++field) {
    if (field == command.series.size()) {
      command.series.reserve(field + 1);
      series_.emplace_back(number, field, command.rows);
      command.series.push_back(series_.size() - 1);
    }
    series_[command.series[field]].Append(n, row.fields[field]);
  }
  command.rows.Append(static_cast<std::uint32_t>(rows()));
  times_.Append(row.moment);
  command_of_row_.Append(number);
}

void Store::RemoveLast(std::size_t rows_of_command, Command& command) {
  for (const std::size_t number : command.series) series_[number].Truncate(rows_of_command);
  command.rows.Truncate(rows_of_command);
  times_.Truncate(rows());
}

void Store::Clear() {
  times_ = {};
  command_of_row_ = {};
  numbers_.clear();
  series_.clear();
  commands_.clear();
  values_ = 0;
  fields_ = 0;
  ++generation_;
  if (observer_ != nullptr) observer_->StoreChanged();
}

std::size_t Store::RowOfCommand(std::size_t row) const {
  const Chunks<std::uint32_t>& rows = commands_[CommandOf(row)].rows;
  return rows.PartitionPoint(0, rows.size(), [row](std::uint32_t each) { return each < row; });
}

std::optional<double> Store::Value(std::size_t command, std::size_t n, std::size_t field) const {
  if (field >= FieldsOf(command)) return std::nullopt;
  return series_[commands_[command].series[field]].InRowOfCommand(n);
}

namespace {

constexpr std::size_t kUnknown = static_cast<std::size_t>(-1);

}  // namespace

std::size_t RowReader::RowOfCommand(std::size_t command) {
  if (next_.size() <= command) next_.resize(command + 1, kUnknown);
  if (next_[command] == kUnknown) next_[command] = store_.RowOfCommand(row_);
  return next_[command]++;
}

Row RowReader::Next() {
  const std::size_t command = store_.CommandOf(row_);
  const std::size_t n = RowOfCommand(command);
  fields_.clear();
  while (const auto value = store_.Value(command, n, fields_.size())) fields_.push_back(*value);
  const TimeColumn& times = store_.times();
  const Row row{{times.TimeMs(row_), times.Seconds(row_)}, store_.command(command), fields_};
  ++row_;
  return row;
}

RowRanges Ordered(RowRanges ranges) {
  std::ranges::sort(ranges, {}, &RowRange::first);
  RowRanges ordered;
  for (const RowRange& range : ranges) {
    if (range.first >= range.last) continue;
    if (ordered.empty() || range.first > ordered.back().last) {
      ordered.push_back(range);
    } else {
      ordered.back().last = std::max(ordered.back().last, range.last);
    }
  }
  return ordered;
}

std::size_t CountOf(const RowRanges& ranges) {
  std::size_t count = 0;
  for (const RowRange& range : ranges) count += range.last - range.first;
  return count;
}

RowRanges Before(RowRanges ranges, std::size_t end) {
  for (RowRange& range : ranges) range.last = std::min(range.last, end);
  std::erase_if(ranges, [](const RowRange& range) { return range.first >= range.last; });
  return ranges;
}

Summary Summarize(const Series& series, const RowRanges& ranges) {
  Summary all;
  for (const RowRange& range : ranges)
    all.Merge(series.values().Summarize(series.CountBefore(range.first), series.CountBefore(range.last)));
  return all;
}

}  // namespace kolvane::values
