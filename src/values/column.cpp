#include "values/column.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kolvane::values {

void Summary::Add(std::span<const double> values) {
  for (const double value : values) {
    ++count;
    minimum = std::min(minimum, value);
    maximum = std::max(maximum, value);
    const double distance = value - mean;
    mean += distance / static_cast<double>(count);
    deviations += distance * (value - mean);
  }
}

void Summary::Merge(const Summary& other) {
  if (other.count == 0) return;
  if (count == 0) {
    *this = other;
    return;
  }
  const auto own = static_cast<double>(count);
  const auto others = static_cast<double>(other.count);
  const double distance = other.mean - mean;
  const double share = others / (own + others);
  count += other.count;
  minimum = std::min(minimum, other.minimum);
  maximum = std::max(maximum, other.maximum);
  mean += distance * share;
  deviations += other.deviations + distance * distance * own * share;
}

std::optional<double> Summary::StandardDeviation() const {
  if (count < 2) return std::nullopt;
  return std::sqrt(deviations / static_cast<double>(count - 1));
}

Summary Column::SummaryOf(const Node& node, std::size_t width) {
  return {width, node.minimum, node.maximum, node.mean, node.deviations};
}

void Column::Append(double value) {
  values_.Append(value);
  if (size() % kLeaf != 0) return;
  CloseLeaf();
  std::size_t width = kLeaf;
  for (std::size_t level = 1; size() % (width * kFanOut) == 0; ++level, width *= kFanOut)
    CloseNode(level, width);
}

void Column::CloseLeaf() {
  Summary leaf;
  leaf.Add(values_.Piece(size() - kLeaf, size()));
  if (levels_.empty()) levels_.emplace_back();
  levels_[0].Append({leaf.minimum, leaf.maximum, leaf.mean, leaf.deviations});
}

void Column::CloseNode(std::size_t level, std::size_t width_below) {
  const Chunks<Node>& below = levels_[level - 1];
  Summary node;
  for (std::size_t i = below.size() - kFanOut; i < below.size(); ++i)
    node.Merge(SummaryOf(below[i], width_below));
  if (levels_.size() == level) levels_.emplace_back();
  levels_[level].Append({node.minimum, node.maximum, node.mean, node.deviations});
}

void Column::Truncate(std::size_t size) {
  values_.Truncate(size);
  std::size_t width = kLeaf;
  for (Chunks<Node>& level : levels_) {
    level.Truncate(size / width);
    width *= kFanOut;
  }
}

// Uses the largest nodes that fit, and single values at both ends.
template <typename UseNode, typename UseValues>
void Column::Walk(std::size_t first, std::size_t last, UseNode use_node, UseValues use_values) const {
  while (first < last) {
    std::size_t width = kLeaf;
    if (first % width != 0 || first + width > last) {
      const std::size_t end = std::min(last, (first / width + 1) * width);
      use_values(values_.Piece(first, end));
      first = end;
      continue;
    }
    std::size_t level = 0;
    while (first % (width * kFanOut) == 0 && first + width * kFanOut <= last) {
      width *= kFanOut;
      ++level;
    }
    use_node(levels_[level][first / width], width);
    first += width;
  }
}

Summary Column::Summarize(std::size_t first, std::size_t last) const {
  Summary all;
  Walk(
      first, last, [&all](const Node& node, std::size_t width) { all.Merge(SummaryOf(node, width)); },
      [&all](std::span<const double> values) { all.Add(values); });
  return all;
}

Extent Column::ExtentOf(std::size_t first, std::size_t last) const {
  Extent all;
  Walk(
      first, last,
      [&all](const Node& node, std::size_t) {
        all.Merge({node.minimum, node.maximum});
      },
      [&all](std::span<const double> values) {
        for (const double value : values) all.Add(value);
      });
  return all;
}

namespace {

constexpr std::int64_t kUsPerMs = 1000;
constexpr double kUsPerSecond = 1e6;
constexpr double kLongestSeconds = 3e11;  // some ten thousand years
constexpr std::int64_t kLargestOffset = std::numeric_limits<std::uint32_t>::max();

std::int64_t FloorMs(std::int64_t micros) {
  const std::int64_t ms = micros / kUsPerMs;
  return micros % kUsPerMs < 0 ? ms - 1 : ms;
}

}  // namespace

std::int64_t TimeColumn::SinceStart(double seconds) const {
  const std::int64_t before = size() == 0 ? 0 : Micros(size() - 1);
  const double since = std::min(seconds - start_, kLongestSeconds);
  return std::max(before, static_cast<std::int64_t>(std::llround(since * kUsPerSecond)));
}

void TimeColumn::Append(const Moment& moment) {
  if (size() == 0) start_ = moment.seconds;
  const std::int64_t micros = SinceStart(moment.seconds);
  NoteSetting(micros, moment.time_ms);
  if (size() == blocks_.size() * kBlock) blocks_.push_back({micros, 0});
  Block& block = blocks_.back();
  const std::int64_t offset = micros - block.origin_us;
  Widen(block, offset);
  offsets_.Append(static_cast<std::uint32_t>(offset >> block.shift));
}

// A block that lasts longer than its unit can count gets a larger unit.
void TimeColumn::Widen(Block& block, std::int64_t offset) {
  for (; offset >> block.shift > kLargestOffset; ++block.shift) {
    for (std::size_t row = (blocks_.size() - 1) * kBlock; row < size(); ++row) offsets_[row] >>= 1;
  }
}

// The two clocks are not read at the same instant, so a difference of one millisecond is not a new setting.
void TimeColumn::NoteSetting(std::int64_t micros, std::int64_t time_ms) {
  if (!settings_.empty() && std::abs(FloorMs(micros + settings_.back().ahead_us) - time_ms) <= 1) return;
  settings_.push_back({size(), time_ms * kUsPerMs + kUsPerMs / 2 - micros});
}

void TimeColumn::Truncate(std::size_t size) {
  offsets_.Truncate(size);
  blocks_.resize((size + kBlock - 1) / kBlock);
  while (!settings_.empty() && settings_.back().row >= size) settings_.pop_back();
}

std::int64_t TimeColumn::AheadAt(std::size_t row) const {
  const auto after = std::ranges::upper_bound(settings_, row, {}, &Setting::row);
  return std::prev(after)->ahead_us;
}

std::int64_t TimeColumn::TimeMs(std::size_t row) const { return FloorMs(Micros(row) + AheadAt(row)); }

std::size_t TimeColumn::FirstAt(double seconds, std::size_t rows) const {
  std::size_t first = 0;
  while (first < rows) {
    const std::size_t middle = first + (rows - first) / 2;
    if (Seconds(middle) < seconds) {
      first = middle + 1;
    } else {
      rows = middle;
    }
  }
  return first;
}

}  // namespace kolvane::values
