#pragma once

#include <string>
#include <vector>

#include "values/column.h"

namespace kolvane::values {

/// A piece of an axis.
struct Span {
  double from = 0;
  double to = 1;

  double width() const { return to - from; }
  bool Holds(double value) const { return value >= from && value <= to; }
  /// Where `value` stands: 0 at the beginning, 1 at the end.
  double FractionOf(double value) const { return (value - from) / width(); }
  double At(double fraction) const { return from + fraction * width(); }
  bool operator==(const Span&) const = default;
};

/// The part of the values that a plot shows, and how it changes while values come: it holds everything, or
/// keeps its width and stands at the end, or stays where the user has put it.
class PlotView {
 public:
  enum class Mode { kAll, kFollow, kFixed };

  const Span& x() const { return x_; }
  const Span& y() const { return y_; }
  Mode mode() const { return mode_; }
  /// Whether the y axis suits itself to what is shown.
  bool auto_y() const { return auto_y_; }

  /// How far the values reach on the x axis now.
  void SetData(const Span& data);
  /// The extent of the values shown, where the y axis suits itself to them.
  void SuitY(const Extent& extent);

  void ShowAll();
  void Follow(bool follow);
  void SetAutoY(bool on) { auto_y_ = on; }
  /// Shows this piece; its y axis holds from now on.
  void Show(const Span& x, const Span& y);
  /// Shows this piece of the x axis.
  void ShowX(const Span& x);

  /// Makes the piece shown `factor` times as wide; what stands at `at`, 0 to 1, stays there.
  void ZoomX(double factor, double at);
  void ZoomY(double factor, double at);
  /// Moves by a part of what is shown; positive: towards later and larger values. There
  /// is nowhere to go on the x axis while everything is shown.
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

/// The form in which TimeTicks writes its labels.
enum class TimeForm { kSeconds, kMinutes, kHours };

/// At most `most` ticks (at least two are aimed for) at round numbers within `span`; `decimal_sign` is a
/// character.
std::vector<Tick> NumberTicks(const Span& span, int most, const std::string& decimal_sign);

/// The same for seconds, at round times: "12,5", from two minutes on "3:30", from an hour on "1:03:30".
std::vector<Tick> TimeTicks(const Span& span, int most, const std::string& decimal_sign);
TimeForm TimeFormOf(const Span& span);

/// Seconds as TimeTicks writes them, with so many decimals.
std::string DurationText(double seconds, TimeForm form, int decimals, const std::string& decimal_sign);

/// A number as tables and readings show it, its shortest form.
std::string NumberText(double value, const std::string& decimal_sign);
/// The same with at most `digits` significant digits.
std::string NumberText(double value, int digits, const std::string& decimal_sign);

}  // namespace kolvane::values
