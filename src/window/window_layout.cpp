#include "window/window_layout.h"

#include <cmath>

namespace kolvane::window {
namespace {

constexpr double kSmallestWidth = 2000 / kUnitsPerPixel;
constexpr double kSmallestHeight = 4000 / kUnitsPerPixel;
constexpr double kSplitGap = 50 / kUnitsPerPixel;
constexpr double kBottomGap = 25 / kUnitsPerPixel;
constexpr double kCommandGap = 100 / kUnitsPerPixel;
constexpr double kSendGap = 50 / kUnitsPerPixel;

int Pixels(double value) { return static_cast<int>(std::lround(value)); }

}  // namespace

WindowLayout LayOut(const LayoutInput& in) {
  WindowLayout out;
  out.applies = in.inner_width >= kSmallestWidth && in.inner_height >= kSmallestHeight;
  if (!out.applies) return out;
  out.split_width = Pixels(in.inner_width - in.split_left - kSplitGap - in.toolbar3_width);
  out.split_height = Pixels(in.inner_height - in.split_top - in.toolbar2_height - in.status1_height -
                            in.status2_height - kBottomGap);
  out.command_width = Pixels(out.split_width - in.send_width - kCommandGap);
  out.send_left = Pixels(in.command_left + out.command_width + kSendGap);
  out.toolbar3_left = Pixels(in.split_left + out.split_width + kSplitGap);
  return out;
}

}  // namespace kolvane::window
