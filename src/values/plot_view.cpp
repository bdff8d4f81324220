#include "values/plot_view.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

#include "base/csv.h"

namespace kolvane::values {
namespace {

constexpr double kMarginX = 0.01;
constexpr double kMarginY = 0.05;
constexpr double kLargest = 1e300;  // differences of such numbers are still finite
constexpr double kMinWidth = 1e-6;  // of the x axis
constexpr double kLargestFactor = 1000;
constexpr double kAlmostAll = 1 - 1e-9;
constexpr double kMinHeight = 1e-300;
constexpr double kMinShare = 1e-12;  // of the span's numbers: the limit of their precision

Span Widened(const Span& span, double margin) {
  const double by = span.width() * margin;
  return {span.from - by, span.to + by};
}

// The span, widened if its numbers could not be told apart.
Span Separable(const Span& span, double minimum) {
  const double needed = std::max(minimum, std::max(std::abs(span.from), std::abs(span.to)) * kMinShare);
  if (span.width() >= needed) return span;
  const double middle = span.from + span.width() / 2;
  return {middle - needed / 2, middle + needed / 2};
}

Span Zoomed(const Span& span, double factor, double at) {
  const double width = span.width() * std::clamp(factor, 1 / kLargestFactor, kLargestFactor);
  const double from = span.At(at) - at * width;
  return {from, from + width};
}

}  // namespace

void PlotView::SetData(const Span& data) {
  data_ = data.width() > 0 ? Widened(data, kMarginX) : Span{data.from - 0.5, data.to + 0.5};
  if (mode_ == Mode::kAll) x_ = data_;
  if (mode_ == Mode::kFollow) x_ = {data_.to - x_.width(), data_.to};
}

void PlotView::FitY(const Extent& extent) {
  if (!auto_y_ || extent.empty()) return;
  const double low = std::clamp(extent.minimum, -kLargest, kLargest);
  const double high = std::clamp(extent.maximum, -kLargest, kLargest);
  const double flat = low == 0 ? 1 : std::abs(low);
  PlaceY(Widened(high > low ? Span{low, high} : Span{low - flat, high + flat}, kMarginY));
}

void PlotView::ShowAll() {
  mode_ = Mode::kAll;
  auto_y_ = true;
  x_ = data_;
}

void PlotView::Follow(bool follow) {
  mode_ = follow ? Mode::kFollow : Mode::kFixed;
  if (follow) x_ = {data_.to - x_.width(), data_.to};
}

void PlotView::Show(const Span& x, const Span& y) {
  ShowX(x);
  auto_y_ = false;
  PlaceY(y);
}

void PlotView::ShowX(const Span& x) {
  mode_ = Mode::kFixed;
  PlaceX(x);
}

void PlotView::ZoomX(double factor, double at) {
  if (mode_ == Mode::kFollow) {
    PlaceX(Zoomed(x_, factor, 1));
    return;
  }
  const Span x = Zoomed(x_, factor, at);
  if (x.width() >= data_.width() * kAlmostAll) {
    mode_ = Mode::kAll;
    x_ = data_;
    return;
  }
  ShowX(x);
}

void PlotView::ZoomY(double factor, double at) {
  auto_y_ = false;
  PlaceY(Zoomed(y_, factor, at));
}

void PlotView::PanX(double part) {
  if (mode_ == Mode::kAll) return;
  const double by = x_.width() * part;
  ShowX({x_.from + by, x_.to + by});
}

void PlotView::PanY(double part) {
  const double by = y_.width() * part;
  auto_y_ = false;
  PlaceY({y_.from + by, y_.to + by});
}

// No wider than everything, and never so far away that nothing is left to see.
void PlotView::PlaceX(Span x) {
  const double width = std::min(x.width(), data_.width());
  x = Separable({x.from, x.from + width}, kMinWidth);
  const double from = std::clamp(x.from, data_.from, std::max(data_.from, data_.to - x.width()));
  x_ = {from, from + x.width()};
}

void PlotView::PlaceY(Span y) {
  y = Separable(y, kMinHeight);
  y_ = {std::clamp(y.from, -2 * kLargest, kLargest), std::clamp(y.to, -kLargest, 2 * kLargest)};
}

namespace {

constexpr double kMinute = 60;
constexpr double kHour = 3600;
constexpr int kMaxDecimals = 12;
constexpr int kMaxDigits = 16;         // after the point of a number with an exponent
constexpr double kLargestPlain = 1e7;  // larger numbers are written with an exponent
constexpr double kSmallestPlainStep = 1e-6;
constexpr std::array kTimeSteps = {1.,     2.,     5.,     10.,    15.,     30.,     60.,
                                   120.,   300.,   600.,   900.,   1800.,   3600.,   7200.,
                                   10800., 21600., 43200., 86400., 172800., 432000., 864000.};

std::string WithSign(std::string text, const std::string& decimal_sign) {
  if (const std::size_t point = text.find('.'); point != std::string::npos)
    text.replace(point, 1, decimal_sign);
  return text;
}

std::string Formatted(double value, std::chars_format format, int precision) {
  std::array<char, 400> text;  // a fixed number may have 309 digits
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, format, precision).ptr;
  return {text.data(), end};
}

// The smallest of 1, 2, 5, 10, 20, ... and their fractions that is not below `minimum`.
double RoundStep(double minimum) {
  const double power = std::pow(10, std::floor(std::log10(minimum)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= minimum * (1 - 1e-9)) return factor * power;
  }
  return 10 * power;
}

int DecimalsOf(double step) {
  return std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-9)), 0, kMaxDecimals);
}

