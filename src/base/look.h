#pragma once

#include <cstdint>
#include <string>

namespace kolvane::base {

/// 24-bit colour, blue-green-red: 255 red, 32768 green, 16711680 blue; 0 as a line's colour means none given.
using Color = std::int32_t;
inline constexpr Color kNoColor = 0;
inline constexpr Color kCommandColor = 255;
inline constexpr Color kCommentColor = 32768;

/// Added to a colour in the pane's text: bold. Without a colour, bold in the pane's own colour.
inline constexpr Color kBold = 1 << 24;
constexpr bool IsBold(Color color) { return (color & kBold) != 0; }
constexpr Color WithoutBold(Color color) { return color & ~kBold; }

/// Font and colours of a pane or grid; colours are 24-bit, blue-green-red.
struct Look {
  std::string font_name = "Courier New";
  std::int16_t font_size = 10;  ///< points
  bool font_bold = false;
  std::int32_t font_color = 0;
  std::int32_t back_color = 16777215;
};

}  // namespace kolvane::base
