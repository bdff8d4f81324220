#include "pane/pane_chunk.h"

#include <algorithm>

#include "pane/pane_moves.h"

namespace kolvane::pane {
namespace {

std::vector<std::uint32_t> LineStartsIn(std::string_view text, std::size_t offset) {
  std::vector<std::uint32_t> starts;
  for (std::size_t at = text.find('\n'); at != text.npos; at = text.find('\n', at + 1)) {
    starts.push_back(static_cast<std::uint32_t>(offset + at + 1));
  }
  return starts;
}

// Ensures that `more` elements fit without another allocation.
template <typename Container>
void MakeRoom(Container& container, std::size_t more) {
  const std::size_t needed = container.size() + more;
  if (needed > container.capacity()) container.reserve(std::max(needed, 2 * container.capacity()));
}

}  // namespace

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

std::size_t PaneChunk::LineAt(std::size_t offset) const {
  const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
  return static_cast<std::size_t>(next - starts_.begin()) - 1;
}

std::string_view PaneChunk::Line(std::size_t line) const {
  const std::size_t begin = starts_[line];
  const std::size_t end = line + 1 < starts_.size() ? starts_[line + 1] : text_.size();
  return text().substr(begin, end - 1 - begin);
}

std::size_t PaneChunk::ToUnits(std::size_t offset) const {
  return units_ == text_.size() ? offset : Utf16Length(text().substr(0, offset));
}

std::size_t PaneChunk::FromUnits(std::size_t units) const {
  return units_ == text_.size() ? units : ByteOfUnit(text_, units);
}

void PaneChunk::Shrink() {
  text_.shrink_to_fit();
  starts_.shrink_to_fit();
  origins_.shrink_to_fit();
}

void PaneChunk::AppendLine(std::string_view line, Color color, LineOrigin origin) {
  const std::size_t begin = text_.size();
  MakeRoom(text_, line.size() + 1);
  MakeRoom(starts_, 1);
  MakeRoom(origins_, 1);
  colors_.MakeRoomForOne();
  starts_.push_back(static_cast<std::uint32_t>(begin));
  origins_.push_back(origin);
  text_.append(line);
  text_.push_back('\n');
  units_ += Utf16Length(line) + 1;
  colors_.Append(begin, begin + line.size(), color);
}

void PaneChunk::Insert(std::size_t at, std::string_view text, Color color, LineOrigin origin) {
  const auto next = std::upper_bound(starts_.begin(), starts_.end(), at);
  for (auto start = next; start != starts_.end(); ++start) *start += static_cast<std::uint32_t>(text.size());
  const std::vector<std::uint32_t> added = LineStartsIn(text, at);
  origins_.insert(origins_.begin() + (next - starts_.begin()), added.size(), origin);
  starts_.insert(next, added.begin(), added.end());
  text_.insert(at, text);
  units_ += Utf16Length(text);
  colors_.Insert(at, text.size(), color);
}

void PaneChunk::Erase(std::size_t begin, std::size_t end) {
  units_ -= Utf16Length(text().substr(begin, end - begin));
  // A line is removed together with the LF before it.
  const auto first = std::upper_bound(starts_.begin(), starts_.end(), begin);
  const auto last = std::upper_bound(first, starts_.end(), end);
  for (auto start = last; start != starts_.end(); ++start) *start -= static_cast<std::uint32_t>(end - begin);
  // If the first line is erased from its start, the rest of the last line takes its place.
  if (last != first && *(first - 1) == begin)
    origins_[static_cast<std::size_t>(first - starts_.begin()) - 1] =
        origins_[static_cast<std::size_t>(last - starts_.begin()) - 1];
  origins_.erase(origins_.begin() + (first - starts_.begin()), origins_.begin() + (last - starts_.begin()));
  starts_.erase(first, last);
  text_.erase(begin, end - begin);
  colors_.Erase(begin, end);
}

PaneChunk PaneChunk::TakeTail(std::size_t line) {
  const std::size_t at = starts_[line];
  const auto first = starts_.begin() + static_cast<std::ptrdiff_t>(line);
  PaneChunk tail;
  tail.text_ = text_.substr(at);
  tail.starts_.assign(first, starts_.end());
  const auto first_origin = origins_.begin() + static_cast<std::ptrdiff_t>(line);
  tail.origins_.assign(first_origin, origins_.end());
  origins_.erase(first_origin, origins_.end());
  for (std::uint32_t& start : tail.starts_) start -= static_cast<std::uint32_t>(at);
  tail.colors_ = colors_.TakeTail(at);
  tail.units_ = Utf16Length(tail.text_);
  units_ -= tail.units_;
  starts_.erase(first, starts_.end());
  text_.resize(at);
  return tail;
}

void PaneChunk::Join(const PaneChunk& tail) {
  const std::size_t at = text_.size();
  const bool open = !starts_.empty() && (starts_.back() == at || text_.back() != '\n');
  if (open && starts_.back() == at && !tail.origins_.empty()) origins_.back() = tail.origins_.front();
  for (std::size_t i = open ? 1 : 0; i < tail.starts_.size(); ++i) {
    starts_.push_back(static_cast<std::uint32_t>(at) + tail.starts_[i]);
  }
  origins_.insert(origins_.end(), tail.origins_.begin() + (open ? 1 : 0), tail.origins_.end());
  text_ += tail.text_;
  colors_.Join(tail.colors_, at);
  units_ += tail.units_;
}

}  // namespace kolvane::pane
