#pragma once

#include <cstdint>
#include <string_view>

namespace kolvane::terminal {

/// 24-bit colour, blue-green-red: 255 red, 32768 green, 16711680 blue; 0 as a line's colour means none given.
using Color = std::int32_t;
inline constexpr Color kNoColor = 0;
inline constexpr Color kCommandColor = 255;
inline constexpr Color kCommentColor = 32768;

/// The output pane as the session sees it: a text that grows at its end. Texts are UTF-8.
class Pane {
 public:
  virtual ~Pane() = default;
  /// CR LF and `line` at the end of the text, in `color` (kNoColor: the pane's own); the caret goes past the
  /// end.
  virtual void AppendLine(std::string_view line, Color color) = 0;
  /// `text` as it stands at the end, in the pane's own colour; the caret stands `back` characters before the
  /// end then (a CR LF counts as two).
  virtual void AppendText(std::string_view text, int back) = 0;
  /// Replaces the whole text by the empty one.
  virtual void Clear() = 0;
  /// Called once behind each line: the pane may show what has come.
  virtual void Refresh() = 0;
};

}  // namespace kolvane::terminal
