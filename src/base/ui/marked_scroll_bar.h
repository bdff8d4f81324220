#pragma once

#include <QColor>
#include <QScrollBar>
#include <vector>

namespace kolvane::base {

/// A vertical scroll bar with marks beside its handle, for positions in the text.
class MarkedScrollBar final : public QScrollBar {
  Q_OBJECT

 public:
  explicit MarkedScrollBar(QWidget* parent = nullptr) : QScrollBar(Qt::Vertical, parent) {}

  /// Positions from 0 (start) to 1 (end), in any order.
  void SetMarks(const std::vector<double>& positions);
  /// How many marks are distinguishable at the bar's current height.
  int MarkCount() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<double> positions_;
};

/// The background of a search hit on `background`: light on light, dark on dark.
QColor HitBackground(const QColor& background);

}  // namespace kolvane::base
