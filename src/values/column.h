#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "values/row.h"

namespace kolvane::values {

/// A sequence that grows at its end without moving its elements: a short one as a vector does, a long one in
/// chunks of kChunk. If memory runs out, it is unchanged.
template <typename T>
class Chunks {
 public:
  static constexpr std::size_t kChunk = 4096;

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const T& operator[](std::size_t at) const { return chunks_[at / kChunk][at % kChunk]; }
  T& operator[](std::size_t at) { return chunks_[at / kChunk][at % kChunk]; }
  const T& back() const { return (*this)[size_ - 1]; }

  void Append(const T& value) {
    if (size_ == chunks_.size() * kChunk) chunks_.emplace_back();
    std::vector<T>& last = chunks_.back();
    if (last.size() == last.capacity()) last.reserve(std::min(kChunk, last.size() + Growth()));
    last.push_back(value);
    ++size_;
  }

  /// Keeps the first `size` elements; `size` must not exceed size().
  void Truncate(std::size_t size) {
    size_ = size;
    chunks_.resize((size + kChunk - 1) / kChunk);
    if (size % kChunk != 0) chunks_.back().resize(size % kChunk);
  }

  /// The elements from `first` on, to before `last`, that are contiguous in memory.
  std::span<const T> Piece(std::size_t first, std::size_t last) const {
    const std::size_t end = std::min(last, (first / kChunk + 1) * kChunk);
    return {&(*this)[first], end - first};
  }

  /// The first index, from `first` to `last`, for which `comes_before` is false; it must be true for all
  /// elements between `first` and that one. Fastest if the result is `last`.
  template <typename Predicate>
  std::size_t PartitionPoint(std::size_t first, std::size_t last, Predicate comes_before) const {
    if (first < last && comes_before((*this)[last - 1])) return last;
    while (first < last) {
      const std::size_t middle = first + (last - first) / 2;
      if (comes_before((*this)[middle])) {
        first = middle + 1;
      } else {
        last = middle;
      }
    }
    return first;
  }

 private:
  static constexpr std::size_t kMinGrowth = 16;

  // Growing by a quarter keeps the unused memory small.
  std::size_t Growth() const { return std::max(kMinGrowth, size_ / 4); }

  std::vector<std::vector<T>> chunks_;
  std::size_t size_ = 0;
};

/// Statistics of some values. Mean and deviations are kept instead of sums, so that small differences between
/// large values are not lost.
struct Summary {
  std::uint64_t count = 0;
  double minimum = std::numeric_limits<double>::infinity();
  double maximum = -std::numeric_limits<double>::infinity();
  double mean = 0;
  double deviations = 0;  ///< sum of the squared distances from the mean

  void Add(std::span<const double> values);
  void Merge(const Summary& other);
  /// The sample standard deviation (denominator count - 1); no value for fewer than two values.
  std::optional<double> StandardDeviation() const;
};

/// Smallest and largest of some values; with no values the smallest is above the largest.
struct Extent {
  double minimum = std::numeric_limits<double>::infinity();
  double maximum = -std::numeric_limits<double>::infinity();

  bool empty() const { return minimum > maximum; }
  void Add(double value) { Merge({value, value}); }
  void Merge(const Extent& other) {
    if (other.minimum < minimum) minimum = other.minimum;
    if (other.maximum > maximum) maximum = other.maximum;
  }
};

/// Values in order of arrival, with a pyramid of statistics: a node for each kLeaf values, and one for each
/// kFanOut nodes below. The statistics of a range take O(log n) steps.
class Column {
 public:
  static constexpr std::size_t kLeaf = 64;
  static constexpr std::size_t kFanOut = 16;

  std::size_t size() const { return values_.size(); }
  double operator[](std::size_t at) const { return values_[at]; }

  /// If memory runs out, Truncate to the previous size restores the column.
  void Append(double value);
  /// Keeps the first `size` values; `size` must not exceed size().
  void Truncate(std::size_t size);

  /// Of the values from `first` to before `last`, which must not exceed size().
  Summary Summarize(std::size_t first, std::size_t last) const;
  Extent ExtentOf(std::size_t first, std::size_t last) const;

 private:
  struct Node {
    double minimum;
    double maximum;
    double mean;
    double deviations;
  };

  static Summary SummaryOf(const Node& node, std::size_t width);
  void CloseLeaf();
  void CloseNode(std::size_t level, std::size_t width_below);
  template <typename UseNode, typename UseValues>
  void Walk(std::size_t first, std::size_t last, UseNode use_node, UseValues use_values) const;

  Chunks<double> values_;
  std::vector<Chunks<Node>> levels_;
};

/// The time of each row: seconds since the first row, and the time of day in milliseconds. A row takes four
/// bytes, as an offset within its block of rows; each setting of the wall clock takes one entry. Times are
/// accurate to the microsecond if a block lasts an hour, to some milliseconds if rows are an hour apart.
class TimeColumn {
 public:
  std::size_t size() const { return offsets_.size(); }

  /// Seconds below those of the previous row count as equal to them.
  void Append(const Moment& moment);
  /// Keeps the first `size` rows; `size` must not exceed size().
  void Truncate(std::size_t size);

  double Seconds(std::size_t row) const { return static_cast<double>(Micros(row)) * 1e-6; }
  /// Milliseconds since 1970 UTC.
  std::int64_t TimeMs(std::size_t row) const;
  /// The first of the first `rows` rows at `seconds` or later; `rows` if there is none.
  std::size_t FirstAt(double seconds, std::size_t rows) const;

 private:
  // The rows of one chunk of offsets: origin and unit of the offsets.
  struct Block {
    std::int64_t origin_us;
    unsigned shift;  // the unit is 1 << shift microseconds
  };
  // From this row on the wall clock is ahead of the monotonic clock by `ahead_us`.
  struct Setting {
    std::size_t row;
    std::int64_t ahead_us;
  };

  std::int64_t Micros(std::size_t row) const {
    const Block& block = blocks_[row / kBlock];
    return block.origin_us + (std::int64_t{offsets_[row]} << block.shift);
  }
  std::int64_t SinceStart(double seconds) const;
  void NoteSetting(std::int64_t micros, std::int64_t time_ms);
  std::int64_t AheadAt(std::size_t row) const;
  void Widen(Block& block, std::int64_t offset);

  static constexpr std::size_t kBlock = Chunks<std::uint32_t>::kChunk;

  double start_ = 0;
  Chunks<std::uint32_t> offsets_;
  std::vector<Block> blocks_;
  std::vector<Setting> settings_;
};

}  // namespace kolvane::values
