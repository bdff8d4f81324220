#include "pane/color_runs.h"

#include <algorithm>

namespace kolvane::pane {

std::vector<ColorRun>::const_iterator ColorRuns::FirstAfter(std::size_t at) const {
  return std::upper_bound(runs_.begin(), runs_.end(), at,
                          [](std::size_t value, const ColorRun& run) { return value < run.end; });
}

Color ColorRuns::At(std::size_t at) const {
  const auto run = FirstAfter(at);
  return run != runs_.end() && run->begin <= at ? run->color : kNoColor;
}

void ColorRuns::Append(std::size_t begin, std::size_t end, Color color) {
  if (begin >= end || color == kNoColor) return;
  if (!runs_.empty() && runs_.back().end == begin && runs_.back().color == color) {
    runs_.back().end = static_cast<std::uint32_t>(end);
    return;
  }
  runs_.push_back({static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end), color});
}

void ColorRuns::Insert(std::size_t at, std::size_t size, Color color) {
  if (runs_.empty() && color == kNoColor) return;
  const ColorRuns tail = TakeTail(at);
  Append(at, at + size, color);
  Join(tail, at + size);
}

void ColorRuns::Erase(std::size_t begin, std::size_t end) {
  if (runs_.empty()) return;
  ColorRuns removed = TakeTail(begin);
  Join(removed.TakeTail(end - begin), begin);
}

void ColorRuns::Set(std::size_t begin, std::size_t end, Color color) {
  ColorRuns old = TakeTail(begin);
  const ColorRuns tail = old.TakeTail(end - begin);
  Append(begin, end, color);
  Join(tail, end);
}

ColorRuns ColorRuns::TakeTail(std::size_t at) {
  ColorRuns tail;
  const auto first = FirstAfter(at);
  for (auto run = first; run != runs_.end(); ++run) {
    tail.Append(std::max<std::size_t>(run->begin, at) - at, run->end - at, run->color);
  }
  const bool cut = first != runs_.end() && first->begin < at;
  runs_.erase(cut ? first + 1 : first, runs_.cend());
  if (cut) runs_.back().end = static_cast<std::uint32_t>(at);
  return tail;
}

void ColorRuns::Join(const ColorRuns& tail, std::size_t at) {
  for (const ColorRun& run : tail.runs_) Append(run.begin + at, run.end + at, run.color);
}

}  // namespace kolvane::pane
