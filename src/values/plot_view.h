#pragma once

#include <string>
#include <vector>

#include "values/column.h"

namespace kolvane::values {

/// A range on an axis.
struct Span {
  double from = 0;
  double to = 1;

  double width() const { return to - from; }
  bool Holds(double value) const { return value >= from && value <= to; }
  /// The relative position of `value`: 0 at the start, 1 at the end.
  double FractionOf(double value) const { return (value - from) / width(); }
  double At(double fraction) const { return from + fraction * width(); }
  bool operator==(const Span&) const = default;
};

/// The part of the values that a plot shows, and how it changes as values arrive: it shows everything, or
/// keeps its width and follows the end, or stays where the user has put it.
class PlotView {
 public:
  enum class Mode { kAll, kFollow, kFixed };

  const Span& x() const { return x_; }
  const Span& y() const { return y_; }
  Mode mode() const { return mode_; }
  /// Whether the y axis scales itself to the values shown.
  bool auto_y() const { return auto_y_; }

  /// Sets the current range of the values on the x axis.
  void SetData(const Span& data);
  /// Scales the y axis to the values shown, if it scales itself.
  void FitY(const Extent& extent);

  void ShowAll();
  void Follow(bool follow);
  void SetAutoY(bool on) { auto_y_ = on; }
  /// Shows this range; the y axis keeps it from now on.
  void Show(const Span& x, const Span& y);
  /// Shows this range of the x axis.
  void ShowX(const Span& x);

  /// Makes the range `factor` times as wide; the position `at`, 0 to 1, stays (kFollow: the end does).
  void ZoomX(double factor, double at);
  void ZoomY(double factor, double at);
  /// Moves by a fraction of the range shown; positive: to later and larger values. PanX does nothing while
  /// everything is shown.
  void PanX(double part);
  void PanY(double part);

 private:
  void PlaceX(Span x);
  void PlaceY(Span y);

  Span data_;
  Span x_;
  Span y_;
  Mode mode_ = Mode::kAll;
  bool auto_y_ = true;
};

struct Tick {
  double value;
  std::string label;
};

/// The format of TimeTicks' labels.
enum class TimeForm { kSeconds, kMinutes, kHours };

/// At most `maximum` ticks (but aiming for at least two) at round numbers within `span`; `decimal_sign` is
/// one character.
std::vector<Tick> NumberTicks(const Span& span, int maximum, const std::string& decimal_sign);

/// As NumberTicks for seconds, at round times: "12,5", from two minutes "3:30", from an hour "1:03:30".
std::vector<Tick> TimeTicks(const Span& span, int maximum, const std::string& decimal_sign);
TimeForm TimeFormOf(const Span& span);

/// Seconds in the format of TimeTicks, with this number of decimals.
std::string DurationText(double seconds, TimeForm form, int decimals, const std::string& decimal_sign);

/// A number in its shortest form, as tables show it.
std::string NumberText(double value, const std::string& decimal_sign);
/// The same with at most `digits` significant digits.
std::string NumberText(double value, int digits, const std::string& decimal_sign);

}  // namespace kolvane::values
