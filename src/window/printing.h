#pragma once

#include <QPagedPaintDevice>
#include <QPrinter>
#include <QTextDocument>
#include <QWidget>

#include "base/prompt.h"
#include "window/print_page.h"
#include "window/progress.h"

namespace kolvane::window {

enum class PrintResult { kDone, kCancelled, kFailed };

/// Prints `lines` on the pages of `device`, a printer or a PDF file: wrapped at the page's edge, with
/// caption, date and page number on each page. Pages outside the device's page ranges are left out. The
/// page's size and margins are the device's.
PrintResult PrintText(QPagedPaintDevice& device, const PrintStyle& style, const PrintSource& lines,
                      const ProgressStep& step);

/// Prints a formatted text. False if the printer does not accept it.
[[nodiscard]] bool PrintFormatted(QPrinter& printer, const QTextDocument& document);

/// Asks for the printer, then prints `lines`, or `selection` if the user wants that; `selection` may be null.
/// Without a printer it asks for the name of a PDF file, which is written whole or not at all. A failure is
/// shown.
void PrintLines(QWidget* window, base::Prompt& prompt, const PrintStyle& style, const PrintSource& lines,
                const PrintSource* selection = nullptr);

/// The same for a formatted text; `title` is the name of the print-out.
void PrintDocument(QWidget* window, base::Prompt& prompt, const QString& title,
                   const QTextDocument& document);

}  // namespace kolvane::window
