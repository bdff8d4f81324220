#include "values/curve.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kolvane::values {

double PlotRows::XOf(std::size_t row) const {
  return axis_ == Axis::kRow ? static_cast<double>(row + 1) : store_->times().Seconds(row);
}

std::size_t PlotRows::RowAt(double x) const {
  if (axis_ == Axis::kTime) return store_->times().FirstAt(x, rows_);
  const double number = std::clamp(std::ceil(x), 1.0, static_cast<double>(rows_ + 1));
  return static_cast<std::size_t>(number) - 1;
}

Span PlotRows::Reach() const { return rows_ == 0 ? Span{} : Span{XOf(0), XOf(rows_ - 1)}; }

std::pair<std::size_t, std::size_t> PlotRows::Within(const Span& x) const {
  return {RowAt(x.from), RowAt(std::nextafter(x.to, HUGE_VAL))};
}

PlotColumns::PlotColumns(const PlotRows& rows, const Span& x, int count) : rows_(rows) {
  bounds_.reserve(static_cast<std::size_t>(count) + 1);
  for (int column = 0; column < count; ++column) bounds_.push_back(rows.RowAt(x.At(1.0 * column / count)));
  bounds_.push_back(rows.RowAt(std::nextafter(x.to, HUGE_VAL)));
}

namespace {

// With this many leaves of the pyramid in a column, columns end at leaf boundaries.
constexpr std::size_t kLeavesForWhole = 8;

bool Overlap(const Extent& a, const Extent& b) { return a.minimum <= b.maximum && b.minimum <= a.maximum; }

class CurveMaker {
 public:
  CurveMaker(const Series& series, const PlotColumns& columns)
      : series_(series),
        columns_(columns),
        all_(series.CountBefore(columns.rows().rows())),
        first_(series.CountBefore(columns.FirstRow(0))),
        last_(series.CountBefore(columns.FirstRow(columns.count()))) {}

  Curve Make() {
    const bool few = last_ - first_ <= static_cast<std::size_t>(columns_.count());
    few ? AddPoints() : AddColumns();
    return std::move(curve_);
  }

 private:
  CurvePoint PointOf(std::size_t index) const {
    return {columns_.rows().XOf(series_.RowOf(index)), series_.values()[index]};
  }

  void AddPoints() {
    const std::size_t end = std::min(all_, last_ + 1);
    for (std::size_t index = first_ - std::min<std::size_t>(first_, 1); index < end; ++index)
      curve_.points.push_back(PointOf(index));
  }

  void AddLineTo(std::size_t index) { curve_.lines.push_back({PointOf(index - 1), PointOf(index)}); }

  void AddColumn(int column, std::size_t first, std::size_t last) {
    if (first == last) return;
    const CurveColumn added{column, series_.values().ExtentOf(first, last)};
    const bool beside = !curve_.columns.empty() && curve_.columns.back().column == column - 1 &&
                        Overlap(curve_.columns.back().extent, added.extent);
    if (!beside && first > 0) AddLineTo(first);
    curve_.columns.push_back(added);
  }

  void AddColumns() {
    SeriesScan scan(series_);
    std::size_t begin = first_;
    for (int column = 0; column < columns_.count(); ++column) {
      std::size_t end = scan.CountBefore(columns_.FirstRow(column + 1));
      // This moves values by less than an eighth of a pixel; reading each would take most of the time.
      if (end < last_ && end - begin >= kLeavesForWhole * Column::kLeaf) end -= end % Column::kLeaf;
      AddColumn(column, begin, end);
      begin = end;
    }
    if (last_ < all_) AddLineTo(last_);
  }

  const Series& series_;
  const PlotColumns& columns_;
  std::size_t all_;
  std::size_t first_;
  std::size_t last_;
  Curve curve_;
};

}  // namespace

Curve CurveOf(const Series& series, const PlotColumns& columns) { return CurveMaker(series, columns).Make(); }

std::optional<std::size_t> NearestValue(const Series& series, const PlotRows& rows, double x) {
  const std::size_t all = series.CountBefore(rows.rows());
  if (all == 0) return std::nullopt;
  const std::size_t after = series.CountBefore(rows.RowAt(x));
  if (after == 0) return 0;
  if (after == all) return all - 1;
  const double left = x - rows.XOf(series.RowOf(after - 1));
  const double right = rows.XOf(series.RowOf(after)) - x;
  return left <= right ? after - 1 : after;
}

