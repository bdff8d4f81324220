#pragma once

#include "terminal/pane.h"

namespace kolvane::script {

using terminal::Color;

/// How a row's cell stands out.
struct Highlight {
  Color back = 0;
  Color fore = 0;
  bool bold = false;
  bool operator==(const Highlight&) const = default;
};

inline constexpr Highlight kRunningRow = {0xFF0000, 0xFFFF, true};  ///< yellow on blue
inline constexpr Highlight kErrorRow = {0xFF, 0xFFFFFF, true};      ///< white on red

namespace syntax_color {
inline constexpr Color kSpecialCommand = 0xFF0000;  ///< the row begins with "$"
inline constexpr Color kComment = 0x008000;         ///< with "'"
inline constexpr Color kColon = 0x0000FF;  ///< with ":"; a label, which ends in one, looks like a command
}  // namespace syntax_color

}  // namespace kolvane::script
