#pragma once

#include <QObject>
#include <QWidget>

#include "terminal/ui/output_pane.h"
#include "window/menus.h"

namespace kolvane::window {

/// The popup menu's commands on the output pane.
class PaneCommands final : public QObject {
  Q_OBJECT

 public:
  PaneCommands(Menus& menus, terminal::OutputPane* pane, QWidget* window);

 private:
  void OpenPopup(const QPoint& where);
  void ClearAll();
  void InsertComment();

  Menus& menus_;
  terminal::OutputPane* pane_;
  QWidget* window_;
};

}  // namespace kolvane::window