namespace {

constexpr float kNowhere = 1e9f;  // far outside any picture

// The pixel rows that a curve covers fully, by column.
struct Whole {
  std::vector<int> first;
  std::vector<int> last;
  int minimum = 0;
  int maximum = 0;
};

Whole WholeRowsOf(const CurveBars& bars, int height) {
  Whole whole{{}, {}, height, 0};
  for (int column = 0; column < bars.width(); ++column) {
    const bool none = bars.IsEmpty(column);
    const double top = std::clamp(bars.top(column), 0.0, 1.0 * height);
    const double bottom = std::clamp(bars.bottom(column), 0.0, 1.0 * height);
    whole.first.push_back(none ? 0 : static_cast<int>(std::ceil(top)));
    whole.last.push_back(none ? 0 : static_cast<int>(std::floor(bottom)));
    if (none || whole.first.back() >= whole.last.back()) continue;
    whole.minimum = std::min(whole.minimum, whole.first.back());
    whole.maximum = std::max(whole.maximum, whole.last.back());
  }
  return whole;
}

// Written so that the compiler uses vector instructions.
void PaintRow(std::uint32_t* line, int y, int width, const Whole& whole, std::uint32_t color) {
  const int* first = whole.first.data();
  const int* last = whole.last.data();
  for (int column = 0; column < width; ++column)
    line[column] = y >= first[column] && y < last[column] ? color : line[column];
}

std::uint32_t Mixed(std::uint32_t lower, std::uint32_t upper, double share) {
  const auto part = static_cast<std::uint32_t>(share * 256);
  std::uint32_t mixed = 0xff000000;
  for (const unsigned shift : {0u, 8u, 16u}) {
    const std::uint32_t a = lower >> shift & 0xff;
    const std::uint32_t b = upper >> shift & 0xff;
    mixed |= (a * (256 - part) + b * part) / 256 << shift;
  }
  return mixed;
}

void Blend(const Pixels& pixels, int column, int y, double share, std::uint32_t color) {
  if (y < 0 || y >= pixels.height || share <= 0) return;
  std::uint32_t& pixel = pixels.first[y * pixels.stride + column];
  pixel = Mixed(pixel, color, std::min(share, 1.0));
}

// Paints the pixels at both ends of each bar.
void PaintEnds(const CurveBars& bars, const Pixels& pixels, std::uint32_t color) {
  for (int column = 0; column < bars.width(); ++column) {
    if (bars.IsEmpty(column)) continue;
    const double top = std::clamp(bars.top(column), -2.0, pixels.height + 2.0);
    const double bottom = std::clamp(bars.bottom(column), -2.0, pixels.height + 2.0);
    const int first = static_cast<int>(std::floor(top));
    const int last = static_cast<int>(std::floor(bottom));
    if (first == last) {
      Blend(pixels, column, first, bottom - top, color);
    } else {
      if (first != top) Blend(pixels, column, first, first + 1 - top, color);
      Blend(pixels, column, last, bottom - last, color);
    }
  }
}

}  // namespace

CurveBars::CurveBars(const Curve& curve, const Span& x, const Span& y, int width, int height)
    : x_(x),
      y_(y),
      height_(height),
      top_(static_cast<std::size_t>(width), kNowhere),
      bottom_(static_cast<std::size_t>(width), -kNowhere) {
  for (const CurvePoint& point : curve.points) {
    const Pixel pixel = PixelOf(point);
    CoverLine(&point == curve.points.data() ? pixel : PixelOf((&point)[-1]), pixel);
  }
  for (const CurveLine& line : curve.lines) CoverLine(PixelOf(line.from), PixelOf(line.to));
  for (const CurveColumn& column : curve.columns) {
    Cover(column.column, YOf(column.extent.minimum));
    Cover(column.column, YOf(column.extent.maximum));
  }
}

double CurveBars::YOf(double y) const {
  constexpr double kLimit = kNowhere / 2;
  return std::clamp((1 - y_.FractionOf(y)) * height_, -kLimit, kLimit);
}

CurveBars::Pixel CurveBars::PixelOf(const CurvePoint& point) const {
  return {x_.FractionOf(point.x) * width(), YOf(point.y)};
}

void CurveBars::Cover(int column, double y) {
  top_[At(column)] = std::min(top_[At(column)], static_cast<float>(y));
  bottom_[At(column)] = std::max(bottom_[At(column)], static_cast<float>(y));
}

void CurveBars::CoverLine(const Pixel& from, const Pixel& to) {
  const double first = std::max(from.x, 0.0);
  const double last = std::min(to.x, 1.0 * width());
  if (first > last) return;
  const double slope = to.x > from.x ? (to.y - from.y) / (to.x - from.x) : 0;
  const int last_column = std::min(width() - 1, static_cast<int>(last));
  for (int column = std::min(width() - 1, static_cast<int>(first)); column <= last_column; ++column) {
    Cover(column, from.y + (std::max(first, 1.0 * column) - from.x) * slope);
    Cover(column, from.y + (std::min(last, column + 1.0) - from.x) * slope);
  }
  if (slope == 0) Cover(last_column, to.y);
}

void CurveBars::Thicken(double thickness) {
  const int more = static_cast<int>(thickness) - 1;
  for (int step = 0; step < more; ++step) {
    for (int column = width() - 1; column > 0; --column) {
      top_[At(column)] = std::min(top_[At(column)], top_[At(column - 1)]);
      bottom_[At(column)] = std::max(bottom_[At(column)], bottom_[At(column - 1)]);
    }
  }
  for (int column = 0; column < width(); ++column) {
    if (IsEmpty(column)) continue;
    top_[At(column)] -= static_cast<float>(thickness / 2);
    bottom_[At(column)] += static_cast<float>(thickness / 2);
  }
}

void PaintBars(std::span<const ColoredBars> curves, const Pixels& pixels) {
  std::vector<Whole> wholes;
  for (const ColoredBars& curve : curves) wholes.push_back(WholeRowsOf(curve.bars, pixels.height));
  for (int y = 0; y < pixels.height; ++y) {
    for (std::size_t i = 0; i < curves.size(); ++i) {
      if (y >= wholes[i].minimum && y < wholes[i].maximum)
        PaintRow(pixels.first + y * pixels.stride, y, pixels.width, wholes[i], curves[i].color);
    }
  }
  for (const ColoredBars& curve : curves) PaintEnds(curve.bars, pixels, curve.color);
}

}  // namespace kolvane::values
