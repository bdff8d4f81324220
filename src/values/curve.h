#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "values/plot_view.h"
#include "values/store.h"

namespace kolvane::values {

/// The x axis: the seconds since the first row, or the row's number, from 1.
enum class Axis { kTime, kRow };

/// The first `rows` rows of a store, placed on an axis.
class PlotRows {
 public:
  PlotRows(const Store& store, std::size_t rows, Axis axis) : store_(&store), rows_(rows), axis_(axis) {}

  const Store& store() const { return *store_; }
  std::size_t rows() const { return rows_; }
  Axis axis() const { return axis_; }

  double XOf(std::size_t row) const;
  /// The first row at `x` or beyond; rows() if there is none.
  std::size_t RowAt(double x) const;
  /// The range of the rows on the axis; 0 to 1 if there are no rows.
  Span Reach() const;
  /// The rows within a span: the first, and the end, which is excluded.
  std::pair<std::size_t, std::size_t> Within(const Span& x) const;

 private:
  const Store* store_;
  std::size_t rows_;
  Axis axis_;
};

struct CurvePoint {
  double x;
  double y;
};

/// The values of a curve that share one column of pixels.
struct CurveColumn {
  int column;
  Extent extent;
};

/// A line between two consecutive values.
struct CurveLine {
  CurvePoint from;
  CurvePoint to;
};

/// The shape of a series: its points, or if there are more values than columns, the extent of each column and
/// the lines between columns whose extents do not overlap.
struct Curve {
  std::vector<CurvePoint> points;
  std::vector<CurveColumn> columns;
  std::vector<CurveLine> lines;
};

/// The pixel columns of a plot: the rows in each.
class PlotColumns {
 public:
  PlotColumns(const PlotRows& rows, const Span& x, int count);

  const PlotRows& rows() const { return rows_; }
  int count() const { return static_cast<int>(bounds_.size()) - 1; }
  /// The first row of a column; FirstRow(count()) is the end of the last one.
  std::size_t FirstRow(int column) const { return bounds_[static_cast<std::size_t>(column)]; }

 private:
  PlotRows rows_;
  std::vector<std::size_t> bounds_;
};

/// The part of a series that the columns show, with the adjacent value on each side. It costs a few steps per
/// column however many values there are, and no value is outside its column's extent.
Curve CurveOf(const Series& series, const PlotColumns& columns);

/// The index of the value nearest to `x`; no value if the series has none in these rows.
std::optional<std::size_t> NearestValue(const Series& series, const PlotRows& rows, double x);

/// 32-bit pixels 0xffRRGGBB, line after line; `stride` is the distance between two lines in pixels.
struct Pixels {
  std::uint32_t* first;
  std::ptrdiff_t stride;
  int width;
  int height;
};

/// The part of each pixel column that a curve covers: one range, because a curve never goes back on the x
/// axis. Positions are counted from the top.
class CurveBars {
 public:
  /// The curve must have been made for `width` columns.
  CurveBars(const Curve& curve, const Span& x, const Span& y, int width, int height);

  /// Makes the line `thickness` pixels thick.
  void Thicken(double thickness);

  bool IsEmpty(int column) const { return top_[At(column)] > bottom_[At(column)]; }
  double top(int column) const { return top_[At(column)]; }
  double bottom(int column) const { return bottom_[At(column)]; }
  int width() const { return static_cast<int>(top_.size()); }

 private:
  struct Pixel {
    double x;
    double y;
  };

  static std::size_t At(int column) { return static_cast<std::size_t>(column); }
  Pixel PixelOf(const CurvePoint& point) const;
  double YOf(double y) const;
  void Cover(int column, double y);
  void CoverLine(const Pixel& from, const Pixel& to);

  Span x_;
  Span y_;
  int height_;
  std::vector<float> top_;
  std::vector<float> bottom_;
};

struct ColoredBars {
  CurveBars bars;
  std::uint32_t color;
};

/// Paints curves, later ones above earlier ones; pixels that are partly covered are blended.
void PaintBars(std::span<const ColoredBars> curves, const Pixels& pixels);

}  // namespace kolvane::values
