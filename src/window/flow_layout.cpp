#include "window/flow_layout.h"

#include <QWidget>

namespace kolvane::window {

FlowLayout::FlowLayout(QWidget* parent, int horizontal_gap, int vertical_gap)
    : QLayout(parent), horizontal_gap_(horizontal_gap), vertical_gap_(vertical_gap) {
  setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() { qDeleteAll(items_); }

QLayoutItem* FlowLayout::takeAt(int index) {
  return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const QLayoutItem* item : items_) size = size.expandedTo(item->minimumSize());
  return size.grownBy(contentsMargins());
}

QSize FlowLayout::sizeHint() const {
  QSize size;
  for (const QLayoutItem* item : items_) {
    if (item->isEmpty()) continue;
    size = QSize(size.width() + item->sizeHint().width() + horizontal_gap_,
                 std::max(size.height(), item->sizeHint().height()));
  }
  return size.grownBy(contentsMargins());
}

void FlowLayout::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  Arrange(rect, true);
}

int FlowLayout::Arrange(const QRect& rect, bool apply) const {
  const QRect inner = rect.marginsRemoved(contentsMargins());
  int x = inner.x();
  int y = inner.y();
  int row_height = 0;
  for (QLayoutItem* item : items_) {
    if (item->isEmpty()) continue;
    const QSize size = item->sizeHint().boundedTo({inner.width(), QLAYOUTSIZE_MAX});
    if (x > inner.x() && x + size.width() > inner.right() + 1) {
      x = inner.x();
      y += row_height + vertical_gap_;
      row_height = 0;
    }
    if (apply) item->setGeometry(QRect(QPoint(x, y), size));
    x += size.width() + horizontal_gap_;
    row_height = std::max(row_height, size.height());
  }
  return y + row_height - rect.y() + contentsMargins().bottom();
}

}  // namespace kolvane::window
