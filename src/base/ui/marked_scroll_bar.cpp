#include "base/ui/marked_scroll_bar.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>
#include <algorithm>
#include <cmath>
#include <set>

namespace kolvane::base {
namespace {

constexpr int kMarkHeight = 2;
constexpr QColor kMark(230, 126, 0);

}  // namespace

void MarkedScrollBar::SetMarks(const std::vector<double>& positions) {
  if (positions == positions_) return;
  positions_ = positions;
  update();
}

int MarkedScrollBar::MarkCount() const {
  std::set<int> rows;
  for (const double position : positions_) rows.insert(static_cast<int>(std::lround(position * height())));
  return static_cast<int>(rows.size());
}

void MarkedScrollBar::paintEvent(QPaintEvent* event) {
  QScrollBar::paintEvent(event);
  if (positions_.empty()) return;
  QStyleOptionSlider option;
  initStyleOption(&option);
  const QRect groove =
      style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarGroove, this);
  QPainter painter(this);
  for (const double position : positions_) {
    const int y = groove.top() + static_cast<int>(std::lround(position * (groove.height() - kMarkHeight)));
    painter.fillRect(QRect(groove.right() - groove.width() / 2 + 1, y, groove.width() / 2, kMarkHeight),
                     kMark);
  }
}

QColor HitBackground(const QColor& background) {
  constexpr int kDark = 128;
  return background.lightness() < kDark ? QColor(104, 84, 0) : QColor(255, 226, 128);
}

}  // namespace kolvane::base
