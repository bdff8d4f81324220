#pragma once

#include "help/help_pages.h"

namespace kolvane::window {

/// The help pages as they are written, read once.
inline const help::HelpPages& Pages() {
  static const help::HelpPages pages(KOLVANE_HELP_FOLDER);
  return pages;
}

}  // namespace kolvane::window
