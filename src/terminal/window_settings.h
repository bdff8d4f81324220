#pragma once

#include <cstdint>
#include <string>

namespace kolvane::terminal {

/// Font and colours of pane or grid; colours are 24-bit, blue-green-red.
struct Look {
  std::string font_name = "Courier New";
  std::int16_t font_size = 10;  ///< points
  bool font_bold = false;
  std::int32_t font_color = 0;
  std::int32_t back_color = 16777215;
};

/// What the window shows and the settings keep besides connection and reception.
struct WindowSettings {
  std::int16_t com_log = 0;
  Look pane;
  Look command_list;
};

}  // namespace kolvane::terminal
