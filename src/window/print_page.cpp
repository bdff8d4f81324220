#include "window/print_page.h"

#include <QDateTime>
#include <QPageRanges>
#include <algorithm>

#include "base/ui/qt_look.h"
#include "base/ui/qt_text.h"
#include "pane/pane_moves.h"
#include "pane/ui/output_pane_metrics.h"

namespace kolvane::window {
namespace {

constexpr int kHeadPoints = 8;
constexpr qreal kRulePoints = 0.5;
constexpr qreal kPointsPerInch = 72;
constexpr qreal kGapLines = 0.75;  // between head or foot and the text

QFont HeadFont() {
  QFont font;
  font.setPointSize(kHeadPoints);
  return font;
}

}  // namespace

PrintPages::PrintPages(QPagedPaintDevice& device, const QString& caption)
    : device_(device),
      painter_(&device),
      font_(HeadFont()),
      metrics_(font_, &device),
      caption_(caption),
      date_(QDateTime::currentDateTime().toString(QStringLiteral("dd.MM.yyyy HH:mm"))),
      failed_(!painter_.isActive()) {
  if (!failed_) Start();
}

void PrintPages::Start() {
  ++page_;
  const QPageRanges ranges = device_.pageRanges();
  printed_ = ranges.isEmpty() || ranges.contains(page_);
  if (printed_) {
    if (any_printed_ && !device_.newPage()) failed_ = true;
    any_printed_ = true;
    PaintHead();
    PaintFoot();
  }
  y_ = HeadHeight();
}

// The foot has the same.
qreal PrintPages::HeadHeight() const { return metrics_.lineSpacing() * (1 + kGapLines); }

void PrintPages::PaintHead() {
  painter_.setFont(font_);
  painter_.setPen(QPen(Qt::black, device_.logicalDpiY() * kRulePoints / kPointsPerInch));
  const QRectF head(0, 0, width(), metrics_.lineSpacing());
  const qreal room = width() - metrics_.horizontalAdvance(date_ + QStringLiteral("    "));
  painter_.drawText(head, Qt::AlignLeft, metrics_.elidedText(caption_, Qt::ElideMiddle, room));
  painter_.drawText(head, Qt::AlignRight, date_);
  painter_.drawLine(head.bottomLeft(), head.bottomRight());
}

void PrintPages::PaintFoot() {
  const qreal height = metrics_.lineSpacing();
  painter_.drawText(QRectF(0, device_.height() - height, width(), height), Qt::AlignHCenter,
                    QStringLiteral("Seite %1").arg(page_));
}

qreal PrintPages::PlaceRow(qreal height) {
  const qreal end = device_.height() - HeadHeight();
  const bool empty = y_ <= HeadHeight();
  // A row higher than a page gets a page to itself.
  if (y_ + height > end && !empty) Start();
  const qreal y = y_;
  y_ += height;
  return y;
}

bool PrintPages::IsPastLast() const {
  const QPageRanges ranges = device_.pageRanges();
  return !ranges.isEmpty() && page_ > ranges.lastPage();
}

namespace {

using pane::ColorRun;
using pane::OutputPaneMetrics;

// The run of one colour, or of none, from `at` on within the chunk.
ColorRun StretchIn(const pane::PaneChunk& chunk, std::size_t at) {
  const auto run = chunk.colors().FirstAfter(at);
  const auto begin = static_cast<std::uint32_t>(at);
  if (run == chunk.colors().runs().end())
    return {begin, static_cast<std::uint32_t>(chunk.extent().bytes), base::kNoColor};
  if (run->begin > begin) return {begin, run->begin, base::kNoColor};
  return {begin, run->end, run->color};
}

PrintRun RunIn(base::Color color, int begin, int length) {
  const bool own = base::WithoutBold(color) == base::kNoColor;
  return {begin, length, own ? QColor() : base::ToQColor(color), base::IsBold(color)};
}

// A tab stays a tab: its width depends on its position in the row.
void AppendShown(QString& out, std::string_view text) {
  if (OutputPaneMetrics::IsOrdinary(text)) {
    out += base::ToQt(text);
    return;
  }
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = pane::ClusterEnd(text, at);
    const std::string_view cluster = text.substr(at, end - at);
    out += cluster == "\t" ? base::ToQt(cluster) : OutputPaneMetrics::Shown(cluster);
    at = end;
  }
}

}  // namespace

PaneLines::PaneLines(const pane::PaneStore& store, pane::PaneRange range)
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
    if (stretch.color != base::kNoColor) out.runs.push_back(RunIn(stretch.color, begin, length));
    at = until;
  }
  return out;
}

}  // namespace kolvane::window
