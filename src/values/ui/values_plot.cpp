#include "values/ui/values_plot.h"

#include <QEvent>
#include <QPainter>
#include <utility>

#include "base/ui/qt_text.h"
#include "values/texts.h"
#include "values/ui/plot_overlay.h"
#include "values/ui/plot_painter.h"

namespace kolvane::values {

ValuesPlot::ValuesPlot(const Store& store, const CurveList& curves, std::string decimal_sign, QWidget* parent)
    : QWidget(parent), store_(store), curves_(curves), decimal_sign_(std::move(decimal_sign)) {
  setObjectName(QStringLiteral("ValuesPlot"));
  setAccessibleName(base::ToQt(texts::kPlot));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  SetTool(Tool::kPan);
}

void ValuesPlot::ShowRows(std::size_t rows) {
  if (rows < rows_) {
    view_.ShowAll();
    cursor_.reset();
    anchor_.reset();
  }
  rows_ = rows;
  view_.SetData(Rows().Reach());
  Changed();
}

void ValuesPlot::SetAxis(Axis axis) {
  if (axis == axis_) return;
  const auto [first, last] = Rows().Within(view_.x());
  const bool fixed = view_.mode() == PlotView::Mode::kFixed && first < last;
  axis_ = axis;
  cursor_.reset();
  anchor_.reset();
  view_.SetData(Rows().Reach());
  if (view_.mode() != PlotView::Mode::kAll && first < last)
    view_.ShowX({Rows().XOf(first), Rows().XOf(last - 1)});
  if (!fixed && view_.mode() == PlotView::Mode::kFixed) view_.Follow(true);
  Changed();
}

void ValuesPlot::SetSelection(RowRanges selection) {
  if (selection == selection_) return;
  selection_ = std::move(selection);
  stale_ = true;
  update();
}

void ValuesPlot::ShowAll() {
  view_.ShowAll();
  Changed();
}

void ValuesPlot::Follow(bool follow) {
  view_.Follow(follow);
  Changed();
}

void ValuesPlot::SetAutoScale(bool on) {
  view_.SetAutoY(on);
  Changed();
}

RowRange ValuesPlot::VisibleRows() const {
  const auto [first, last] = Rows().Within(view_.x());
  return {first, last};
}

void ValuesPlot::Changed() {
  FitY();
  stale_ = true;
  update();
  Q_EMIT ViewChanged();
}

void ValuesPlot::FitY() {
  if (!view_.auto_y()) return;
  const RowRange rows = VisibleRows();
  Extent extent;
  for (std::size_t number = 0; number < curves_.size(); ++number) {
    if (!curves_.IsShown(number)) continue;
    const Series& series = store_.series(number);
    extent.Merge(series.values().ExtentOf(series.CountBefore(rows.first), series.CountBefore(rows.last)));
  }
  view_.FitY(extent);
}

PlotScene ValuesPlot::Scene(bool on_dark) const {
  PlotScene scene{Rows(), view_.x(), view_.y(), {}, selection_, decimal_sign_};
  for (std::size_t number = 0; number < curves_.size(); ++number) {
    if (!curves_.IsShown(number)) continue;
    const auto chosen = curves_.Color(number);
    const QColor color = chosen ? QColor::fromRgb(*chosen) : CurveColor(number, on_dark);
    scene.curves.push_back({&store_.series(number), base::ToQt(curves_.Name(number)), color});
  }
  return scene;
}

void ValuesPlot::Render() {
  const qreal ratio = devicePixelRatioF();
  const QSize pixels = (QSizeF(size()) * ratio).toSize();
  if (picture_.size() != pixels) picture_ = QImage(pixels, QImage::Format_RGB32);
  picture_.setDevicePixelRatio(ratio);
  const PlotStyle style = PlotStyle::Of(palette(), font());
  const PlotScene scene = Scene(style.is_dark);
  const PlotPainter painter(QRectF(QPointF(), QSizeF(size())), scene, style, QFontMetricsF(font(), this));
  painter.Paint(picture_);
  area_ = painter.area();
  stale_ = false;
}

QRectF ValuesPlot::Area() {
  if (stale_) Render();
  return area_;
}

void ValuesPlot::paintEvent(QPaintEvent*) {
  if (stale_) Render();
  QPainter painter(this);
  painter.drawImage(0, 0, picture_);
  if (rows_ == 0) PaintHint(painter, area_, palette().color(QPalette::Text));
  PaintDrag(painter);
  PaintCursor(painter);
  if (hasFocus()) PaintFocus(painter, area_, palette().color(QPalette::Highlight));
}

void ValuesPlot::PaintDrag(QPainter& painter) const {
  if (!drag_ || drag_->tool == Tool::kPan) return;
  QRectF band = QRectF(drag_->from, drag_->to).normalized() & area_;
  if (drag_->tool == Tool::kSelect) band = QRectF(band.left(), area_.top(), band.width(), area_.height());
  PaintBand(painter, band, palette().color(QPalette::Highlight));
}

void ValuesPlot::PaintCursor(QPainter& painter) {
  if (!cursor_ || rows_ == 0 || drag_) return;
  const PlotStyle style = PlotStyle::Of(palette(), font());
  PaintReadings(painter, area_, Scene(style.is_dark), style, *cursor_);
}

void ValuesPlot::resizeEvent(QResizeEvent*) { stale_ = true; }

void ValuesPlot::focusInEvent(QFocusEvent*) { update(); }

void ValuesPlot::focusOutEvent(QFocusEvent*) { update(); }

void ValuesPlot::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange ||
      event->type() == QEvent::StyleChange) {
    stale_ = true;
    update();
  }
  QWidget::changeEvent(event);
}

}  // namespace kolvane::values
