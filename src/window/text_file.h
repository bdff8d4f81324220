#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "pane/pane_text.h"
#include "window/progress.h"

namespace kolvane::window {

/// Converts a text file, read in pieces, to UTF-8: from Windows-1252, or from UTF-8 if the file begins with a
/// byte order mark, which is stripped. No piece returned ends within a character or within a CR LF.
class TextDecoder {
 public:
  /// The first piece must not end within the mark.
  std::string Decode(std::string_view bytes);
  /// Returns what was held back; to be called after the last piece.
  std::string Finish();

 private:
  std::size_t Complete() const;

  std::string pending_;
  bool started_ = false;
  bool utf8_ = false;
};

/// Reads the text file `name` in pieces into `text`, which must be empty. Returns 0, an errno, or ECANCELED
/// if `step` ended it; `text` then holds what has been read. Only regular files are read.
[[nodiscard]] int ReadTextFile(const std::string& name, pane::PaneText& text, const ProgressStep& step);

}  // namespace kolvane::window
