#pragma once

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QString>

namespace kolvane::window {

/// The pages of a print-out one after the other, each with its head and foot. Measures are the device's
/// pixels.
class PrintPages {
 public:
  /// Check Failed() afterwards.
  PrintPages(QPagedPaintDevice& device, const QString& caption);

  /// Where a row of this height goes, on a further page where this one is full.
  qreal PlaceRow(qreal height);

  qreal width() const { return device_.width(); }
  QPainter& painter() { return painter_; }
  /// Whether what goes on this page is printed.
  bool IsPrinted() const { return printed_; }
  /// Whether no page is left that is printed.
  bool IsPastLast() const;
  bool Failed() const { return failed_; }
  /// Ends the print-out; false where the device reports a failure.
  bool Finish() { return painter_.end(); }

 private:
  void Begin();
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

}  // namespace kolvane::window
