#include "window/pane_lines.h"

#include <algorithm>

#include "terminal/pane_utf8.h"
#include "terminal/ui/output_pane_metrics.h"
#include "terminal/ui/output_pane_paint.h"
#include "window/text.h"

namespace kolvane::window {
namespace {

using terminal::ColorRun;
using terminal::OutputPaneMetrics;

// What is in one colour from `at` on, all within the chunk.
ColorRun StretchIn(const terminal::PaneChunk& chunk, std::size_t at) {
  const auto run = chunk.colors().FirstBehind(at);
  const auto begin = static_cast<std::uint32_t>(at);
  if (run == chunk.colors().runs().end())
    return {begin, static_cast<std::uint32_t>(chunk.extent().bytes), terminal::kNoColor};
  if (run->begin > begin) return {begin, run->begin, terminal::kNoColor};
  return {begin, run->end, run->color};
}

PrintRun RunIn(terminal::Color color, int begin, int length) {
  const bool own = terminal::WithoutBold(color) == terminal::kNoColor;
  return {begin, length, own ? QColor() : terminal::ToQColor(color), terminal::IsBold(color)};
}

// A tab stays one: where it leads to depends on its place in the row.
void AppendShown(QString& out, std::string_view text) {
  if (OutputPaneMetrics::IsOrdinary(text)) {
    out += ToQt(text);
    return;
  }
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = terminal::ClusterEnd(text, at);
    const std::string_view cluster = text.substr(at, end - at);
    out += cluster == "\t" ? ToQt(cluster) : OutputPaneMetrics::Shown(cluster);
    at = end;
  }
}

}  // namespace

PaneLines::PaneLines(const terminal::PaneStore& store, terminal::PaneRange range)
    : store_(store),
      range_(range),
      first_(store.LineAt(range.begin)),
      count_(store.LineAt(range.end) - first_ + 1) {}

std::size_t PaneLines::LineCount() const {
  return std::min(count_, store_.LineCount() - std::min(first_, store_.LineCount()));
}

PrintLine PaneLines::Line(std::size_t line) const {
  const std::size_t start = store_.LineStart(first_ + line);
  const std::string_view whole = store_.Line(first_ + line);
  const std::size_t chunk = store_.ChunkOfLine(first_ + line);
  const std::size_t end = std::min(range_.end, start + whole.size());
  PrintLine out;
  for (std::size_t at = std::max(range_.begin, start); at < end;) {
    const ColorRun stretch = StretchIn(store_.Chunk(chunk), at - store_.ChunkStart(chunk).bytes);
    const std::size_t until = std::min(end, store_.ChunkStart(chunk).bytes + stretch.end);
    const auto begin = static_cast<int>(out.text.size());
    AppendShown(out.text, whole.substr(at - start, until - at));
    const int length = static_cast<int>(out.text.size()) - begin;
    if (stretch.color != terminal::kNoColor) out.runs.push_back(RunIn(stretch.color, begin, length));
    at = until;
  }
  return out;
}

}  // namespace kolvane::window
