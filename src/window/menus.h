#pragma once

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QObject>
#include <QPoint>

#include "window/edit_targets.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// The menus on the bar and the popup menu shared by pane and grid. Every item carries its control name.
struct Menus {
  explicit Menus(QMainWindow* window);

  /// The item of that control name.
  QAction* Item(const char* name) const;
  /// The item of the array mnuOption at that index.
  QAction* Option(std::size_t index) const { return options->actions()[static_cast<qsizetype>(index)]; }

  QMenu* file;
  QMenu* connection;
  QMenu* options;
  QMenu* popup;
};

/// The commands of the popup menu shared by pane and grid. They go to the edit target, the control used last.
class PopupCommands final : public QObject {
  Q_OBJECT

 public:
  /// `target` is the first edit target. Targets must outlive this object.
  PopupCommands(Menus& menus, MessagePrompt& prompt, EditTarget& target, QObject* parent);

  void SetEditTarget(EditTarget& target) { target_ = &target; }
  /// Opens the menu for `target` at this screen position.
  void OpenPopup(EditTarget& target, const QPoint& where);

 private:
  void Connect(const char* item, void (EditTarget::*command)());

  Menus& menus_;
  MessagePrompt& prompt_;
  EditTarget* target_;
};

}  // namespace kolvane::window
