#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QString>
#include <cstddef>
#include <vector>

#include "pane/pane_store.h"

namespace kolvane::window {

/// UTF-16 units [begin, begin + length) of a line with their own look.
struct PrintRun {
  int begin;
  int length;
  QColor color;  ///< invalid: the text's own
  bool bold = false;
};

/// One line of text to print; parts outside the runs look like the text itself.
struct PrintLine {
  QString text;
  std::vector<PrintRun> runs;
};

/// Lines to print. Their number may decrease during printing.
class PrintSource {
 public:
  virtual ~PrintSource() = default;
  virtual std::size_t LineCount() const = 0;
  virtual PrintLine Line(std::size_t line) const = 0;
};

/// How lines are printed.
struct PrintStyle {
  QString caption;  ///< on top of each page
  QFont font;
  QColor text;  ///< the text's own colour; one too pale for paper becomes black
};

/// The pages of a print-out one after the other, each with its head and foot. Measures are in device pixels.
class PrintPages {
 public:
  /// Check Failed() afterwards.
  PrintPages(QPagedPaintDevice& device, const QString& caption);

  /// The position of the next row, of this height; begins a new page if this one is full.
  qreal PlaceRow(qreal height);

  qreal width() const { return device_.width(); }
  QPainter& painter() { return painter_; }
  /// Whether this page is printed.
  bool IsPrinted() const { return printed_; }
  /// Whether this page is after the last one to be printed.
  bool IsPastLast() const;
  bool Failed() const { return failed_; }
  /// Ends the print-out; returns false if the device reports a failure.
  bool Finish() { return painter_.end(); }

 private:
  void Start();
  qreal HeadHeight() const;
  void PaintHead();
  void PaintFoot();

  QPagedPaintDevice& device_;
  QPainter painter_;
  QFont font_;
  QFontMetricsF metrics_;
  QString caption_;
  QString date_;
  int page_ = 0;
  qreal y_ = 0;
  bool printed_ = false;
  bool any_printed_ = false;
  bool failed_;
};

/// A range of the pane's text as lines to print. Control characters are printed as the pane shows them.
class PaneLines final : public PrintSource {
 public:
  PaneLines(const pane::PaneStore& store, pane::PaneRange range);

  std::size_t LineCount() const override;
  PrintLine Line(std::size_t line) const override;

 private:
  const pane::PaneStore& store_;
  pane::PaneRange range_;
  std::size_t first_;
  std::size_t count_;
};

}  // namespace kolvane::window
