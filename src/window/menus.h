#pragma once

#include <QAction>
#include <QMainWindow>
#include <QMenu>

namespace kolvane::window {

/// The menus on the bar and the popup menu that pane and grid share. Every item carries its control name.
struct Menus {
  explicit Menus(QMainWindow* window);

  /// The item of that control name.
  QAction* Item(const char* name) const;

  QMenu* file;
  QMenu* connection;
  QMenu* options;
  QMenu* popup;
};

}  // namespace kolvane::window
