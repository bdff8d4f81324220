#pragma once

namespace kolvane::window {

/// Fixed measures are kept in units of which 15 are one device-independent pixel.
inline constexpr double kUnitsPerPixel = 15;

/// What the layout of the window's inner area depends on, in device-independent pixels.
struct LayoutInput {
  int inner_width = 0;
  int inner_height = 0;
  int split_left = 0;
  int split_top = 0;
  int toolbar2_height = 0;
  int toolbar3_width = 0;
  int status1_height = 0;
  int status2_height = 0;
  int command_left = 0;
  int send_width = 0;
};

/// Sizes and edges that follow from it.
struct WindowLayout {
  bool applies = false;  ///< false below 2000 by 4000 units: everything stays where it is
  int split_width = 0;
  int split_height = 0;
  int command_width = 0;
  int send_left = 0;
  int toolbar3_left = 0;
};

WindowLayout LayOut(const LayoutInput& input);

}  // namespace kolvane::window
