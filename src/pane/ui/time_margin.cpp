#include "pane/ui/time_margin.h"

#include <QDateTime>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "base/ui/qt_text.h"
#include "pane/ui/output_pane.h"

namespace kolvane::pane {
namespace {

constexpr int kEdge = 4;
constexpr float kPale = 0.6f;
const QLatin1String kForm("HH:mm:ss.zzz");

}  // namespace

TimeMargin::TimeMargin(OutputPane* pane) : QWidget(pane), pane_(*pane) {}

int TimeMargin::Width() const { return pane_.fontMetrics().horizontalAdvance(kForm) + 2 * kEdge; }

void TimeMargin::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setFont(pane_.font());
  QColor pale = pane_.textColor();
  pale.setAlphaF(kPale);
  painter.setPen(pale);
  const PaneStore& store = pane_.text_.store();
  const int height = pane_.metrics_.row_height();
  const std::size_t total = pane_.Rows().Total();
  for (int below = event->rect().top() / height; below * height <= event->rect().bottom(); ++below) {
    const std::size_t row = pane_.TopRow() + static_cast<std::size_t>(below);
    if (row >= total) break;
    const std::size_t begin = pane_.rows_.RowAt(row).begin;
    const std::size_t line = store.LineAt(begin);
    if (store.LineStart(line) == begin)
      painter.drawText(QPointF(kEdge, below * height + pane_.metrics_.ascent()),
                       pane_.lineTime(static_cast<int>(line)));
  }
}

void OutputPane::setTimeStamps(bool shown) {
  if (shown == timeStamps()) return;
  if (shown) {
    time_margin_ = new TimeMargin(this);
    time_margin_->show();
  } else {
    delete std::exchange(time_margin_, nullptr);
  }
  PlaceTimeMargin();
}

void OutputPane::PlaceTimeMargin() {
  const int width = time_margin_ == nullptr ? 0 : time_margin_->Width();
  setViewportMargins(kFrameMargin + width, kFrameMargin, kFrameMargin, kFrameMargin);
  if (time_margin_ == nullptr) return;
  const QRect inside = viewport()->geometry();
  time_margin_->setGeometry(inside.left() - width, inside.top(), width, inside.height());
}

QString OutputPane::lineTime(int line) const {
  const PaneStore& store = text_.store();
  if (line < 0 || static_cast<std::size_t>(line) >= store.LineCount()) return {};
  const LineOrigin origin = store.Origin(static_cast<std::size_t>(line));
  return origin.at_ms() == 0 ? QString() : QDateTime::fromMSecsSinceEpoch(origin.at_ms()).toString(kForm);
}

QString OutputPane::SelectedTextWithTimes() const {
  const PaneStore& store = text_.store();
  const PaneRange range = text_.Selection();
  QString text;
  for (std::size_t at = range.begin; at < range.end;) {
    const std::size_t line = store.LineAt(at);
    const std::size_t next = line + 1 < store.LineCount() ? store.LineStart(line + 1) : store.Length() + 1;
    const std::size_t end = std::min(range.end, next - 1);
    text +=
        lineTime(static_cast<int>(line)).leftJustified(kForm.size()) + u' ' + TextBetween({at, end}) + u'\n';
    at = next;
  }
  return text;
}

void OutputPane::ShowFailureHelp(const QPoint& point, const QPoint& global) {
  const std::size_t offset = OffsetAt(point);
  const std::size_t line = text_.store().LineAt(offset);
  const bool inside = CharacterRect(offset).adjusted(0, 0, 0, metrics_.row_height()).bottom() >= point.y();
  const bool failed = failure_help_ && inside && text_.store().Origin(line).failure();
  const std::string_view text = text_.store().Line(line);
  const QString help = failed ? failure_help_(base::ToQt(text)) : QString();
  help.isEmpty() ? QToolTip::hideText() : QToolTip::showText(global, help, viewport());
}

}  // namespace kolvane::pane
