#pragma once

#include <QApplication>

namespace kolvane::window {

/// An application in which lack of memory ends the one event that needs it, a paint say, before it can unwind
/// Qt's own functions, which are not made for it.
class GuardedApplication final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace kolvane::window
