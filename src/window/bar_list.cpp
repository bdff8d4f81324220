#include "window/bar_list.h"

#include <QAbstractItemView>
#include <QEvent>
#include <utility>

#include "device/ui/wheel_guard.h"

namespace kolvane::window {

BarList::BarList(QWidget* parent) : QComboBox(parent) {
  device::GuardWheel(this);
  connect(this, &QComboBox::activated, this, [this] {
    if (std::exchange(with_mouse_, false)) Q_EMIT PickedWithMouse();
  });
}

// The view is made when it is needed first.
void BarList::showPopup() {
  with_mouse_ = false;
  QComboBox::showPopup();
  view()->viewport()->installEventFilter(this);
}

bool BarList::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) with_mouse_ = true;
  return QComboBox::eventFilter(watched, event);
}

}  // namespace kolvane::window
