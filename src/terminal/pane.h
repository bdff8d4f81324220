#pragma once

#include <cstdint>
#include <string_view>

#include "kolvane/LineKind.h"

namespace kolvane::terminal {

/// 24-bit colour, blue-green-red: 255 red, 32768 green, 16711680 blue; 0 as a line's colour means none given.
using Color = std::int32_t;
inline constexpr Color kNoColor = 0;
inline constexpr Color kCommandColor = 255;
inline constexpr Color kCommentColor = 32768;

/// Added to a colour in the pane's text: bold. By itself it is bold in the pane's own colour.
inline constexpr Color kBold = 1 << 24;
constexpr bool IsBold(Color color) { return (color & kBold) != 0; }
constexpr Color WithoutBold(Color color) { return color & ~kBold; }

/// The output pane as the session sees it: a text that grows at its end. Texts are UTF-8.
class Pane {
 public:
  virtual ~Pane() = default;
  /// CR LF and `line` at the end of the text; the caret goes past the end.
  virtual void AppendLine(LineKind kind, std::string_view line) = 0;
  /// `text` as it stands at the end; the caret is then `back` characters before the end (a CR LF counts as
  /// two).
  virtual void AppendText(LineKind kind, std::string_view text, int back) = 0;
  /// Replaces the whole text by the empty one.
  virtual void Clear() = 0;
  /// Called once after each line: the pane may show what has come.
  virtual void Refresh() = 0;
};

}  // namespace kolvane::terminal
