#pragma once

#include <string>

#include "terminal/pane_text.h"
#include "window/progress.h"

namespace kolvane::window {

/// Reads the text file `name` into `text`, which is empty, piece by piece. Returns 0, an errno, or ECANCELED
/// where `step` ended it; `text` holds what has been read until then. Only regular files are read.
[[nodiscard]] int ReadTextFile(const std::string& name, terminal::PaneText& text, const ProgressStep& step);

}  // namespace kolvane::window
