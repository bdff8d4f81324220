#include "base/ui/wheel_guard.h"

#include <QEvent>

namespace kolvane::base {
namespace {

class WheelGuard final : public QObject {
 public:
  explicit WheelGuard(QWidget* list) : QObject(list) { list->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

}  // namespace

void GuardWheel(QComboBox* list) {
  list->setFocusPolicy(Qt::StrongFocus);
  new WheelGuard(list);
}

}  // namespace kolvane::base
