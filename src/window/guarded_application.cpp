#include "window/guarded_application.h"

#include <new>

namespace kolvane::window {

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

}  // namespace kolvane::window
