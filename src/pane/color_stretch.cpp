#include "pane/color_stretch.h"

#include <algorithm>
#include <iterator>

namespace kolvane::pane {
namespace {

// Where `color`, started at or before `at`, ends within the chunk.
std::size_t EndWithin(const PaneChunk& chunk, std::size_t at, Color color) {
  const ColorRuns& colors = chunk.colors();
  const auto run = colors.FirstAfter(at);
  const bool none = run == colors.runs().end();
  if (color == kNoColor) return none ? chunk.extent().bytes : std::max<std::size_t>(run->begin, at);
  return none || run->begin > at || run->color != color ? at : run->end;
}

// Where `color`, which reaches up to `at`, begins within the chunk.
std::size_t BeginWithin(const PaneChunk& chunk, std::size_t at, Color color) {
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
  std::size_t begin = BeginWithin(store.Chunk(chunk), offset - store.ChunkStart(chunk).bytes, color);
  while (begin == 0 && chunk > 0) {
    const PaneChunk& before = store.Chunk(chunk - 1);
    const std::size_t reach = BeginWithin(before, before.extent().bytes, color);
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
