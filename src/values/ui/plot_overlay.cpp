#include "values/ui/plot_overlay.h"

#include <QFontMetricsF>
#include <algorithm>

#include "base/ui/qt_text.h"
#include "values/row.h"
#include "values/texts.h"

namespace kolvane::values {
namespace {

constexpr double kRadius = 4;
constexpr double kSwatch = 8;
constexpr std::size_t kMaxLines = 12;
constexpr int kReadingDigits = 9;
constexpr double kLongestName = 200;

struct Reading {
  const PlotCurve* curve;
  std::size_t row;
  double x;
  double y;
};

std::vector<Reading> ReadingsAt(const PlotScene& scene, double x) {
  std::vector<Reading> readings;
  for (const PlotCurve& curve : scene.curves) {
    const auto index = NearestValue(*curve.series, scene.rows, x);
    if (!index) continue;
    const std::size_t row = curve.series->RowOf(*index);
    readings.push_back({&curve, row, scene.rows.XOf(row), curve.series->values()[*index]});
  }
  return readings;
}

// The row nearest to the line, of those that the readings have.
std::size_t NearestRow(const std::vector<Reading>& readings, double x) {
  return std::ranges::min_element(readings, {}, [x](const Reading& each) { return std::abs(each.x - x); })
      ->row;
}

QString Head(const PlotScene& scene, std::size_t row) {
  std::string time;
  base::TimeText().Append(scene.rows.store().times().TimeMs(row), '.', time);
  return base::ToQt(texts::ReadingHead(time.substr(base::TimeText::kDateLength), row + 1));
}

QString ValueText(const PlotScene& scene, const Reading& reading) {
  return base::ToQt(NumberText(reading.y, kReadingDigits, scene.decimal_sign));
}

/// The box of readings, wide enough for its lines.
class ReadingBox {
 public:
  ReadingBox(const PlotScene& scene, const PlotStyle& style, const QPainter& painter)
      : scene_(scene), style_(style), metrics_(style.font, painter.device()) {}

  void Paint(QPainter& painter, const QRectF& area, std::span<const Reading> readings, const QString& head,
             double at) {
    for (const Reading& reading : readings) {
      names_ << metrics_.elidedText(reading.curve->name, Qt::ElideMiddle, kLongestName);
      values_ << ValueText(scene_, reading);
      widest_name_ = std::max(widest_name_, metrics_.horizontalAdvance(names_.back()));
      widest_value_ = std::max(widest_value_, metrics_.horizontalAdvance(values_.back()));
    }
    const double lines = kSwatch + 2 * kPlotGap + widest_name_ + widest_value_;
    const QSizeF size(std::max(lines, metrics_.horizontalAdvance(head)) + 2 * kPlotGap,
                      metrics_.lineSpacing() * (static_cast<double>(readings.size()) + 1) + kPlotGap);
    // On the side of the line with more room, within the window.
    const double beside = at < area.center().x() ? at + 2 * kPlotGap : at - 2 * kPlotGap - size.width();
    const double left = std::clamp(beside, 0.0, std::max(0.0, area.right() - size.width()));
    const QRectF box(QPointF(left, area.top() + kPlotGap), size);
    QColor background = style_.background;
    background.setAlpha(230);
    painter.setPen(style_.grid);
    painter.setBrush(background);
    painter.drawRoundedRect(box, 3, 3);
    PaintLines(painter, box, readings, head);
  }

 private:
  void PaintLines(QPainter& painter, const QRectF& box, std::span<const Reading> readings,
                  const QString& head) {
    painter.setPen(style_.text);
    double base = box.top() + kPlotGap / 2 + metrics_.ascent();
    painter.drawText(QPointF(box.left() + kPlotGap, base), head);
    for (std::size_t i = 0; i < readings.size(); ++i) {
      base += metrics_.lineSpacing();
      const auto line = static_cast<qsizetype>(i);
      painter.fillRect(QRectF(box.left() + kPlotGap, base - metrics_.xHeight() / 2 - 2, kSwatch, 4),
                       readings[i].curve->color);
      painter.drawText(QPointF(box.left() + 2 * kPlotGap + kSwatch, base), names_[line]);
      painter.drawText(QPointF(box.right() - kPlotGap - metrics_.horizontalAdvance(values_[line]), base),
                       values_[line]);
    }
  }

  const PlotScene& scene_;
  const PlotStyle& style_;
  QFontMetricsF metrics_;
  QStringList names_;
  QStringList values_;
  double widest_name_ = 0;
  double widest_value_ = 0;
};

void PaintMarks(QPainter& painter, const QRectF& area, const PlotScene& scene,
                std::span<const Reading> readings, const QColor& background) {
  painter.setRenderHint(QPainter::Antialiasing);
  for (const Reading& reading : readings) {
    if (!scene.x.Holds(reading.x) || !scene.y.Holds(reading.y)) continue;
    const QPointF pixel(area.left() + scene.x.FractionOf(reading.x) * area.width(),
                        area.bottom() - scene.y.FractionOf(reading.y) * area.height());
    painter.setPen(QPen(background, 1.5));
    painter.setBrush(reading.curve->color);
    painter.drawEllipse(pixel, kRadius, kRadius);
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace

void PaintHint(QPainter& painter, const QRectF& area, const QColor& color) {
  painter.setPen(color);
  painter.drawText(area.adjusted(kPlotGap, kPlotGap, -kPlotGap, -kPlotGap),
                   Qt::AlignCenter | Qt::TextWordWrap, base::ToQt(texts::kNoValuesYet));
}

void PaintFocus(QPainter& painter, const QRectF& area, const QColor& color) {
  painter.setPen(QPen(color, 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(area);
}

void PaintBand(QPainter& painter, const QRectF& band, const QColor& color) {
  QColor background = color;
  background.setAlpha(60);
  painter.setPen(color);
  painter.setBrush(background);
  painter.drawRect(band);
}

void PaintReadings(QPainter& painter, const QRectF& area, const PlotScene& scene, const PlotStyle& style,
                   double x) {
  const std::vector<Reading> readings = ReadingsAt(scene, x);
  if (readings.empty() || !scene.x.Holds(x)) return;
  const double at = area.left() + scene.x.FractionOf(x) * area.width();
  painter.setPen(QPen(style.text, 1, Qt::DashLine));
  painter.drawLine(QPointF(at, area.top()), QPointF(at, area.bottom()));
  PaintMarks(painter, area, scene, readings, style.background);
  painter.setFont(style.font);
  ReadingBox(scene, style, painter)
      .Paint(painter, area, std::span(readings).first(std::min(kMaxLines, readings.size())),
             Head(scene, NearestRow(readings, x)), at);
}

QStringList ReadingLines(const PlotScene& scene, double x) {
  const std::vector<Reading> readings = ReadingsAt(scene, x);
  if (readings.empty()) return {};
  QStringList lines = {Head(scene, NearestRow(readings, x))};
  for (const Reading& reading : readings)
    lines << reading.curve->name + QStringLiteral(": ") + ValueText(scene, reading);
  return lines;
}

}  // namespace kolvane::values
