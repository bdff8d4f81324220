#pragma once

#include <QPointer>
#include <QWidget>

namespace kolvane::window {

/// Keeps the user from disturbing a running command list.
class GuiLock {
 public:
  explicit GuiLock(QWidget& window) : window_(window) {}

  /// Disables if `locked`, else enables, by the names of the controls: sending, the connection, files,
  /// options and the receive settings. What the user needs to view, type and end the run stays enabled. A
  /// control that loses the keyboard focus this way gets it back, unless the user has moved elsewhere.
  void LockGUI(bool locked);

 private:
  QWidget& window_;
  QPointer<QWidget> had_focus_;
  QPointer<QWidget> focused_instead_;
};

}  // namespace kolvane::window
