#include "values/plot_view.h"

#include <gtest/gtest.h>
#include <cmath>
#include <random>

namespace kolvane::values {
namespace {

using Mode = PlotView::Mode;

void ExpectNear(const Span& span, double from, double to) {
  EXPECT_NEAR(span.from, from, 1e-9 * (1 + std::abs(from)));
  EXPECT_NEAR(span.to, to, 1e-9 * (1 + std::abs(to)));
}

PlotView ViewOf(double from, double to) {
  PlotView view;
  view.SetData({from, to});
  return view;
}

TEST(PlotView, ShowsEverythingAtFirst) {
  PlotView view = ViewOf(0, 100);
  ExpectNear(view.x(), -1, 101);
  view.SetData({0, 200});
  ExpectNear(view.x(), -2, 202);
  EXPECT_EQ(view.mode(), Mode::kAll);
}

TEST(PlotView, LeavesSpaceOnBothSidesOfOnePoint) { ExpectNear(ViewOf(5, 5).x(), 4.5, 5.5); }

TEST(PlotView, FitsTheYAxisToTheValues) {
  PlotView view;
  view.FitY({10, 20});
  ExpectNear(view.y(), 9.5, 20.5);
  view.FitY({});
  ExpectNear(view.y(), 9.5, 20.5);
  view.SetAutoY(false);
  view.FitY({0, 1});
  ExpectNear(view.y(), 9.5, 20.5);
}

TEST(PlotView, LeavesSpaceAboveAndBelowEqualValues) {
  PlotView view;
  view.FitY({4, 4});
  EXPECT_LT(view.y().from, 4);
  EXPECT_GT(view.y().to, 4);
  view.FitY({0, 0});
  ExpectNear(view.y(), -1.1, 1.1);
}

TEST(PlotView, StaysFiniteWithTheLargestNumbers) {
  PlotView view;
  view.FitY({-1.7e308, 1.7e308});
  EXPECT_TRUE(std::isfinite(view.y().width()));
  view.ZoomY(1e300, 0.5);
  EXPECT_TRUE(std::isfinite(view.y().width()));
  for (int i = 0; i < 10; ++i) view.PanY(1000);
  EXPECT_TRUE(std::isfinite(view.y().width()));
  EXPECT_GT(view.y().width(), 0);
}

TEST(PlotView, ZoomsAroundAPosition) {
  PlotView view = ViewOf(0, 100);
  view.Show({20, 60}, {0, 1});
  view.ZoomX(0.5, 0.25);
  ExpectNear(view.x(), 25, 45);
  EXPECT_EQ(view.mode(), Mode::kFixed);
  view.ZoomY(2, 0.5);
  ExpectNear(view.y(), -0.5, 1.5);
  EXPECT_FALSE(view.auto_y());
}

TEST(PlotView, ShowsEverythingAgainWhenZoomedOutFarEnough) {
  PlotView view = ViewOf(0, 100);
  view.ZoomX(0.5, 0.5);
  EXPECT_EQ(view.mode(), Mode::kFixed);
  view.ZoomX(10, 0.5);
  EXPECT_EQ(view.mode(), Mode::kAll);
  ExpectNear(view.x(), -1, 101);
}

TEST(PlotView, ZoomsOutAtAnEndWithoutLeavingTheValues) {
  PlotView view = ViewOf(0, 100);
  view.ShowX({-1, 9});
  view.ZoomX(2, 1);
  ExpectNear(view.x(), -1, 19);
}

TEST(PlotView, ZoomsInAsFarAsNumbersCanBeToldApart) {
  PlotView view = ViewOf(0, 1e6);
  for (int i = 0; i < 200; ++i) view.ZoomX(0.5, 0.7), view.ZoomY(0.5, 0.7);
  EXPECT_GT(view.x().width(), 0);
  EXPECT_LT(view.x().At(0.3), view.x().At(0.4));
  EXPECT_GT(view.y().width(), 0);
}

TEST(PlotView, PansWithinTheValues) {
  PlotView view = ViewOf(0, 100);
  view.ShowX({20, 40});
  view.PanX(0.5);
  ExpectNear(view.x(), 30, 50);
  view.PanX(-100);
  ExpectNear(view.x(), -1, 19);
  view.PanX(100);
  ExpectNear(view.x(), 81, 101);
  EXPECT_TRUE(view.auto_y());
}

TEST(PlotView, KeepsShowingEverythingWhenPanned) {
  PlotView view = ViewOf(0, 100);
  view.PanX(0.5);
  EXPECT_EQ(view.mode(), Mode::kAll);
  ExpectNear(view.x(), -1, 101);
}

TEST(PlotView, FollowsTheEndWithItsWidth) {
  PlotView view = ViewOf(0, 100);
  view.ShowX({20, 40});
  view.Follow(true);
  ExpectNear(view.x(), 81, 101);
  view.SetData({0, 200});
  ExpectNear(view.x(), 182, 202);
  view.ZoomX(0.5, 0);
  ExpectNear(view.x(), 192, 202);
  EXPECT_EQ(view.mode(), Mode::kFollow);
  view.PanX(-1);
  ExpectNear(view.x(), 182, 192);
  EXPECT_EQ(view.mode(), Mode::kFixed);
  view.SetData({0, 300});
  ExpectNear(view.x(), 182, 192);
}

TEST(PlotView, ShowAllUndoesEverything) {
  PlotView view = ViewOf(0, 100);
  view.Show({1, 2}, {3, 4});
  view.ShowAll();
  ExpectNear(view.x(), -1, 101);
  EXPECT_TRUE(view.auto_y());
}

std::string Joined(const std::vector<Tick>& ticks) {
  std::string all;
  for (const Tick& tick : ticks) all += (all.empty() ? "" : " ") + tick.label;
  return all;
}

std::string TickTexts(double from, double to, int most = 6) {
  return Joined(NumberTicks({from, to}, most, ","));
}
std::string Times(double from, double to, int most = 6) { return Joined(TimeTicks({from, to}, most, ",")); }

TEST(NumberTicks, AreAtRoundNumbers) {
  EXPECT_EQ(TickTexts(0, 100), "0 20 40 60 80 100");
  EXPECT_EQ(TickTexts(-1, 1), "-1,0 -0,5 0,0 0,5 1,0");
  EXPECT_EQ(TickTexts(12.3, 12.9), "12,3 12,4 12,5 12,6 12,7 12,8 12,9");
  EXPECT_EQ(TickTexts(3, 4, 3), "3,0 3,5 4,0");
}

TEST(NumberTicks, HaveAsManyDecimalsAsTheStepNeeds) {
  EXPECT_EQ(TickTexts(1000.001, 1000.0035), "1000,0010 1000,0015 1000,0020 1000,0025 1000,0030 1000,0035");
}

TEST(NumberTicks, OfLargeAndSmallNumbersHaveAnExponent) {
  EXPECT_EQ(TickTexts(0, 5e9), "0e+00 1e+09 2e+09 3e+09 4e+09 5e+09");
  EXPECT_EQ(TickTexts(0, 2e-9, 4), "0,0e+00 5,0e-10 1,0e-09 1,5e-09 2,0e-09");
}

TEST(NumberTicks, UseTheGivenDecimalSign) { EXPECT_EQ(Joined(NumberTicks({0, 1}, 2, ".")), "0.0 0.5 1.0"); }

TEST(NumberTicks, AreFewAndWithinTheSpan) {
  std::mt19937 generator(4);
  std::uniform_real_distribution<double> mantissa(-1, 1);
  std::uniform_int_distribution<int> exponent(-290, 290);
  for (int i = 0; i < 20000; ++i) {
    const double from = mantissa(generator) * std::pow(10, exponent(generator));
    const double width = std::max(std::abs(from) * 1e-11, std::pow(10, exponent(generator)));
    const Span span{from, from + width};
    const std::vector<Tick> ticks = NumberTicks(span, 8, ",");
    ASSERT_LE(ticks.size(), 9u) << span.from << ' ' << span.to;
    ASSERT_GE(ticks.size(), 1u) << span.from << ' ' << span.to;
    for (const Tick& tick : ticks) {
      ASSERT_GE(tick.value, span.from - width * 1e-6);
      ASSERT_LE(tick.value, span.to + width * 1e-6);
      ASSERT_LE(tick.label.size(), 24u) << tick.label;
    }
  }
}

TEST(NumberTicks, DifferInTheirLabels) {
  for (const Span& span : {Span{1e6, 1e6 + 1e-5}, Span{0.1, 0.1 + 1e-12}, Span{1e200, 1.0001e200}}) {
    const std::vector<Tick> ticks = NumberTicks(span, 8, ",");
    for (std::size_t i = 1; i < ticks.size(); ++i) EXPECT_NE(ticks[i].label, ticks[i - 1].label);
  }
}

TEST(TimeTicks, AreSecondsAtFirst) {
  EXPECT_EQ(Times(0, 0.01), "0,000 0,002 0,004 0,006 0,008 0,010");
  EXPECT_EQ(Times(0, 10), "0 2 4 6 8 10");
  EXPECT_EQ(Times(0, 60), "0 10 20 30 40 50 60");
}

TEST(TimeTicks, HaveMinutesFromTwoOnAndHoursFromOneOn) {
  EXPECT_EQ(Times(0, 600), "0:00 2:00 4:00 6:00 8:00 10:00");
  EXPECT_EQ(Times(0, 36000, 5), "0:00:00 2:00:00 4:00:00 6:00:00 8:00:00 10:00:00");
  EXPECT_EQ(Times(3600, 3600.4, 4), "1:00:00,0 1:00:00,1 1:00:00,2 1:00:00,3 1:00:00,4");
  EXPECT_EQ(Times(0, 10 * 86400., 5), "0:00:00 48:00:00 96:00:00 144:00:00 192:00:00 240:00:00");
}

TEST(TimeTicks, OfYearsAreWholeDays) { EXPECT_EQ(Times(0, 3e8, 3), "0:00:00 48000:00:00"); }

TEST(DurationText, RoundsIntoTheNextMinuteAndHour) {
  EXPECT_EQ(DurationText(59.96, TimeForm::kMinutes, 1, ","), "1:00,0");
  EXPECT_EQ(DurationText(59.94, TimeForm::kMinutes, 1, ","), "0:59,9");
  EXPECT_EQ(DurationText(3599.999, TimeForm::kHours, 2, "."), "1:00:00.00");
  EXPECT_EQ(DurationText(3723.5, TimeForm::kHours, 3, ","), "1:02:03,500");
  EXPECT_EQ(DurationText(-61, TimeForm::kMinutes, 0, ","), "-1:01");
  EXPECT_EQ(DurationText(-1.5, TimeForm::kSeconds, 1, ","), "-1,5");
}

TEST(NumberText, IsTheShortestOrHasTheGivenNumberOfDigits) {
  EXPECT_EQ(NumberText(0.1, ","), "0,1");
  EXPECT_EQ(NumberText(1e22, ","), "1e+22");
  EXPECT_EQ(NumberText(2.0 / 3, 6, ","), "0,666667");
  EXPECT_EQ(NumberText(1234567890, 6, ","), "1,23457e+09");
}

}  // namespace

}  // namespace kolvane::values
