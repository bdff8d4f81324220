#pragma once

#include <QWidget>

#include "script/command_file_menu.h"
#include "script/ui/command_grid.h"
#include "terminal/window_settings.h"
#include "window/edit_target.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// The commands of popup menu and toolbar on the command list's grid.
class GridTarget final : public EditTarget {
 public:
  /// `look` takes what the user chooses; `window` stands behind the dialogs.
  GridTarget(script::CommandGrid* grid, script::CommandFileMenu& files, terminal::Look& look,
             MessagePrompt& prompt, QWidget* window)
      : grid_(grid), files_(files), look_(look), prompt_(prompt), window_(window) {}

  /// Gives the grid the font and the colours of its look.
  void ShowLook();

  void Copy() override { grid_->copy(); }
  void Cut() override { grid_->cut(); }
  void Paste() override { grid_->paste(); }
  void Delete() override { grid_->deleteSelection(); }
  void SelectAll() override { grid_->selectAll(); }
  void ClearAll() override { files_.New(); }
  void Open() override { files_.Open(); }
  /// The rows down to the last one that holds text, or the marked ones.
  void Print() override;
  void ChooseFont() override;
  void ChooseBackColor() override;

 private:
  script::CommandGrid* grid_;
  script::CommandFileMenu& files_;
  terminal::Look& look_;
  MessagePrompt& prompt_;
  QWidget* window_;
};

}  // namespace kolvane::window
