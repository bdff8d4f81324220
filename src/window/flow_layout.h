#pragma once

#include <QLayout>
#include <QList>

namespace kolvane::window {

/// Lays out its items from left to right, continuing in a further row where the width ends.
class FlowLayout final : public QLayout {
 public:
  explicit FlowLayout(QWidget* parent, int horizontal_gap, int vertical_gap);
  ~FlowLayout() override;

  void addItem(QLayoutItem* item) override { items_.append(item); }
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override { return items_.value(index); }
  QLayoutItem* takeAt(int index) override;
  Qt::Orientations expandingDirections() const override { return {}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override { return Arrange(QRect(0, 0, width, 0), false); }
  QSize minimumSize() const override;
  QSize sizeHint() const override;
  void setGeometry(const QRect& rect) override;

 private:
  /// Places the visible items within `rect`, or only measures (`apply` false). Returns their total height.
  int Arrange(const QRect& rect, bool apply) const;

  QList<QLayoutItem*> items_;
  int horizontal_gap_;
  int vertical_gap_;
};

}  // namespace kolvane::window
