#pragma once

#include <QPainter>

#include "values/ui/plot_painter.h"

namespace kolvane::values {

/// What stands above a plot without being part of its picture. `area` is where the curves are.

/// That there are no values yet.
void PaintHint(QPainter& painter, const QRectF& area, const QColor& color);
void PaintFocus(QPainter& painter, const QRectF& area, const QColor& color);
/// What is being marked with the mouse.
void PaintBand(QPainter& painter, const QRectF& band, const QColor& color);
/// A line at `x`, a mark on the value of each curve next to it, and a box with the time and the values.
void PaintReadings(QPainter& painter, const QRectF& area, const PlotScene& scene, const PlotStyle& style,
                   double x);

/// What that box says, a line each: time and row, then the curves.
QStringList ReadingLines(const PlotScene& scene, double x);

}  // namespace kolvane::values
