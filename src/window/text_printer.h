#pragma once

#include <QPagedPaintDevice>

#include "window/print_source.h"
#include "window/progress.h"

namespace kolvane::window {

enum class PrintResult { kDone, kCancelled, kFailed };

/// Prints `lines` on the pages of `device`, a printer or a PDF file: wrapped at the page's edge, with
/// caption, date and page number on each page. Pages outside the device's page ranges are left out. The
/// page's size and margins are the device's.
PrintResult PrintText(QPagedPaintDevice& device, const PrintStyle& style, const PrintSource& lines,
                      const ProgressStep& step);

}  // namespace kolvane::window
