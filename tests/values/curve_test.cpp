#include "values/curve.h"

#include <gtest/gtest.h>
#include <cmath>
#include <random>
#include <string>

#include "values/filled_store.h"

namespace kolvane::values {
namespace {

constexpr int kColumns = 200;

/// A store with `rows` rows of "A?" at random times; every third row has a second field, and every fifth is
/// of "B?".
class CurveTest : public testing::Test {
 protected:
  void Fill(int rows) {
    std::mt19937 generator(5);
    std::exponential_distribution<double> gap(10);
    std::normal_distribution<double> value(0, 1);
    double seconds = 0;
    for (int row = 0; row < rows; ++row) {
      seconds += gap(generator);
      const std::string_view command = row % 5 == 4 ? "B?" : "A?";
      row % 3 == 0 ? AddAt(store_, seconds, command, {value(generator), value(generator)})
                   : AddAt(store_, seconds, command, {value(generator)});
    }
  }

  // Compares the curve with each visible value, one by one.
  static void ExpectAllValuesShown(const Series& series, const PlotRows& rows, const Span& x) {
    const PlotColumns columns(rows, x, kColumns);
    const Curve curve = CurveOf(series, columns);
    EXPECT_TRUE(curve.points.empty() || curve.columns.empty());
    std::vector<Extent> extents(kColumns);
    for (const CurveColumn& column : curve.columns)
      extents[static_cast<std::size_t>(column.column)] = column.extent;
    std::vector<Extent> plain(kColumns);
    std::size_t visible = 0;
    for (std::size_t i = 0; i < series.values().size(); ++i) {
      if (series.RowOf(i) >= rows.rows()) break;
      const double at = rows.XOf(series.RowOf(i));
      if (!x.Holds(at)) continue;
      const auto column = std::min(kColumns - 1, static_cast<int>(x.FractionOf(at) * kColumns));
      plain[static_cast<std::size_t>(column)].Add(series.values()[i]);
      if (!curve.points.empty()) {
        const CurvePoint& point = curve.points[visible + (curve.points[0].x < x.from ? 1 : 0)];
        EXPECT_EQ(point.x, at);
        EXPECT_EQ(point.y, series.values()[i]);
      }
      ++visible;
    }
    EXPECT_EQ(curve.columns.empty(), visible <= kColumns);
    if (curve.columns.empty()) return;
    for (std::size_t column = 0; column < kColumns; ++column) {
      EXPECT_EQ(extents[column].minimum, plain[column].minimum) << column;
      EXPECT_EQ(extents[column].maximum, plain[column].maximum) << column;
    }
  }