template <typename Label>
std::vector<Tick> TicksAt(double step, const Span& span, Label label) {
  std::vector<Tick> ticks;
  const double first = std::ceil(span.from / step - 1e-9);
  for (double n = first; n * step <= span.to + step * 1e-9; ++n) {
    const double value = n * step;
    ticks.push_back({value, label(value == 0 ? 0.0 : value)});
    if (n + 1 == n) break;
  }
  return ticks;
}

double TimeStep(double minimum) {
  if (minimum <= kTimeSteps.front() / 2) return RoundStep(minimum);
  for (const double step : kTimeSteps) {
    if (step >= minimum) return step;
  }
  constexpr double kDay = 86400;
  return RoundStep(minimum / kDay) * kDay;
}

std::string TwoDigits(std::int64_t number) { return (number < 10 ? "0" : "") + std::to_string(number); }

}  // namespace

std::vector<Tick> NumberTicks(const Span& span, int maximum, const std::string& decimal_sign) {
  const double step = RoundStep(span.width() / std::max(1, maximum));
  const double largest = std::max(std::abs(span.from), std::abs(span.to));
  if (largest < kLargestPlain && step >= kSmallestPlainStep) {
    const int decimals = DecimalsOf(step);
    return TicksAt(step, span, [&](double value) {
      return WithSign(Formatted(value, std::chars_format::fixed, decimals), decimal_sign);
    });
  }
  const int digits = static_cast<int>(std::floor(std::log10(largest)) - std::floor(std::log10(step)));
  return TicksAt(step, span, [&](double value) {
    return WithSign(Formatted(value, std::chars_format::scientific, std::clamp(digits, 0, kMaxDigits)),
                    decimal_sign);
  });
}

TimeForm TimeFormOf(const Span& span) {
  const double largest = std::max(std::abs(span.from), std::abs(span.to));
  if (largest >= kHour) return TimeForm::kHours;
  return largest >= 2 * kMinute ? TimeForm::kMinutes : TimeForm::kSeconds;
}

std::vector<Tick> TimeTicks(const Span& span, int maximum, const std::string& decimal_sign) {
  const double step = TimeStep(span.width() / std::max(1, maximum));
  const TimeForm form = TimeFormOf(span);
  return TicksAt(step, span,
                 [&](double value) { return DurationText(value, form, DecimalsOf(step), decimal_sign); });
}

std::string DurationText(double seconds, TimeForm form, int decimals, const std::string& decimal_sign) {
  if (form == TimeForm::kSeconds)
    return WithSign(Formatted(seconds, std::chars_format::fixed, decimals), decimal_sign);
  const std::string sign = seconds < 0 ? "-" : "";
  // Rounded first, so that the seconds never show as 60.
  const double unit = std::pow(10, -decimals);
  const double rounded = std::round(std::abs(seconds) / unit) * unit;
  const auto minutes = static_cast<std::int64_t>((rounded + unit / 2) / kMinute);
  const double rest = std::max(0.0, rounded - static_cast<double>(minutes) * kMinute);
  std::string text = WithSign(Formatted(rest, std::chars_format::fixed, decimals), decimal_sign);
  if (rest + unit / 2 < 10) text.insert(0, 1, '0');
  if (form == TimeForm::kMinutes) return sign + std::to_string(minutes) + ':' + text;
  return sign + std::to_string(minutes / 60) + ':' + TwoDigits(minutes % 60) + ':' + text;
}

std::string NumberText(double value, const std::string& decimal_sign) {
  std::string text;
  base::AppendCsvNumber(value, '.', text);
  return WithSign(std::move(text), decimal_sign);
}

std::string NumberText(double value, int digits, const std::string& decimal_sign) {
  return WithSign(Formatted(value, std::chars_format::general, digits), decimal_sign);
}

}  // namespace kolvane::values
