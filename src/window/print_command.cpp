#include "window/print_command.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include "base/replace_file.h"
#include "window/file_dialogs.h"
#include "window/text.h"
#include "window/text_printer.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr QMarginsF kMargins(15, 15, 15, 15);

// Calls `cancelled` while the print-out is not ended yet.
void PrintOn(QPagedPaintDevice& device, QWidget* window, base::Prompt& prompt, const PrintStyle& style,
             const PrintSource& lines, const std::function<void()>& cancelled) {
  Progress progress(window, ToQt(texts::kPrinting));
  const PrintResult result = PrintText(device, style, lines, [&](std::size_t done, std::size_t whole) {
    if (progress.Advance(done, whole)) return true;
    cancelled();
    return false;
  });
  if (result == PrintResult::kFailed) prompt.ShowError(texts::kNotPrinted);
}

// Makes a PDF file of what `print` puts on its pages, none where that returns false.
void PrintToFile(QWidget* window, base::Prompt& prompt, const QString& title,
                 const std::function<bool(QPdfWriter&)>& print) {
  const auto name = AskSaveName(window, SaveMode::kPdf);
  if (!name) return;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter pages(&buffer);
    pages.setTitle(title);
    pages.setCreator(ToQt(texts::kProgram));
    pages.setPageMargins(kMargins, QPageLayout::Millimeter);
    if (!print(pages)) return;
  }
  const std::string_view whole(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  if (const int error = base::ReplaceFile(*name, whole)) prompt.ShowError(texts::NotWritten(*name, error));
}

void SetUp(QPrinter& printer) {
  // Not the caption: a printer that is a file makes its name of this, and a connection holds slashes.
  printer.setDocName(ToQt(texts::kProgram));
  printer.setPageMargins(kMargins, QPageLayout::Millimeter);
}

void PrintOnPrinter(QWidget* window, base::Prompt& prompt, const PrintStyle& style, const PrintSource& lines,
                    const PrintSource* selection) {
  QPrinter printer(QPrinter::HighResolution);
  SetUp(printer);
  QPrintDialog dialog(&printer, window);
  dialog.setObjectName(QStringLiteral("PrintDialog"));
  dialog.setOption(QAbstractPrintDialog::PrintSelection, selection != nullptr);
  if (dialog.exec() != QDialog::Accepted) return;
  const bool only_selection = selection != nullptr && dialog.printRange() == QAbstractPrintDialog::Selection;
  PrintOn(printer, window, prompt, style, only_selection ? *selection : lines,
          [&printer] { printer.abort(); });
}

}  // namespace

void PrintLines(QWidget* window, base::Prompt& prompt, const PrintStyle& style, const PrintSource& lines,
                const PrintSource* selection) {
  if (QPrinterInfo::availablePrinterNames().isEmpty()) {
    PrintToFile(window, prompt, style.caption, [&](QPdfWriter& pages) {
      bool cancelled = false;
      PrintOn(pages, window, prompt, style, lines, [&cancelled] { cancelled = true; });
      return !cancelled;
    });
  } else {
    PrintOnPrinter(window, prompt, style, lines, selection);
  }
}

void PrintDocument(QWidget* window, base::Prompt& prompt, const QString& title,
                   const QTextDocument& document) {
  if (QPrinterInfo::availablePrinterNames().isEmpty()) {
    return PrintToFile(window, prompt, title, [&document](QPdfWriter& pages) {
      document.print(&pages);
      return true;
    });
  }
  QPrinter printer(QPrinter::HighResolution);
  SetUp(printer);
  QPrintDialog dialog(&printer, window);
  dialog.setObjectName(QStringLiteral("PrintDialog"));
  if (dialog.exec() == QDialog::Accepted) document.print(&printer);
}

}  // namespace kolvane::window
