#include <QApplication>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>

#include "values/ui/plot_overlay.h"
#include "values/ui/values_plot.h"

namespace kolvane::values {
namespace {

constexpr double kZoomPerStep = 0.8;
constexpr double kWheelStep = 120;  // in eighths of a degree: one notch of the wheel
constexpr double kPanPerKey = 0.1;
constexpr double kPagePerKey = 0.9;

bool HasControl(const QInputEvent& event) { return event.modifiers().testFlag(Qt::ControlModifier); }
bool HasShift(const QInputEvent& event) { return event.modifiers().testFlag(Qt::ShiftModifier); }

}  // namespace

void ValuesPlot::SetTool(Tool tool) {
  tool_ = tool;
  setCursor(tool == Tool::kPan    ? Qt::OpenHandCursor
            : tool == Tool::kZoom ? Qt::CrossCursor
                                  : Qt::IBeamCursor);
}

ValuesPlot::Tool ValuesPlot::ToolFor(const QMouseEvent& event) const {
  if (event.button() == Qt::MiddleButton) return Tool::kPan;
  if (HasControl(event)) return Tool::kZoom;
  return HasShift(event) ? Tool::kSelect : tool_;
}

// The position as fractions of the area, from its lower left corner.
QPointF ValuesPlot::FractionsAt(QPointF pixel) {
  const QRectF area = Area();
  return {(pixel.x() - area.left()) / area.width(), (area.bottom() - pixel.y()) / area.height()};
}

void ValuesPlot::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton) return;
  drag_ = Drag{ToolFor(*event), event->position(), event->position(), view_};
  if (drag_->tool == Tool::kPan) setCursor(Qt::ClosedHandCursor);
  update();
}

void ValuesPlot::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = FractionsAt(event->position());
  const bool within = at.x() >= 0 && at.x() <= 1 && at.y() >= 0 && at.y() <= 1;
  SetReadingPosition(within ? std::optional(view_.x().At(at.x())) : std::nullopt);
  if (!drag_) return;
  drag_->to = event->position();
  if (drag_->tool != Tool::kPan) return update();
  const QPointF from = FractionsAt(drag_->from);
  view_ = drag_->before;
  view_.SetData(Rows().Reach());
  if (from.x() != at.x()) view_.PanX(from.x() - at.x());
  if (!view_.auto_y()) view_.PanY(from.y() - at.y());
  Changed();
}

void ValuesPlot::mouseReleaseEvent(QMouseEvent*) {
  if (!drag_) return;
  EndDrag();
  drag_.reset();
  SetTool(tool_);
  update();
}

void ValuesPlot::EndDrag() {
  const QPointF from = FractionsAt(drag_->from);
  const QPointF to = FractionsAt(drag_->to);
  const bool moved = (drag_->to - drag_->from).manhattanLength() >= QApplication::startDragDistance();
  const auto [left, right] = std::minmax({std::clamp(from.x(), 0.0, 1.0), std::clamp(to.x(), 0.0, 1.0)});
  const Span x{view_.x().At(left), view_.x().At(right)};
  if (drag_->tool == Tool::kSelect) {
    if (moved) {
      SelectBetween(x.from, x.to);
    } else {
      Q_EMIT RowsSelected(0, 0);
    }
  } else if (drag_->tool == Tool::kZoom && moved) {
    const auto [low, high] = std::minmax({std::clamp(from.y(), 0.0, 1.0), std::clamp(to.y(), 0.0, 1.0)});
    view_.Show(x, {view_.y().At(low), view_.y().At(high)});
    Changed();
  }
}

void ValuesPlot::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) ShowAll();
}

void ValuesPlot::leaveEvent(QEvent*) { SetReadingPosition(std::nullopt); }

// To the left of the area the wheel zooms the y axis.
void ValuesPlot::wheelEvent(QWheelEvent* event) {
  const QPointF at = FractionsAt(event->position());
  const double steps = event->angleDelta().y() / kWheelStep;
  const double sideways = event->angleDelta().x() / kWheelStep;
  if (sideways != 0 || HasShift(*event)) {
    view_.PanX(-(sideways != 0 ? sideways : steps) * kPanPerKey);
  } else if (HasControl(*event) || at.x() < 0) {
    view_.ZoomY(std::pow(kZoomPerStep, steps), std::clamp(at.y(), 0.0, 1.0));
  } else {
    view_.ZoomX(std::pow(kZoomPerStep, steps), std::clamp(at.x(), 0.0, 1.0));
  }
  event->accept();
  Changed();
}

void ValuesPlot::SelectBetween(double x1, double x2) {
  const auto [from, to] = std::minmax({x1, x2});
  const auto [first, last] = Rows().Within({from, to});
  Q_EMIT RowsSelected(first, std::max(first, last));
}