  Store store_;
};

TEST_F(CurveTest, LosesNoValueAtAnyZoom) {
  Fill(30000);
  for (const Axis axis : {Axis::kTime, Axis::kRow}) {
    const PlotRows rows(store_, store_.rows(), axis);
    const Span reach = rows.Reach();
    for (const auto& [from, to] :
         {std::pair{0.0, 1.0}, {0.1, 0.9}, {0.5, 0.51}, {0.7, 0.7001}, {-1.0, 2.0}, {0.99, 1.2}}) {
      for (std::size_t number = 0; number < store_.series_count(); ++number)
        ExpectAllValuesShown(store_.series(number), rows, {reach.At(from), reach.At(to)});
    }
  }
}

TEST_F(CurveTest, EndsWhereTheRowsShownEnd) {
  Fill(5000);
  for (const std::size_t shown : {std::size_t{0}, std::size_t{1}, std::size_t{100}, std::size_t{4999}}) {
    const PlotRows rows(store_, shown, Axis::kRow);
    for (std::size_t number = 0; number < store_.series_count(); ++number)
      ExpectAllValuesShown(store_.series(number), rows, {0, 5001});
  }
}

TEST_F(CurveTest, HasTheNeighboursOfTheVisibleValues) {
  for (const double value : {10, 11, 12, 13, 14, 15}) Add(store_, "A?", {value});
  const PlotRows rows(store_, 6, Axis::kTime);
  const Curve curve = CurveOf(store_.series(0), PlotColumns(rows, {1.5, 3.5}, 10));
  ASSERT_EQ(curve.points.size(), 4u);
  EXPECT_EQ(curve.points.front().x, 1);
  EXPECT_EQ(curve.points.back().y, 14);
  const Curve dense = CurveOf(store_.series(0), PlotColumns(rows, {0.5, 4.5}, 2));
  ASSERT_EQ(dense.columns.size(), 2u);
  EXPECT_EQ(dense.lines.front().from.y, 10);
  EXPECT_EQ(dense.lines.back().to.y, 15);
}

// Columns whose heights do not overlap are joined by a line, with or without empty columns between them.
TEST_F(CurveTest, JoinsItsColumns) {
  for (const double seconds : {0.0, 0.1, 0.2, 1.0, 1.1, 1.2, 2.0, 2.1, 2.2, 5.0, 5.1, 5.2})
    AddAt(store_, seconds, "A?", {seconds < 1.5 ? 1 : seconds});
  const PlotRows rows(store_, store_.rows(), Axis::kTime);
  const Curve curve = CurveOf(store_.series(0), PlotColumns(rows, {0, 6}, 6));
  ASSERT_EQ(curve.columns.size(), 4u);
  ASSERT_EQ(curve.lines.size(), 2u);
  EXPECT_EQ(curve.lines[0].from.y, 1);
  EXPECT_EQ(curve.lines[0].to.y, 2);
  EXPECT_DOUBLE_EQ(curve.lines[1].from.x, 2.2);
  EXPECT_EQ(curve.lines[1].to.x, 5);
}

// With hundreds of values per column, some are counted in the column next to their own.
TEST_F(CurveTest, LosesNoValueWithHundredsPerColumn) {
  Fill(300000);
  const PlotRows rows(store_, store_.rows(), Axis::kRow);
  const Span x = rows.Reach();
  const Series& series = store_.series(0);
  const Curve curve = CurveOf(series, PlotColumns(rows, x, kColumns));
  ASSERT_EQ(curve.columns.size(), static_cast<std::size_t>(kColumns));
  Extent all;
  for (const CurveColumn& column : curve.columns) all.Merge(column.extent);
  EXPECT_EQ(all.minimum, series.values().ExtentOf(0, series.values().size()).minimum);
  EXPECT_EQ(all.maximum, series.values().ExtentOf(0, series.values().size()).maximum);
  for (std::size_t i = 0; i < series.values().size(); ++i) {
    const double position = x.FractionOf(rows.XOf(series.RowOf(i))) * kColumns;
    const auto own = std::min<std::size_t>(kColumns - 1, static_cast<std::size_t>(position));
    Extent near = curve.columns[own].extent;
    const double within = position - static_cast<double>(own);
    if (within > 0.85 && own + 1 < kColumns) near.Merge(curve.columns[own + 1].extent);
    ASSERT_GE(series.values()[i], near.minimum) << i;
    ASSERT_LE(series.values()[i], near.maximum) << i;
  }
}

TEST_F(CurveTest, IsTheLineThatCrossesAViewWithoutValues) {
  for (const double value : {10, 11}) Add(store_, "A?", {value});
  const Curve curve =
      CurveOf(store_.series(0), PlotColumns(PlotRows(store_, 2, Axis::kTime), {0.2, 0.8}, 10));
  EXPECT_EQ(curve.points.size(), 2u);
}

TEST(PlotRows, AreOnTheirAxis) {
  Store store;
  for (const double seconds : {0.0, 0.5, 4.0}) AddAt(store, seconds, "A?", {1});
  const PlotRows times(store, 3, Axis::kTime);
  EXPECT_EQ(times.Reach(), (Span{0, 4}));
  EXPECT_EQ(times.RowAt(0.5), 1u);
  EXPECT_EQ(times.RowAt(9), 3u);
  EXPECT_EQ(times.Within({0.5, 4}), (std::pair<std::size_t, std::size_t>{1, 3}));
  const PlotRows numbers(store, 3, Axis::kRow);
  EXPECT_EQ(numbers.Reach(), (Span{1, 3}));
  EXPECT_EQ(numbers.RowAt(-5), 0u);
  EXPECT_EQ(numbers.RowAt(1.5), 1u);
  EXPECT_EQ(numbers.RowAt(1e30), 3u);
  EXPECT_EQ(numbers.Within({1, 2}), (std::pair<std::size_t, std::size_t>{0, 2}));
  EXPECT_EQ(PlotRows(store, 0, Axis::kTime).Reach(), Span{});
}

TEST(NearestValue, IsTheOneWithTheLeastDistance) {
  Store store;
  AddAt(store, 0, "A?", {1});
  AddAt(store, 1, "B?", {2});
  AddAt(store, 2, "A?", {3});
  AddAt(store, 9, "A?", {4});
  const PlotRows rows(store, 4, Axis::kTime);
  const Series& a = store.series(0);
  EXPECT_EQ(NearestValue(a, rows, -5), 0u);
  EXPECT_EQ(NearestValue(a, rows, 0.9), 0u);
  EXPECT_EQ(NearestValue(a, rows, 1.1), 1u);
  EXPECT_EQ(NearestValue(a, rows, 6), 2u);
  EXPECT_EQ(NearestValue(a, rows, 100), 2u);
  EXPECT_EQ(NearestValue(a, PlotRows(store, 1, Axis::kTime), 100), 0u);
  EXPECT_EQ(NearestValue(store.series(1), PlotRows(store, 1, Axis::kTime), 1), std::nullopt);
}

constexpr std::uint32_t kBackground = 0xff000000;
constexpr std::uint32_t kFull = 0xffffffff;

/// A picture of `curve` on axes from 0 to `width` and to `height`: a line of text for each line of pixels,
/// "#" for a full pixel, "+" for a partial one, "." for an empty one.
std::string Picture(const Curve& curve, int width, int height, double thickness) {
  CurveBars bars(curve, {0, 1.0 * width}, {0, 1.0 * height}, width, height);
  bars.Thicken(thickness);
  // A frame of one pixel, which must stay unchanged.
  const std::ptrdiff_t stride = width + 2;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(stride * (height + 2)), kBackground);
  const std::vector<ColoredBars> curves = {{bars, kFull}};
  PaintBars(curves, {pixels.data() + stride + 1, stride, width, height});
  std::string text;
  for (std::ptrdiff_t y = 0; y < height + 2; ++y) {
    for (std::ptrdiff_t x = 0; x < stride; ++x) {
      const std::uint32_t pixel = pixels[static_cast<std::size_t>(y * stride + x)];
      const bool frame = y == 0 || y == height + 1 || x == 0 || x == stride - 1;
      if (frame) {
        EXPECT_EQ(pixel, kBackground) << x << ' ' << y;
      } else {
        text += pixel == kBackground ? '.' : pixel == kFull ? '#' : '+';
      }
    }
    if (y > 0 && y <= height) text += '\n';
  }
  return text;
}

TEST(CurveBars, PaintALevelLine) {
  EXPECT_EQ(Picture({{{0, 1.5}, {4, 1.5}}, {}, {}}, 4, 3, 1), "....\n####\n....\n");
  EXPECT_EQ(Picture({{{0, 1.5}, {4, 1.5}}, {}, {}}, 4, 3, 2), "++++\n####\n++++\n");
}

TEST(CurveBars, PaintASlope) {
  EXPECT_EQ(Picture({{{0, 0}, {4, 4}}, {}, {}}, 4, 4, 1), "..+#\n.+#+\n+#+.\n#+..\n");
}

TEST(CurveBars, PaintASinglePoint) {
  EXPECT_EQ(Picture({{{2.5, 1.5}}, {}, {}}, 5, 3, 1), ".....\n..#..\n.....\n");
}

TEST(CurveBars, PaintValuesAtTheSameTimeAboveEachOther) {
  EXPECT_EQ(Picture({{{1.5, 0.5}, {1.5, 2.5}}, {}, {}}, 3, 3, 1), ".#.\n.#.\n.#.\n");
}

TEST(CurveBars, PaintColumnsAndTheLinesBetweenThem) {
  const Curve curve{{}, {{0, {0.5, 1.5}}, {3, {2.5, 2.5}}}, {{{0.5, 1.5}, {3.5, 1.5}}}};
  EXPECT_EQ(Picture(curve, 4, 3, 1), "...#\n####\n#...\n");
}

TEST(CurveBars, LeaveOutWhatIsNotVisible) {
  EXPECT_EQ(Picture({{{-9, 9}, {20, 9}}, {}, {}}, 3, 2, 1), "...\n...\n");
  EXPECT_EQ(Picture({{{-9, -1e300}, {20, -1e300}}, {}, {}}, 3, 2, 1), "...\n...\n");
  EXPECT_EQ(Picture({{{-9, 1}, {-1, 1}}, {}, {}}, 3, 2, 1), "...\n...\n");
}

TEST(CurveBars, PaintTheVisiblePartOfLinesToFarAway) {
  EXPECT_EQ(Picture({{{-3, 1.5}, {9, 1.5}}, {}, {}}, 3, 3, 1), "...\n###\n...\n");
  const std::string steep = Picture({{{1.5, -1e300}, {1.5, 1e300}}, {}, {}}, 3, 3, 1);
  EXPECT_EQ(steep, ".#.\n.#.\n.#.\n");
}

TEST(CurveBars, EndALineWhereItEnds) {
  EXPECT_EQ(Picture({{{1.5, 0.5}, {1.5, 2.5}}, {}, {}}, 2, 3, 1), ".#\n.#\n.#\n") << "in the last column";
  EXPECT_EQ(Picture({{{3, 0.5}, {3, 2.5}}, {}, {}}, 3, 3, 1), "..#\n..#\n..#\n") << "at the right edge";
  EXPECT_EQ(Picture({{{0, 0.5}, {6, 6.5}}, {}, {}}, 3, 8, 1), "...\n...\n...\n...\n..#\n.##\n##.\n#..\n")
      << "the next value is beyond the edge";
}

TEST(CurveBars, ThickenSteepLinesSideways) {
  EXPECT_EQ(Picture({{{1.5, 0}, {1.5, 3}}, {}, {}}, 4, 3, 2), ".##.\n.##.\n.##.\n");
}

TEST(CurveBars, PaintLaterCurvesAboveEarlierOnes) {
  const Curve level{{{0, 0.5}, {2, 0.5}}, {}, {}};
  CurveBars bars(level, {0, 2}, {0, 1}, 2, 1);
  bars.Thicken(1);
  const std::vector<ColoredBars> curves = {{bars, 0xff111111}, {bars, 0xff222222}};
  std::vector<std::uint32_t> pixels(2, kBackground);
  PaintBars(curves, {pixels.data(), 2, 2, 1});
  EXPECT_EQ(pixels, (std::vector<std::uint32_t>{0xff222222, 0xff222222}));
}

}  // namespace

}  // namespace kolvane::values
