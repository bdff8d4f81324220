#include "pane/pane_store.h"

#include <algorithm>
#include <iterator>

#include "pane/pane_moves.h"

namespace kolvane::pane {
namespace {

// Small enough that moving a chunk's bytes is not noticeable, large enough that a million lines need only a
// few thousand chunks.
constexpr std::size_t kChunkBytes = 32 * 1024;
constexpr std::size_t kChunkLines = 4096;

bool IsOverfull(const PaneExtent& extent) {
  return extent.lines > 1 && (extent.bytes > kChunkBytes || extent.lines > kChunkLines);
}

// First line of the last half chunk's worth of lines, never line 0.
std::size_t LineToSplitAt(const PaneChunk& chunk) {
  const PaneExtent extent = chunk.extent();
  const std::size_t from = extent.bytes > kChunkBytes / 2 ? extent.bytes - kChunkBytes / 2 : 0;
  std::size_t line = chunk.LineAt(from);
  if (extent.lines > kChunkLines / 2) line = std::max(line, extent.lines - kChunkLines / 2);
  return std::clamp<std::size_t>(line, 1, extent.lines - 1);
}

PaneExtent operator+(const PaneExtent& a, const PaneExtent& b) {
  return {a.bytes + b.bytes, a.units + b.units, a.lines + b.lines};
}

void AppendReplacingBreaks(std::string& out, std::string_view text, std::string_view line_break) {
  for (std::size_t at = text.find('\n'); at != text.npos; at = text.find('\n')) {
    out.append(text.substr(0, at)).append(line_break);
    text.remove_prefix(at + 1);
  }
  out.append(text);
}

}  // namespace

PaneStore::PaneStore() { Clear(); }

void PaneStore::Clear() {
  // Replaced, not only cleared, to release the memory of millions of lines.
  chunks_ = std::vector<PaneChunk>();
  starts_ = std::vector<PaneExtent>();
  AddChunk(0, "", kNoColor);
}

PaneExtent PaneStore::total() const { return starts_.back() + chunks_.back().extent(); }

template <typename Measure>
std::size_t PaneStore::FindChunk(std::size_t value, Measure measure) const {
  const auto next = std::upper_bound(
      starts_.begin(), starts_.end(), value,
      [&measure](std::size_t wanted, const PaneExtent& start) { return wanted < measure(start); });
  return static_cast<std::size_t>(next - starts_.begin()) - 1;
}

std::size_t PaneStore::ChunkOfOffset(std::size_t offset) const {
  return FindChunk(offset, [](const PaneExtent& start) { return start.bytes; });
}

std::size_t PaneStore::ChunkOfLine(std::size_t line) const {
  return FindChunk(line, [](const PaneExtent& start) { return start.lines; });
}

std::size_t PaneStore::LineAt(std::size_t offset) const {
  const std::size_t chunk = ChunkOfOffset(offset);
  return starts_[chunk].lines + chunks_[chunk].LineAt(offset - starts_[chunk].bytes);
}

std::size_t PaneStore::LineStart(std::size_t line) const {
  const std::size_t chunk = ChunkOfLine(line);
  return starts_[chunk].bytes + chunks_[chunk].LineStart(line - starts_[chunk].lines);
}

std::string_view PaneStore::Line(std::size_t line) const {
  const std::size_t chunk = ChunkOfLine(line);
  return chunks_[chunk].Line(line - starts_[chunk].lines);
}

std::string PaneStore::Text(std::size_t begin, std::size_t end, std::string_view line_break) const {
  std::string out;
  out.reserve(end - begin + (LineAt(end) - LineAt(begin)) * (line_break.size() - 1));
  for (std::size_t chunk = ChunkOfOffset(begin); begin < end; ++chunk) {
    const std::size_t start = starts_[chunk].bytes;
    const std::string_view text = chunks_[chunk].text();
    const std::size_t until = std::min(end, start + text.size());
    AppendReplacingBreaks(out, text.substr(begin - start, until - begin), line_break);
    begin = until;
  }
  return out;
}

PanePiece PaneStore::Piece(std::size_t begin, std::size_t end) const {
  PanePiece piece{Text(begin, end, "\n"), {}};
  for (std::size_t chunk = ChunkOfOffset(begin); begin < end; ++chunk) {
    const std::size_t start = starts_[chunk].bytes;
    const std::size_t until = std::min(end, start + chunks_[chunk].extent().bytes);
    ColorRuns colors = chunks_[chunk].colors();
    colors = colors.TakeTail(begin - start);
    colors.Erase(until - begin, chunks_[chunk].extent().bytes);
    piece.colors.Join(colors, piece.text.size() - (end - begin));
    begin = until;
  }
  return piece;
}

std::size_t PaneStore::ToUnits(std::size_t offset) const {
  const std::size_t chunk = ChunkOfOffset(offset);
  return starts_[chunk].units + chunks_[chunk].ToUnits(offset - starts_[chunk].bytes);
}

std::size_t PaneStore::FromUnits(std::size_t units) const {
  const std::size_t chunk = FindChunk(units, [](const PaneExtent& start) { return start.units; });
  return std::min(Length(), starts_[chunk].bytes + chunks_[chunk].FromUnits(units - starts_[chunk].units));
}

std::size_t PaneStore::ToRichUnits(std::size_t offset) const { return ToUnits(offset) + LineAt(offset); }

std::size_t PaneStore::FromRichUnits(std::size_t units) const {
  const std::size_t chunk =
      FindChunk(units, [](const PaneExtent& start) { return start.units + start.lines; });
  std::size_t rest = units - starts_[chunk].units - starts_[chunk].lines;
  const PaneChunk& found = chunks_[chunk];
  const std::size_t lines = found.extent().lines;
  std::size_t line = 0;
  for (; line < lines; ++line) {
    const std::size_t size = Utf16Length(found.Line(line));
    if (rest < size + 2 || line + 1 == lines) break;
    rest -= size + 2;
  }
  return std::min(Length(),
                  starts_[chunk].bytes + found.LineStart(line) + ByteOfUnit(found.Line(line), rest));
}

Color PaneStore::ColorAt(std::size_t offset) const {
  const std::size_t chunk = ChunkOfOffset(offset);
  return chunks_[chunk].colors().At(offset - starts_[chunk].bytes);
}

LineOrigin PaneStore::Origin(std::size_t line) const {
  const std::size_t chunk = ChunkOfLine(line);
  return chunks_[chunk].Origin(line - starts_[chunk].lines);
}

void PaneStore::AppendLine(std::string_view line, Color color) {
  const PaneExtent last = chunks_.back().extent();
  if (IsOverfull({last.bytes + line.size() + 1, 0, last.lines + 1})) {
    chunks_.back().Shrink();
    return AddChunk(std::max(kChunkBytes, line.size() + 1), line, color);
  }
  chunks_.back().AppendLine(line, color, origin_);
  chunks_.back().version = ++version_;
}

void PaneStore::Insert(std::size_t offset, std::string_view text, Color color) {
  const std::size_t chunk = ChunkOfOffset(offset);
  chunks_[chunk].Insert(offset - starts_[chunk].bytes, text, color, origin_);
  Edited(chunk);
}

void PaneStore::Insert(std::size_t offset, const PanePiece& piece) {
  Insert(offset, piece.text, kNoColor);
  for (const ColorRun& run : piece.colors.runs()) SetColor(offset + run.begin, offset + run.end, run.color);
}

void PaneStore::Erase(std::size_t begin, std::size_t end) {
  const std::size_t first = ChunkOfOffset(begin);
  const std::size_t last = ChunkOfOffset(end);
  const std::size_t local_end = end - starts_[last].bytes;
  PaneChunk& head = chunks_[first];
  if (first == last) {
    head.Erase(begin - starts_[first].bytes, local_end);
  } else {
    head.Erase(begin - starts_[first].bytes, head.extent().bytes);
    chunks_[last].Erase(0, local_end);
    head.Join(chunks_[last]);
    const auto at = chunks_.begin() + static_cast<std::ptrdiff_t>(first) + 1;
    chunks_.erase(at, at + static_cast<std::ptrdiff_t>(last - first));
  }
  Edited(first);
}

void PaneStore::SetColor(std::size_t begin, std::size_t end, Color color) {
  for (std::size_t chunk = ChunkOfOffset(begin); begin < end; ++chunk) {
    const std::size_t start = starts_[chunk].bytes;
    const std::size_t until = std::min(end, start + chunks_[chunk].extent().bytes);
    chunks_[chunk].SetColor(begin - start, until - start, color);
    chunks_[chunk].version = ++version_;
    begin = until;
  }
}

// If memory runs out, nothing has changed.
void PaneStore::AddChunk(std::size_t bytes, std::string_view line, Color color) {
  PaneChunk chunk;
  chunk.Reserve(bytes);
  chunk.AppendLine(line, color, origin_);
  chunk.version = ++version_;
  starts_.push_back(chunks_.empty() ? PaneExtent{} : total());
  try {
    chunks_.push_back(std::move(chunk));
  } catch (...) {
    starts_.pop_back();
    throw;
  }
}

void PaneStore::Edited(std::size_t chunk) {
  chunks_[chunk].version = ++version_;
  if (IsOverfull(chunks_[chunk].extent())) Split(chunk);
  Reindex(chunk);
}

void PaneStore::Split(std::size_t chunk) {
  std::vector<PaneChunk> tails;
  while (IsOverfull(chunks_[chunk].extent())) {
    tails.push_back(chunks_[chunk].TakeTail(LineToSplitAt(chunks_[chunk])));
    tails.back().version = ++version_;
  }
  chunks_[chunk].Shrink();
  chunks_.insert(chunks_.begin() + static_cast<std::ptrdiff_t>(chunk) + 1,
                 std::make_move_iterator(tails.rbegin()), std::make_move_iterator(tails.rend()));
}

void PaneStore::Reindex(std::size_t from) {
  starts_.resize(chunks_.size());
  for (std::size_t i = from + 1; i < chunks_.size(); ++i)
    starts_[i] = starts_[i - 1] + chunks_[i - 1].extent();
}

namespace {

// Where `color`, which starts at or before `at`, ends within the chunk.
std::size_t EndWithin(const PaneChunk& chunk, std::size_t at, Color color) {
  const ColorRuns& colors = chunk.colors();
  const auto run = colors.FirstAfter(at);
  const bool none = run == colors.runs().end();
  if (color == kNoColor) return none ? chunk.extent().bytes : std::max<std::size_t>(run->begin, at);
  return none || run->begin > at || run->color != color ? at : run->end;
}

// Where `color`, which reaches up to `at`, starts within the chunk.
std::size_t StartWithin(const PaneChunk& chunk, std::size_t at, Color color) {
  if (at == 0) return 0;
  const ColorRuns& colors = chunk.colors();
  const auto run = colors.FirstAfter(at - 1);
  const bool covers = run != colors.runs().end() && run->begin < at;
  if (color != kNoColor) return covers && run->color == color ? run->begin : at;
  if (covers) return at;
  return run == colors.runs().begin() ? 0 : std::prev(run)->end;
}

}  // namespace

ColorStretch StretchAt(const PaneStore& store, std::size_t offset) {
  const Color color = store.ColorAt(offset);
  std::size_t chunk = store.ChunkOfOffset(offset);
  std::size_t begin = StartWithin(store.Chunk(chunk), offset - store.ChunkStart(chunk).bytes, color);
  while (begin == 0 && chunk > 0) {
    const PaneChunk& before = store.Chunk(chunk - 1);
    const std::size_t reach = StartWithin(before, before.extent().bytes, color);
    if (reach == before.extent().bytes) break;
    begin = reach;
    --chunk;
  }
  begin += store.ChunkStart(chunk).bytes;

  chunk = store.ChunkOfOffset(offset);
  std::size_t end = EndWithin(store.Chunk(chunk), offset - store.ChunkStart(chunk).bytes, color);
  for (; end == store.Chunk(chunk).extent().bytes && chunk + 1 < store.ChunkCount(); ++chunk) {
    end = EndWithin(store.Chunk(chunk + 1), 0, color);
  }
  end += store.ChunkStart(chunk).bytes;
  return {begin, std::min(end, store.Length()), color};
}

}  // namespace kolvane::pane
