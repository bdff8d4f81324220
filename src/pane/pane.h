#pragma once

#include <string_view>

#include "kolvane/LineKind.h"

namespace kolvane::pane {

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
  /// More about the line before, where there is no window to show it.
  virtual void Remark(LineKind /*kind*/, std::string_view /*text*/) {}
  /// Called once after each line: the pane may show what has come.
  virtual void Refresh() = 0;
};

}  // namespace kolvane::pane
