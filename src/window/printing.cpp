#include "window/printing.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QTextLayout>

#include "base/files.h"
#include "base/ui/qt_text.h"
#include "window/file_dialogs.h"
#include "window/print_page.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr int kTabSpaces = 8;
constexpr int kPalest = 190;
// A line may be as long as an answer; text layout takes some hundred bytes for each character.
constexpr qsizetype kLongestPiece = 8192;

class LinePrinter {
 public:
  LinePrinter(PrintPages& pages, QPagedPaintDevice& device, const PrintStyle& style)
      : pages_(pages), device_(device), font_(style.font), metrics_(font_, &device) {
    const bool pale = style.text.lightness() > kPalest;
    color_ = pale ? QColor(Qt::black) : style.text;
    option_.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option_.setTabStopDistance(kTabSpaces * metrics_.horizontalAdvance(QLatin1Char(' ')));
  }

  void Print(const PrintLine& line) {
    qsizetype begin = 0;
    do {
      const qsizetype end = EndOfPiece(line.text, begin);
      PrintPiece(line, begin, end);
      begin = end;
    } while (begin < line.text.size());
  }

 private:
  static qsizetype EndOfPiece(const QString& text, qsizetype begin) {
    if (text.size() - begin <= kLongestPiece) return text.size();
    const qsizetype end = begin + kLongestPiece;
    return text[end].isLowSurrogate() ? end - 1 : end;
  }

  void PrintPiece(const PrintLine& line, qsizetype begin, qsizetype end) {
    QTextLayout layout(line.text.mid(begin, end - begin), font_, &device_);
    layout.setTextOption(option_);
    layout.setFormats(Formats(line, static_cast<int>(begin), static_cast<int>(end)));
    layout.beginLayout();
    for (QTextLine row = layout.createLine(); row.isValid(); row = layout.createLine()) {
      row.setLineWidth(pages_.width());
    }
    layout.endLayout();
    for (int row = 0; row < layout.lineCount(); ++row) PrintRow(layout.lineAt(row));
  }

  void PrintRow(const QTextLine& row) {
    const qreal y = pages_.PlaceRow(metrics_.lineSpacing());
    if (!pages_.IsPrinted()) return;
    pages_.painter().setPen(color_);
    row.draw(&pages_.painter(), QPointF(0, y));
  }

  static QList<QTextLayout::FormatRange> Formats(const PrintLine& line, int begin, int end) {
    QList<QTextLayout::FormatRange> formats;
    for (const PrintRun& run : line.runs) {
      const int from = std::max(run.begin, begin);
      const int to = std::min(run.begin + run.length, end);
      if (from >= to) continue;
      QTextCharFormat format;
      if (run.color.isValid()) format.setForeground(run.color);
      if (run.bold) format.setFontWeight(QFont::Bold);
      formats.append({from - begin, to - from, format});
    }
    return formats;
  }

  PrintPages& pages_;
  QPagedPaintDevice& device_;
  QFont font_;
  QFontMetricsF metrics_;
  QColor color_;
  QTextOption option_;
};

}  // namespace

PrintResult PrintText(QPagedPaintDevice& device, const PrintStyle& style, const PrintSource& lines,
                      const ProgressStep& step) {
  PrintPages pages(device, style.caption);
  LinePrinter printer(pages, device, style);
  for (std::size_t line = 0; line < lines.LineCount(); ++line) {
    if (pages.Failed()) return PrintResult::kFailed;
    if (pages.IsPastLast()) break;
    if (!step(line, lines.LineCount())) return PrintResult::kCancelled;
    // A step serves events, which may have removed lines.
    if (line >= lines.LineCount()) break;
    printer.Print(lines.Line(line));
  }
  return !pages.Failed() && pages.Finish() ? PrintResult::kDone : PrintResult::kFailed;
}

// QTextDocument reports no failure itself.
bool PrintFormatted(QPrinter& printer, const QTextDocument& document) {
  document.print(&printer);
  return printer.printerState() != QPrinter::Error;
}

namespace {

constexpr QMarginsF kMargins(15, 15, 15, 15);

// Returns whether everything was printed; a failure is shown. Calls `cancelled` before the print-out is
// ended.
bool PrintOn(QPagedPaintDevice& device, QWidget* window, base::Prompt& prompt, const PrintStyle& style,
             const PrintSource& lines, const std::function<void()>& cancelled) {
  Progress progress(window, base::ToQt(texts::kPrinting));
  const PrintResult result = PrintText(device, style, lines, [&](std::size_t done, std::size_t whole) {
    if (progress.Advance(done, whole)) return true;
    cancelled();
    return false;
  });
  if (result == PrintResult::kFailed) prompt.ShowError(texts::kNotPrinted);
  return result == PrintResult::kDone;
}

// Makes a PDF file of what `print` puts on its pages; no file if that returns false.
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
    pages.setCreator(base::ToQt(texts::kProgram));
    pages.setPageMargins(kMargins, QPageLayout::Millimeter);
    if (!print(pages)) return;
  }
  const std::string_view whole(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  if (const int error = base::ReplaceFile(*name, whole)) prompt.ShowError(texts::NotWritten(*name, error));
}

void SetUp(QPrinter& printer) {
  // Not the caption: a printer that prints to a file names it after this, and a connection contains slashes.
  printer.setDocName(base::ToQt(texts::kProgram));
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
    PrintToFile(window, prompt, style.caption,
                [&](QPdfWriter& pages) { return PrintOn(pages, window, prompt, style, lines, [] {}); });
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
  if (dialog.exec() == QDialog::Accepted && !PrintFormatted(printer, document))
    prompt.ShowError(texts::kNotPrinted);
}

}  // namespace kolvane::window
