#include "window/text_printer.h"

#include <QTextLayout>

#include "window/print_page.h"

namespace kolvane::window {
namespace {

constexpr int kTabBlanks = 8;
constexpr int kPalest = 190;
// A line may be as long as an answer; what lays out text keeps some hundred bytes for each character.
constexpr qsizetype kLongestPiece = 8192;

class LinePrinter {
 public:
  LinePrinter(PrintPages& pages, QPagedPaintDevice& device, const PrintStyle& style)
      : pages_(pages), device_(device), font_(style.font), metrics_(font_, &device) {
    const bool pale = style.text.lightness() > kPalest;
    color_ = pale ? QColor(Qt::black) : style.text;
    option_.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option_.setTabStopDistance(kTabBlanks * metrics_.horizontalAdvance(QLatin1Char(' ')));
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
    printer.Print(lines.Line(line));
  }
  return !pages.Failed() && pages.Finish() ? PrintResult::kDone : PrintResult::kFailed;
}

}  // namespace kolvane::window
