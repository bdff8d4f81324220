#pragma once

#include "help/help_pages.h"

namespace kolvane::window {

/// The source files of the help pages, read once.
inline const help::HelpPages& Pages() {
  static const help::HelpPages pages(KOLVANE_HELP_FOLDER);
  return pages;
}

}  // namespace kolvane::window
