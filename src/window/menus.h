#pragma once

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QObject>
#include <QPoint>
#include <array>

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

/// The popup menu shared by pane and grid. Its commands go to the control named by the edit-target flag.
class PopupCommands final : public QObject {
  Q_OBJECT

 public:
  PopupCommands(Menus& menus, MessagePrompt& prompt, EditTarget& pane, QObject* parent);

  /// Sets the target of the flag's value 1; without it that is also the pane.
  void SetGrid(EditTarget& grid) { targets_[edit_target::kGrid] = &grid; }

  /// `flag` is edit_target::kPane or kGrid.
  void SetEditTarget(int flag) { flag_ = flag; }
  /// Opens the menu for that control at this screen position.
  void OpenPopup(int flag, const QPoint& where);

 private:
  void Connect(const char* item, void (EditTarget::*command)());

  Menus& menus_;
  MessagePrompt& prompt_;
  std::array<EditTarget*, 2> targets_;
  int flag_ = edit_target::kPane;
};

}  // namespace kolvane::window
