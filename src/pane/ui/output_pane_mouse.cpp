#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "pane/pane_moves.h"
#include "pane/ui/output_pane.h"

namespace kolvane::pane {
namespace {

constexpr int kScrollMs = 30;

}  // namespace

PaneRange OutputPane::Around(std::size_t offset) const {
  switch (drag_unit_) {
    case Unit::kWord:
      return WordAround(text_.store(), offset);
    case Unit::kLine:
      return LineAround(text_.store(), offset);
    case Unit::kCharacter:
      break;
  }
  return {offset, offset};
}

void OutputPane::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  Flush();
  selecting_ = true;
  const std::size_t offset = OffsetAt(event->pos());
  const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
  const bool third =
      since_double_click_.isValid() && since_double_click_.elapsed() < interval &&
      (event->pos() - drag_point_).manhattanLength() < QGuiApplication::styleHints()->startDragDistance();
  since_double_click_.invalidate();
  drag_unit_ = third ? Unit::kLine : Unit::kCharacter;
  drag_point_ = event->pos();
  if (event->modifiers().testFlag(Qt::ShiftModifier)) {
    drag_origin_ = {text_.anchor(), text_.anchor()};
    Select(text_.anchor(), offset);
  } else {
    drag_origin_ = Around(offset);
    Select(drag_origin_.begin, drag_origin_.end);
  }
}

void OutputPane::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  selecting_ = true;
  drag_unit_ = Unit::kWord;
  drag_point_ = event->pos();
  drag_origin_ = Around(OffsetAt(event->pos()));
  Select(drag_origin_.begin, drag_origin_.end);
  since_double_click_.start();
}

void OutputPane::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons().testFlag(Qt::LeftButton)) DragTo(event->pos());
}

// Outside the window a timer extends the selection and scrolls one row per tick, or more farther out.
void OutputPane::DragTo(QPoint point) {
  drag_point_ = point;
  const int height = viewport()->height();
  const int outside = point.y() < 0 ? point.y() : std::max(0, point.y() - height + 1);
  if (outside == 0) {
    drag_timer_.stop();
  } else if (!drag_timer_.isActive()) {
    drag_timer_.start(kScrollMs, this);
  }
  const int rows = outside / metrics_.row_height() + (outside > 0 ? 1 : outside < 0 ? -1 : 0);
  Flush();
  verticalScrollBar()->setValue(verticalScrollBar()->value() + rows);
  const QPoint inside(point.x(), std::clamp(point.y(), 0, VisibleRows() * metrics_.row_height() - 1));
  const PaneRange to = Around(OffsetAt(inside));
  if (to.begin < drag_origin_.begin) {
    Select(drag_origin_.end, to.begin);
  } else {
    Select(drag_origin_.begin, std::max(to.end, drag_origin_.end));
  }
}

// The view then follows the end again if it did before.
void OutputPane::EndSelecting() {
  drag_timer_.stop();
  if (std::exchange(selecting_, false)) Changed();
}

void OutputPane::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) Q_EMIT popupRequested(event->globalPosition().toPoint());
  if (event->button() != Qt::LeftButton) return;
  EndSelecting();
  QClipboard& clipboard = *QGuiApplication::clipboard();
  if (clipboard.supportsSelection() && !text_.Selection().empty()) {
    clipboard.setText(selectedText(), QClipboard::Selection);
  }
}

namespace {

// The path of one local file; empty for anything else.
QString DroppedFile(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
}

// Always as a copy: the file is not moved.
void AcceptFile(QDropEvent& event) {
  if (DroppedFile(*event.mimeData()).isEmpty() || !event.possibleActions().testFlag(Qt::CopyAction))
    return event.ignore();
  event.setDropAction(Qt::CopyAction);
  event.accept();
}

}  // namespace

void OutputPane::dragEnterEvent(QDragEnterEvent* event) { AcceptFile(*event); }

void OutputPane::dragMoveEvent(QDragMoveEvent* event) { AcceptFile(*event); }

void OutputPane::dropEvent(QDropEvent* event) {
  AcceptFile(*event);
  if (event->isAccepted()) Q_EMIT fileDropped(DroppedFile(*event->mimeData()));
}

}  // namespace kolvane::pane
