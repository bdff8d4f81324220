#include "pane/ui/output_pane_rows.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kolvane::pane {
namespace {

constexpr std::size_t kUnknown = std::numeric_limits<std::size_t>::max();

std::size_t LongestLine(const PaneChunk& chunk) {
  const PaneExtent extent = chunk.extent();
  std::size_t longest = extent.bytes - chunk.LineStart(extent.lines - 1);
  for (std::size_t line = 1; line < extent.lines; ++line) {
    longest = std::max(longest, chunk.LineStart(line) - chunk.LineStart(line - 1));
  }
  return longest - 1;
}

}  // namespace

void OutputPaneRows::SetLayout(const OutputPaneMetrics& metrics, qreal width) {
  metrics_ = &metrics;
  width_ = width;
  for (ChunkRows& chunk : chunks_) chunk.rows = 0;
  lines_ = {};
  breaks_ = {};
}

void OutputPaneRows::Sync() {
  chunks_.resize(store_.ChunkCount());
  std::size_t start = 0;
  for (std::size_t i = 0; i < chunks_.size(); ++i) {
    ChunkRows& chunk = chunks_[i];
    if (chunk.version != store_.Chunk(i).version) Measure(i);
    if (chunk.rows == 0) chunk.rows = CountRows(i);
    chunk.start = start;
    start += chunk.rows;
  }
  total_ = start;
}

void OutputPaneRows::Forget() {
  chunks_ = std::vector<ChunkRows>();
  lines_ = {};
  breaks_ = {};
}

void OutputPaneRows::Measure(std::size_t chunk) {
  const PaneChunk& text = store_.Chunk(chunk);
  const bool ordinary = OutputPaneMetrics::IsOrdinary(text.text());
  chunks_[chunk] = {text.version, ordinary ? LongestLine(text) : kUnknown, 0, 0};
}

std::size_t OutputPaneRows::CountRows(std::size_t chunk) const {
  const PaneChunk& text = store_.Chunk(chunk);
  const std::size_t lines = text.extent().lines;
  const std::size_t longest = chunks_[chunk].longest;
  if (longest <= metrics_->SurelyFitting(width_)) return lines;
  std::size_t rows = 0;
  for (std::size_t line = 0; line < lines; ++line) rows += RowsOfLine(chunk, line);
  return rows;
}

bool OutputPaneRows::IsPrintable(std::size_t chunk, std::string_view line) const {
  const PaneExtent extent = store_.Chunk(chunk).extent();
  const bool all = chunks_[chunk].longest != kUnknown && extent.bytes == extent.units;
  return all || OutputPaneMetrics::IsPrintable(line);
}

std::size_t OutputPaneRows::RowsOfLine(std::size_t chunk, std::size_t index) const {
  const std::string_view line = store_.Chunk(chunk).Line(index);
  const bool fits = line.size() <= metrics_->SurelyFitting(width_);
  if (fits && (chunks_[chunk].longest != kUnknown || OutputPaneMetrics::IsOrdinary(line))) return 1;
  const bool printable = IsPrintable(chunk, line);
  std::size_t rows = 1;
  for (std::size_t row = 0; (row = metrics_->NextRow(line, row, width_, printable)) < line.size();) ++rows;
  return rows;
}

bool OutputPaneRows::HasOneRowPerLine(std::size_t chunk) const {
  return chunks_[chunk].rows == store_.Chunk(chunk).extent().lines;
}

const std::vector<std::size_t>& OutputPaneRows::LinesOf(std::size_t chunk) const {
  const PaneChunk& text = store_.Chunk(chunk);
  if (lines_.version == text.version) return lines_.rows;
  LinesOfChunk found{text.version, {}};
  std::size_t rows = 0;
  for (std::size_t line = 0; line < text.extent().lines; ++line) {
    found.rows.push_back(rows);
    rows += RowsOfLine(chunk, line);
  }
  lines_ = std::move(found);
  return lines_.rows;
}

const std::vector<std::uint32_t>& OutputPaneRows::BreaksOf(std::size_t chunk, std::size_t line) const {
  const PaneChunk& text = store_.Chunk(chunk);
  if (breaks_.version == text.version && breaks_.line == line) return breaks_.breaks;
  BreaksOfLine found{text.version, line, {}};
  const std::string_view whole = text.Line(line);
  const bool printable = IsPrintable(chunk, whole);
  for (std::size_t row = 0; (row = metrics_->NextRow(whole, row, width_, printable)) < whole.size();) {
    found.breaks.push_back(static_cast<std::uint32_t>(row));
  }
  breaks_ = std::move(found);
  return breaks_.breaks;
}

std::size_t OutputPaneRows::RowsBefore(std::size_t chunk, std::size_t line) const {
  return HasOneRowPerLine(chunk) ? line : LinesOf(chunk)[line];
}

PaneRow OutputPaneRows::RowAt(std::size_t row) const {
  const auto next = std::upper_bound(chunks_.begin(), chunks_.end(), row,
                                     [](std::size_t r, const ChunkRows& chunk) { return r < chunk.start; });
  const auto chunk = static_cast<std::size_t>(next - chunks_.begin()) - 1;
  const PaneChunk& text = store_.Chunk(chunk);
  const std::size_t offset = store_.ChunkStart(chunk).bytes;
  std::size_t part = row - chunks_[chunk].start;
  if (HasOneRowPerLine(chunk)) {
    const std::size_t begin = offset + text.LineStart(part);
    return {begin, begin + text.Line(part).size(), true};
  }
  const std::vector<std::size_t>& lines = LinesOf(chunk);
  const auto line =
      static_cast<std::size_t>(std::upper_bound(lines.begin(), lines.end(), part) - lines.begin()) - 1;
  part -= lines[line];
  const std::vector<std::uint32_t>& breaks = BreaksOf(chunk, line);
  const std::size_t start = offset + text.LineStart(line);
  const bool last = part == breaks.size();
  return {start + (part == 0 ? 0 : breaks[part - 1]), start + (last ? text.Line(line).size() : breaks[part]),
          last};
}

std::size_t OutputPaneRows::RowOf(std::size_t offset) const {
  const std::size_t chunk = store_.ChunkOfOffset(offset);
  const PaneChunk& text = store_.Chunk(chunk);
  const std::size_t local = offset - store_.ChunkStart(chunk).bytes;
  const std::size_t line = text.LineAt(local);
  const std::size_t first = chunks_[chunk].start + RowsBefore(chunk, line);
  if (HasOneRowPerLine(chunk)) return first;
  const std::vector<std::uint32_t>& breaks = BreaksOf(chunk, line);
  const auto passed = std::upper_bound(breaks.begin(), breaks.end(), local - text.LineStart(line));
  return first + static_cast<std::size_t>(passed - breaks.begin());
}

}  // namespace kolvane::pane