void ValuesPlot::SetReadingPosition(std::optional<double> x) {
  if (x == cursor_) return;
  cursor_ = x;
  update();
  Q_EMIT CursorMoved();
}

void ValuesPlot::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && (drag_ || cursor_ || !selection_.empty())) {
    const bool dragged = drag_.has_value();
    if (dragged) view_ = drag_->before;
    drag_.reset();
    anchor_.reset();
    SetTool(tool_);
    SetReadingPosition(std::nullopt);
    if (!dragged) Q_EMIT RowsSelected(0, 0);
    return ShowRows(rows_);
  }
  if (ReadByKey(*event)) return;
  if (MoveByKey(*event) || ZoomByKey(*event)) return Changed();
  QWidget::keyPressEvent(event);
}

bool ValuesPlot::MoveByKey(const QKeyEvent& event) {
  if (HasControl(event) || HasShift(event)) return false;
  switch (event.key()) {
    case Qt::Key_Left:
      view_.PanX(-kPanPerKey);
      break;
    case Qt::Key_Right:
      view_.PanX(kPanPerKey);
      break;
    case Qt::Key_PageUp:
      view_.PanX(-kPagePerKey);
      break;
    case Qt::Key_PageDown:
      view_.PanX(kPagePerKey);
      break;
    case Qt::Key_Up:
      view_.PanY(kPanPerKey);
      break;
    case Qt::Key_Down:
      view_.PanY(-kPanPerKey);
      break;
    case Qt::Key_Home: {
      const Span reach = Rows().Reach();
      view_.ShowX({reach.from, reach.from + view_.x().width()});
      break;
    }
    case Qt::Key_End:
      view_.Follow(true);
      break;
    default:
      return false;
  }
  return true;
}

bool ValuesPlot::ZoomByKey(const QKeyEvent& event) {
  const bool in = event.key() == Qt::Key_Plus;
  if (!in && event.key() != Qt::Key_Minus) return false;
  const double factor = in ? kZoomPerStep : 1 / kZoomPerStep;
  const bool at_cursor = cursor_ && view_.x().Holds(*cursor_);
  if (HasControl(event)) {
    view_.ZoomY(factor, 0.5);
  } else {
    view_.ZoomX(factor, at_cursor ? view_.x().FractionOf(*cursor_) : 0.5);
  }
  return true;
}

// Moves from one value to the next; with Shift the rows in between are selected.
bool ValuesPlot::ReadByKey(const QKeyEvent& event) {
  const bool forward = event.key() == Qt::Key_Right;
  if (!HasControl(event) || (!forward && event.key() != Qt::Key_Left)) return false;
  const bool starts = !cursor_ || !view_.x().Holds(*cursor_);
  const RowRange visible = VisibleRows();
  const std::size_t row = starts ? visible.first + (visible.last - visible.first) / 2 : RowNear(*cursor_);
  const auto next = starts    ? RowWithValue(row, true)
                    : forward ? RowWithValue(row + 1, true)
                              : RowWithValue(row, false);
  if (!next) return true;
  const double x = Rows().XOf(*next);
  if (!HasShift(event)) anchor_.reset();
  if (HasShift(event) && !anchor_) anchor_ = starts ? x : *cursor_;
  EnsureVisible(x);
  SetReadingPosition(x);
  setAccessibleDescription(ReadingLines(Scene(false), x).join(QStringLiteral(", ")));
  if (anchor_) SelectBetween(*anchor_, x);
  return true;
}

std::size_t ValuesPlot::RowNear(double x) const {
  const std::size_t after = Rows().RowAt(x);
  if (after == 0) return 0;
  if (after == rows_) return rows_ - 1;
  return Rows().XOf(after) - x <= x - Rows().XOf(after - 1) ? after : after - 1;
}

// The first row from `from` on that has a value of a shown curve, or the last such row before it.
std::optional<std::size_t> ValuesPlot::RowWithValue(std::size_t from, bool forward) const {
  std::optional<std::size_t> best;
  for (std::size_t number = 0; number < curves_.size(); ++number) {
    if (!curves_.IsShown(number)) continue;
    const Series& series = store_.series(number);
    const std::size_t before = series.CountBefore(from);
    if (forward ? before == series.CountBefore(rows_) : before == 0) continue;
    const std::size_t row = series.RowOf(forward ? before : before - 1);
    if (!best || (forward ? row < *best : row > *best)) best = row;
  }
  return best;
}

void ValuesPlot::EnsureVisible(double x) {
  if (view_.x().Holds(x)) return;
  view_.PanX((x - view_.x().At(0.5)) / view_.x().width());
  Changed();
}

}  // namespace kolvane::values
