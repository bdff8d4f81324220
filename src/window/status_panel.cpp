#include "window/status_panel.h"

#include <QPainter>

namespace kolvane::window {

void StatusPanel::paintEvent(QPaintEvent* event) {
  const QRect area = contentsRect().adjusted(indent(), 0, -indent(), 0);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width());
  // Marks stand in the whole text.
  if (shown == text() || hasSelectedText()) return QLabel::paintEvent(event);
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(area, static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

}  // namespace kolvane::window
