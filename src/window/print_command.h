#pragma once

#include <QTextDocument>
#include <QWidget>

#include "base/prompt.h"
#include "window/print_source.h"

namespace kolvane::window {

/// Prints `lines`, or `selection` where the user wants that, after asking for the printer; `selection` may be
/// null. Where there is no printer it asks for the name of a PDF file, which is written whole or not at all.
/// A failure is shown.
void PrintLines(QWidget* window, base::Prompt& prompt, const PrintStyle& style, const PrintSource& lines,
                const PrintSource* selection = nullptr);

/// The same with a formatted text, whose print-out is called `title`.
void PrintDocument(QWidget* window, base::Prompt& prompt, const QString& title,
                   const QTextDocument& document);

}  // namespace kolvane::window
