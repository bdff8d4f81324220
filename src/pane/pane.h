#pragma once

#include <string_view>

#include "kolvane/LineKind.h"

namespace kolvane::pane {

/// The output pane as seen by the session: a text that grows at its end. Texts are UTF-8.
class Pane {
 public:
  virtual ~Pane() = default;
  /// Appends CR LF and `line`; the caret goes to the end.
  virtual void AppendLine(LineKind kind, std::string_view line) = 0;
  /// Appends `text` unchanged; the caret is then `back` characters before the end (a CR LF counts as two).
  virtual void AppendText(LineKind kind, std::string_view text, int back) = 0;
  /// Removes the whole text.
  virtual void Clear() = 0;
  /// More about the previous line, for use without a window.
  virtual void Remark(LineKind /*kind*/, std::string_view /*text*/) {}
  /// Called once after each line: the pane may show new text.
  virtual void Refresh() = 0;
};

}  // namespace kolvane::pane
