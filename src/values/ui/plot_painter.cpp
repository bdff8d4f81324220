#include "values/ui/plot_painter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/ui/qt_text.h"
#include "values/curve.h"
#include "values/texts.h"

namespace kolvane::values {
namespace {

constexpr int kPaperFontPixels = 12;
constexpr double kGoldenAngle = 137.508;  // degrees; its multiples stay well apart

struct Pair {
  QRgb on_light;
  QRgb on_dark;
};
constexpr std::array<Pair, 8> kColors = {{{0xff1f6fb4, 0xff74b9ff},
                                          {0xffd9480f, 0xffff9f5a},
                                          {0xff2b8a3e, 0xff69db7c},
                                          {0xffc2255c, 0xfff783ac},
                                          {0xff7048e8, 0xffb197fc},
                                          {0xff0b7285, 0xff3bc9db},
                                          {0xff946200, 0xffffd43b},
                                          {0xff495057, 0xffced4da}}};

QColor Mixed(const QColor& a, const QColor& b, double share_of_b) {
  const auto mix = [share_of_b](int x, int y) { return static_cast<int>(x + (y - x) * share_of_b); };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

PlotStyle StyleOf(const QColor& background, const QColor& text, const QColor& highlight) {
  PlotStyle style;
  style.background = background;
  style.text = text;
  style.grid = Mixed(background, text, 0.16);
  style.selection = Mixed(background, highlight, 0.2);
  style.is_dark = background.lightness() < text.lightness();
  return style;
}

}  // namespace

PlotStyle PlotStyle::Of(const QPalette& palette, const QFont& font) {
  PlotStyle style = StyleOf(palette.color(QPalette::Base), palette.color(QPalette::Text),
                            palette.color(QPalette::Active, QPalette::Highlight));
  style.font = font;
  return style;
}

PlotStyle PlotStyle::OnPaper(const QFont& font) {
  PlotStyle style = StyleOf(Qt::white, Qt::black, QColor(0x30, 0x8c, 0xc6));
  style.font = font;
  style.font.setPixelSize(kPaperFontPixels);
  return style;
}

QColor CurveColor(std::size_t number, bool on_dark) {
  if (number < kColors.size()) return QColor(on_dark ? kColors[number].on_dark : kColors[number].on_light);
  const double hue = std::fmod(static_cast<double>(number) * kGoldenAngle, 360);
  return QColor::fromHsv(static_cast<int>(hue), on_dark ? 120 : 220, on_dark ? 250 : 160);
}

namespace {

constexpr double kTickLength = 4;
constexpr double kLegendSwatch = 14;
constexpr double kLongestLegendName = 240;
constexpr int kLegendLines = 2;
constexpr int kMaxTicks = 12;
constexpr double kLineWidth = 1.5;
constexpr double kMarkRadius = 2.5;
constexpr double kMinArea = 20;
constexpr double kUnitsPerMark = 7;  // each value gets a mark if they are at least this far apart
constexpr double kPaperColumnsPerUnit = 2;
constexpr double kFar = 1e5;  // positions farther out make no difference

double WidestLabel(const std::vector<Tick>& ticks, const QFontMetricsF& metrics) {
  double widest = 0;
  for (const Tick& tick : ticks) widest = std::max(widest, metrics.horizontalAdvance(base::ToQt(tick.label)));
  return widest;
}

}  // namespace

PlotPainter::PlotPainter(const QRectF& bounds, const PlotScene& scene, const PlotStyle& style,
                         const QFontMetricsF& metrics)
    : bounds_(bounds), scene_(scene), style_(style), metrics_(metrics) {
  LayOutLegend();
  LayOutAxes();
}

void PlotPainter::LayOutLegend() {
  const double right = bounds_.right() - kPlotGap;
  QPointF at(bounds_.left() + kPlotGap, bounds_.top() + kPlotGap);
  int line = 1;
  for (const PlotCurve& curve : scene_.curves) {
    const QString name = metrics_.elidedText(curve.name, Qt::ElideMiddle, kLongestLegendName);
    const double width = kLegendSwatch + kPlotGap + metrics_.horizontalAdvance(name) + 2 * kPlotGap;
    if (at.x() + width > right && at.x() > bounds_.left() + kPlotGap) {
      if (line == kLegendLines) break;
      ++line;
      at = {bounds_.left() + kPlotGap, at.y() + metrics_.lineSpacing()};
    }
    legend_.push_back({at, name, curve.color});
    at.rx() += width;
  }
  hidden_names_ = static_cast<int>(scene_.curves.size() - legend_.size());
  legend_bottom_ = legend_.empty() ? bounds_.top() : at.y() + metrics_.lineSpacing();
}

void PlotPainter::LayOutAxes() {
  const double top = legend_bottom_ + kPlotGap + metrics_.height() / 2;
  const double bottom = bounds_.bottom() - kPlotGap - 2 * metrics_.lineSpacing() - kTickLength;
  const double height = std::max(kMinArea, bottom - top);
  const int max_y = static_cast<int>(height / (metrics_.height() * 2.2));
  y_ticks_ = NumberTicks(scene_.y, std::clamp(max_y, 2, kMaxTicks), scene_.decimal_sign);
  // In steps, so that the area does not move with each new label.
  const double step = metrics_.horizontalAdvance(QStringLiteral("00"));
  const double labels = std::ceil(WidestLabel(y_ticks_, metrics_) / step) * step;
  const double left = std::round(bounds_.left() + 2 * kPlotGap + labels + kTickLength);
  const double width = std::max(kMinArea, bounds_.right() - 3 * kPlotGap - left);
  area_ = QRectF(left, std::round(top), std::round(width), std::round(height));
  LayOutXTicks();
}

// As many ticks as there is room for their labels.
void PlotPainter::LayOutXTicks() {
  const bool is_time = scene_.rows.axis() == Axis::kTime;
  for (int maximum = kMaxTicks; maximum >= 2; --maximum) {
    x_ticks_ = is_time ? TimeTicks(scene_.x, maximum, scene_.decimal_sign)
                       : NumberTicks(scene_.x, maximum, scene_.decimal_sign);
    const double needed =
        (WidestLabel(x_ticks_, metrics_) + 3 * kPlotGap) * static_cast<double>(x_ticks_.size());
    if (needed <= area_.width()) break;
  }
}

void PlotPainter::Paint(QImage& picture) const {
  QPainter background(&picture);
  PaintBackground(background);
  background.end();
  PaintCurves(picture);
  QPainter frame(&picture);
  PaintMarks(frame);
  PaintFrame(frame);
}

void PlotPainter::Paint(QPainter& painter) const {
  PaintBackground(painter);
  PaintCurves(painter);
  PaintMarks(painter);
  PaintFrame(painter);
}

void PlotPainter::PaintBackground(QPainter& painter) const {
  painter.setFont(style_.font);
  painter.fillRect(bounds_, style_.background);
  PaintLegend(painter);
  PaintSelection(painter);
  PaintGrid(painter);
}

void PlotPainter::PaintFrame(QPainter& painter) const {
  painter.setFont(style_.font);
  painter.setPen(QPen(style_.text, 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(area_);
  PaintLabels(painter);
}

void PlotPainter::PaintLegend(QPainter& painter) const {
  for (const Entry& entry : legend_) {
    const double middle = entry.at.y() + metrics_.height() / 2;
    painter.fillRect(QRectF(entry.at.x(), middle - 2, kLegendSwatch, 4), entry.color);
    painter.setPen(style_.text);
    painter.drawText(QPointF(entry.at.x() + kLegendSwatch + kPlotGap, entry.at.y() + metrics_.ascent()),
                     entry.name);
  }
  if (hidden_names_ == 0 || legend_.empty()) return;
  const QString more = base::ToQt(texts::MoreNames(hidden_names_));
  const double width = metrics_.horizontalAdvance(more) + kPlotGap;
  const QRectF corner(bounds_.right() - width - kPlotGap, legend_.back().at.y(), width, metrics_.height());
  painter.fillRect(corner, style_.background);
  painter.drawText(corner, Qt::AlignRight | Qt::AlignVCenter, more);
}

void PlotPainter::PaintSelection(QPainter& painter) const {
  double painted_to = area_.left();
  for (const RowRange& range : scene_.selection) {
    const double left = std::max(painted_to, XOf(scene_.rows.XOf(range.first)) - 1);
    const double right = std::min(area_.right(), XOf(scene_.rows.XOf(range.last - 1)) + 1);
    if (right <= left) continue;
    painter.fillRect(QRectF(left, area_.top(), right - left, area_.height()), style_.selection);
    painted_to = right;
  }
}

void PlotPainter::PaintGrid(QPainter& painter) const {
  painter.setPen(QPen(style_.grid, 1));
  for (const Tick& tick : x_ticks_)
    painter.drawLine(QPointF(XOf(tick.value), area_.top()), QPointF(XOf(tick.value), area_.bottom()));
  for (const Tick& tick : y_ticks_)
    painter.drawLine(QPointF(area_.left(), YOf(tick.value)), QPointF(area_.right(), YOf(tick.value)));
}

void PlotPainter::PaintLabels(QPainter& painter) const {
  for (const Tick& tick : x_ticks_) {
    const double x = XOf(tick.value);
    painter.drawLine(QPointF(x, area_.bottom()), QPointF(x, area_.bottom() + kTickLength));
    const double width = metrics_.horizontalAdvance(base::ToQt(tick.label));
    const double left =
        std::clamp(x - width / 2, bounds_.left(), std::max(bounds_.left(), bounds_.right() - width));
    painter.drawText(QPointF(left, area_.bottom() + kTickLength + metrics_.ascent()), base::ToQt(tick.label));
  }
  for (const Tick& tick : y_ticks_) {
    const double y = YOf(tick.value);
    painter.drawLine(QPointF(area_.left() - kTickLength, y), QPointF(area_.left(), y));
    const QRectF label(bounds_.left(), y - metrics_.height() / 2,
                       area_.left() - kTickLength - 3 - bounds_.left(), metrics_.height());
    painter.drawText(label, Qt::AlignRight | Qt::AlignVCenter, base::ToQt(tick.label));
  }
  const QRectF below(area_.left(), area_.bottom() + kTickLength + metrics_.lineSpacing(), area_.width(),
                     metrics_.lineSpacing());
  painter.drawText(below, Qt::AlignCenter, metrics_.elidedText(AxisTitle(), Qt::ElideRight, below.width()));
}

QString PlotPainter::AxisTitle() const {
  if (scene_.rows.axis() == Axis::kRow) return base::ToQt(texts::kRowAxis);
  return base::ToQt(texts::TimeAxis(TimeFormOf(scene_.x)));
}

double PlotPainter::YOf(double y) const {
  return area_.bottom() - std::clamp(scene_.y.FractionOf(y) * area_.height(), -kFar, kFar);
}

void PlotPainter::PaintCurves(QImage& picture) const {
  const double ratio = picture.devicePixelRatio();
  const QRect area = QRectF(area_.topLeft() * ratio, area_.size() * ratio).toRect() & picture.rect();
  if (area.isEmpty()) return;
  const PlotColumns columns = ColumnsOf(area.width());
  std::vector<ColoredBars> curves;
  for (const PlotCurve& curve : scene_.curves) {
    CurveBars bars(CurveOf(*curve.series, columns), scene_.x, scene_.y, area.width(), area.height());
    bars.Thicken(kLineWidth * ratio);
    curves.push_back({std::move(bars), curve.color.rgb()});
  }
  auto* pixels = reinterpret_cast<std::uint32_t*>(picture.scanLine(area.top())) + area.left();
  const auto stride =
      static_cast<std::ptrdiff_t>(static_cast<std::size_t>(picture.bytesPerLine()) / sizeof *pixels);
  PaintBars(curves, {pixels, stride, area.width(), area.height()});
}

void PlotPainter::PaintCurves(QPainter& painter) const {
  painter.save();
  painter.setClipRect(area_, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  const PlotColumns columns = ColumnsOf(std::max(1, static_cast<int>(area_.width() * kPaperColumnsPerUnit)));
  for (const PlotCurve& plot_curve : scene_.curves) {
    painter.setPen(QPen(plot_curve.color, kLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(PathOf(CurveOf(*plot_curve.series, columns)));
  }
  painter.restore();
}

QPainterPath PlotPainter::PathOf(const Curve& curve) const {
  QPainterPath path;
  QPolygonF points;
  for (const CurvePoint& point : curve.points) points << PixelOf(point);
  if (points.size() == 1) points << points[0];
  path.addPolygon(points);
  for (const CurveLine& line : curve.lines) {
    path.moveTo(PixelOf(line.from));
    path.lineTo(PixelOf(line.to));
  }
  for (const CurveColumn& column : curve.columns) {
    const double x = area_.left() + (column.column + 0.5) / kPaperColumnsPerUnit;
    path.moveTo(x, YOf(column.extent.minimum));
    path.lineTo(x, YOf(column.extent.maximum));
  }
  return path;
}

bool PlotPainter::HasMarks() const {
  const auto [first, last] = scene_.rows.Within(scene_.x);
  const auto maximum = static_cast<std::size_t>(area_.width() / kUnitsPerMark);
  std::size_t count = 0;
  for (const PlotCurve& curve : scene_.curves)
    count = std::max(count, curve.series->CountBefore(last) - curve.series->CountBefore(first));
  return count <= maximum;
}

void PlotPainter::PaintMarks(QPainter& painter) const {
  if (!HasMarks()) return;
  painter.save();
  painter.setClipRect(area_.adjusted(-kMarkRadius, -kMarkRadius, kMarkRadius, kMarkRadius),
                      Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const PlotColumns columns = ColumnsOf(static_cast<int>(area_.width()));
  for (const PlotCurve& curve : scene_.curves) {
    painter.setBrush(curve.color);
    for (const CurvePoint& point : CurveOf(*curve.series, columns).points) {
      if (scene_.x.Holds(point.x) && scene_.y.Holds(point.y))
        painter.drawEllipse(PixelOf(point), kMarkRadius, kMarkRadius);
    }
  }
  painter.restore();
}

}  // namespace kolvane::values
