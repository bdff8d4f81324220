#pragma once

#include <QPainter>

#include "values/ui/plot_painter.h"

namespace kolvane::values {

/// Painted on top of a plot, without being part of its picture. `area` is where the curves are.

/// The hint that there are no values yet.
void PaintHint(QPainter& painter, const QRectF& area, const QColor& color);
void PaintFocus(QPainter& painter, const QRectF& area, const QColor& color);
/// The rectangle that the mouse is dragging.
void PaintBand(QPainter& painter, const QRectF& band, const QColor& color);
/// A line at `x`, a mark on each curve's nearest value, and a box with the time and the values.
void PaintReadings(QPainter& painter, const QRectF& area, const PlotScene& scene, const PlotStyle& style,
                   double x);

/// The lines of that box: time and row, then the curves.
QStringList ReadingLines(const PlotScene& scene, double x);

}  // namespace kolvane::values
