#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "values/plot_view.h"
#include "values/store.h"

namespace kolvane::values {

/// What values are drawn over: the seconds since the first row, or the row's number, from 1.
enum class Axis { kTime, kRow };

/// The first `rows` rows of a store on an axis.
class PlotRows {
 public:
  PlotRows(const Store& store, std::size_t rows, Axis axis) : store_(&store), rows_(rows), axis_(axis) {}

  const Store& store() const { return *store_; }
  std::size_t rows() const { return rows_; }
  Axis axis() const { return axis_; }

  double XOf(std::size_t row) const;
  /// The first row at `x` or beyond, rows() where there is none.
  std::size_t RowAt(double x) const;
  /// How far the rows reach; from 0 to 1 where there are none.
  Span Reach() const;
  /// The rows within a span, the second one excluded.
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

/// A line between two values that follow one another.
struct CurveLine {
  CurvePoint from;
  CurvePoint to;
};

/// What a series looks like: its points, or where these are more than the columns, what each column holds and
/// the lines between columns that have no height in common.
struct Curve {
  std::vector<CurvePoint> points;
  std::vector<CurveColumn> columns;
  std::vector<CurveLine> lines;
};

/// The pixel columns of a plot: which rows each one holds.
class PlotColumns {
 public:
  PlotColumns(const PlotRows& rows, const Span& x, int count);

  const PlotRows& rows() const { return rows_; }
  int count() const { return static_cast<int>(bounds_.size()) - 1; }
  /// The first row of a column; that of the one after the last ends it.
  std::size_t FirstRow(int column) const { return bounds_[static_cast<std::size_t>(column)]; }

 private:
  PlotRows rows_;
  std::vector<std::size_t> bounds_;
};

/// The part of a series that the columns show, with the points next to it on both sides. It costs a few steps
/// a column however many values there are, and none of them lies outside of what its column says.
Curve CurveOf(const Series& series, const PlotColumns& columns);

/// The value that stands nearest to `x`; nothing where the series has none in these rows.
std::optional<std::size_t> NearestValue(const Series& series, const PlotRows& rows, double x);

/// 32-bit pixels 0xffRRGGBB, line after line; `stride` is the distance of two lines in pixels.
struct Pixels {
  std::uint32_t* first;
  std::ptrdiff_t stride;
  int width;
  int height;
};

/// What a curve covers of each pixel column: since it never goes back on the x axis, that is one piece.
/// Places are counted from the top.
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
  struct Place {
    double x;
    double y;
  };

  static std::size_t At(int column) { return static_cast<std::size_t>(column); }
  Place PlaceOf(const CurvePoint& point) const;
  double YOf(double y) const;
  void Cover(int column, double y);
  void CoverLine(const Place& from, const Place& to);

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

/// Paints curves, the later ones above the earlier ones; pixels that are covered in part take a part of the
/// colour.
void PaintBars(std::span<const ColoredBars> curves, const Pixels& pixels);

}  // namespace kolvane::values
