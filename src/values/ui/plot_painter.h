#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QString>
#include <string>
#include <vector>

#include "values/curve.h"
#include "values/plot_view.h"
#include "values/store.h"

namespace kolvane::values {

/// The space between the parts of a plot, in units.
inline constexpr double kPlotGap = 6;

struct PlotCurve {
  const Series* series;
  QString name;
  QColor color;
};

/// Everything that a picture of values shows.
struct PlotScene {
  PlotRows rows;
  Span x;
  Span y;
  std::vector<PlotCurve> curves;
  RowRanges selection;
  std::string decimal_sign;
};

/// How it is painted.
struct PlotStyle {
  QFont font;
  QColor background;
  QColor text;
  QColor grid;
  QColor selection;
  bool is_dark = false;

  /// For a widget.
  static PlotStyle Of(const QPalette& palette, const QFont& font);
  /// For files and printers: black on white, a unit is 1/96 inch.
  static PlotStyle OnPaper(const QFont& font);
};

/// The default colour of a curve, which differs from its neighbours' on light and on dark background.
QColor CurveColor(std::size_t number, bool on_dark);

/// Paints a picture of values: names above, the axes around, the curves inside. The cost depends on the size
/// of the picture, not on the number of values.
class PlotPainter {
 public:
  /// `bounds` are in units of the painter, in which `metrics` measures the style's font.
  PlotPainter(const QRectF& bounds, const PlotScene& scene, const PlotStyle& style,
              const QFontMetricsF& metrics);

  /// Where the curves are.
  const QRectF& area() const { return area_; }

  /// Paints pixels: the size of the bounds times the image's device pixel ratio.
  void Paint(QImage& picture) const;
  /// Paints vectors, for files and printers.
  void Paint(QPainter& painter) const;

 private:
  struct Entry {  // of the legend
    QPointF at;
    QString name;
    QColor color;
  };

  void LayOutLegend();
  void LayOutAxes();
  void LayOutXTicks();
  void PaintBackground(QPainter& painter) const;
  void PaintLegend(QPainter& painter) const;
  void PaintSelection(QPainter& painter) const;
  void PaintGrid(QPainter& painter) const;
  void PaintCurves(QImage& picture) const;
  void PaintCurves(QPainter& painter) const;
  QPainterPath PathOf(const Curve& curve) const;
  void PaintMarks(QPainter& painter) const;
  void PaintFrame(QPainter& painter) const;
  void PaintLabels(QPainter& painter) const;
  QString AxisTitle() const;
  bool HasMarks() const;
  PlotColumns ColumnsOf(int count) const { return {scene_.rows, scene_.x, count}; }
  QPointF PixelOf(const CurvePoint& point) const { return {XOf(point.x), YOf(point.y)}; }
  double XOf(double x) const { return area_.left() + scene_.x.FractionOf(x) * area_.width(); }
  double YOf(double y) const;

  QRectF bounds_;
  const PlotScene& scene_;
  const PlotStyle& style_;
  QFontMetricsF metrics_;
  QRectF area_;
  std::vector<Entry> legend_;
  int hidden_names_ = 0;
  double legend_bottom_ = 0;
  std::vector<Tick> x_ticks_;
  std::vector<Tick> y_ticks_;
};

}  // namespace kolvane::values
