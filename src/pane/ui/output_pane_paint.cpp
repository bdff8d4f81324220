#include "pane/ui/output_pane_paint.h"

#include <algorithm>

#include "base/ui/qt_look.h"
#include "base/ui/qt_text.h"
#include "pane/pane_moves.h"

namespace kolvane::pane {

bool OutputPanePainter::IsSelected(std::size_t offset) const {
  return offset >= selection_.begin && offset < selection_.end;
}

void OutputPanePainter::PaintRow(const PaneRow& row, QPointF left_top) {
  const std::size_t chunk = store_.ChunkOfOffset(row.begin);
  const std::size_t start = store_.ChunkStart(chunk).bytes;
  const PaneChunk& lines = store_.Chunk(chunk);
  const std::string_view text = lines.text().substr(row.begin - start, row.end - row.begin);
  if (search_ != nullptr) PaintHits(row, chunk, text, left_top);
  PaintSelection(row, text, left_top);
  const QPointF base = left_top + QPointF(0, metrics_.ascent());
  qreal x = 0;
  for (std::size_t at = row.begin; at < row.end;) {
    const std::size_t end = std::min(row.end, EndOfLook(lines, start, at));
    const Color color = lines.colors().At(at - start);
    const QColor own = base::WithoutBold(color) == kNoColor ? colors_.text : base::ToQColor(color);
    painter_.setPen(IsSelected(at) ? colors_.selected_text : own);
    x = PaintText(text.substr(at - row.begin, end - at), base, x, base::IsBold(color));
    at = end;
  }
}

// A selected line break shows as half a space.
void OutputPanePainter::PaintSelection(const PaneRow& row, std::string_view text, QPointF left_top) {
  const std::size_t begin = std::max(selection_.begin, row.begin);
  const std::size_t end = std::min(selection_.end, row.end);
  const bool with_break = row.ends_line && IsSelected(row.end);
  if (begin > end || (begin == end && !with_break)) return;
  const qreal left = metrics_.X(text, begin - row.begin);
  const qreal right = metrics_.X(text, end - row.begin) + (with_break ? metrics_.space_width() / 2 : 0);
  const QRectF background(left_top.x() + left, left_top.y(), right - left, metrics_.row_height());
  painter_.fillRect(background, colors_.selected_background);
}

void OutputPanePainter::PaintHits(const PaneRow& row, std::size_t chunk, std::string_view text,
                                  QPointF left_top) {
  const std::size_t start = store_.ChunkStart(chunk).bytes;
  const Hits& hits = search_->HitsIn(chunk);
  auto hit = std::ranges::upper_bound(hits, row.begin - start, {}, &PaneRange::end);
  for (; hit != hits.end() && start + hit->begin < row.end; ++hit) {
    const std::size_t begin = std::max(start + hit->begin, row.begin);
    const std::size_t end = std::min(start + hit->end, row.end);
    const qreal left = metrics_.X(text, begin - row.begin);
    const qreal width = metrics_.X(text, end - row.begin) - left;
    painter_.fillRect(QRectF(left_top.x() + left, left_top.y(), width, metrics_.row_height()),
                      colors_.hit_background);
  }
}

// The next position after `at` where colour or selection changes.
std::size_t OutputPanePainter::EndOfLook(const PaneChunk& chunk, std::size_t chunk_start,
                                         std::size_t at) const {
  std::size_t end = chunk_start + chunk.extent().bytes;
  for (const std::size_t edge : {selection_.begin, selection_.end}) {
    if (edge > at) end = std::min(end, edge);
  }
  const auto run = chunk.colors().FirstAfter(at - chunk_start);
  if (run == chunk.colors().runs().end()) return end;
  const std::size_t begins = chunk_start + run->begin;
  return std::min(end, begins > at ? begins : chunk_start + run->end);
}

// Bold characters are painted one by one, because they keep the advances of the plain font.
qreal OutputPanePainter::PaintText(std::string_view text, QPointF base, qreal x, bool bold) {
  std::size_t plain = 0;
  qreal plain_x = x;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = ClusterEnd(text, at);
    const std::string_view cluster = text.substr(at, end - at);
    const qreal advance = metrics_.Advance(cluster, x);
    if (bold || !OutputPaneMetrics::IsPlain(cluster)) {
      PaintPlain(text.substr(plain, at - plain), base + QPointF(plain_x, 0));
      PaintCluster(cluster, base + QPointF(x, 0), bold);
      plain = end;
      plain_x = x + advance;
    }
    x += advance;
    at = end;
  }
  PaintPlain(text.substr(plain), base + QPointF(plain_x, 0));
  return x;
}

void OutputPanePainter::PaintPlain(std::string_view text, QPointF at) {
  if (text.find_first_not_of(' ') == text.npos) return;
  painter_.setFont(metrics_.plain_font());
  painter_.drawText(at, base::ToQt(text));
}

void OutputPanePainter::PaintCluster(std::string_view cluster, QPointF at, bool bold) {
  if (cluster == "\t" || cluster == " ") return;
  painter_.setFont(bold ? metrics_.bold_font() : metrics_.cluster_font());
  painter_.drawText(at, OutputPaneMetrics::Shown(cluster));
}

}  // namespace kolvane::pane
