#pragma once

#include <QColor>
#include <QScrollBar>
#include <vector>

namespace kolvane::base {

/// A vertical scroll bar with marks beside its handle, for places in the text.
class MarkedScrollBar final : public QScrollBar {
  Q_OBJECT

 public:
  explicit MarkedScrollBar(QWidget* parent = nullptr) : QScrollBar(Qt::Vertical, parent) {}

  /// From 0 for the begin to 1 for the end, in any order.
  void SetMarks(const std::vector<double>& places);
  /// How many can be told apart at the height that the bar has.
  int MarkCount() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<double> places_;
};

/// The ground of a hit of a search on `ground`: light on light, dark on dark.
QColor HitGround(const QColor& ground);

}  // namespace kolvane::base
