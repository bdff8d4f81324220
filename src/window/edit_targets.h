#pragma once

#include <QWidget>

#include "base/look.h"
#include "pane/ui/output_pane.h"
#include "script/command_file.h"
#include "script/ui/command_grid.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// A control that the popup menu acts on.
class EditTarget {
 public:
  virtual ~EditTarget() = default;
  virtual void Copy() = 0;
  virtual void Cut() = 0;
  virtual void Paste() = 0;
  virtual void Delete() = 0;
  virtual void SelectAll() = 0;
  virtual void ClearAll() = 0;
  virtual void Open() = 0;
  virtual void Print() = 0;
  virtual void ChooseFont() = 0;
  virtual void ChooseBackColor() = 0;
};

/// The commands of popup menu and toolbar on the command list's grid.
class GridTarget final : public EditTarget {
 public:
  /// `look` receives what the user chooses; `window` is the parent of the dialogs.
  GridTarget(script::CommandGrid* grid, script::CommandFileMenu& files, base::Look& look,
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
  /// Prints the rows down to the last used one, or, if the user wants that, several selected ones.
  void Print() override;
  void ChooseFont() override;
  void ChooseBackColor() override;

 private:
  script::CommandGrid* grid_;
  script::CommandFileMenu& files_;
  base::Look& look_;
  MessagePrompt& prompt_;
  QWidget* window_;
};

/// The commands of menu, toolbar and popup menu on the output pane.
class PaneTarget final : public EditTarget {
 public:
  /// `look` receives what the user chooses; `window` is the parent of the dialogs.
  PaneTarget(pane::OutputPane* pane, base::Look& look, MessagePrompt& prompt, QWidget* window)
      : pane_(pane), look_(look), prompt_(prompt), window_(window) {}

  /// Gives the pane the font and the colours of its look.
  void ShowLook();

  void Copy() override { pane_->copy(); }
  void Cut() override { pane_->cut(); }
  void Paste() override { pane_->paste(); }
  void Delete() override { pane_->deleteSelection(); }
  void SelectAll() override { pane_->selectAll(); }
  void ClearAll() override;
  /// Writes the whole text and a final line end, all or nothing, to a file that the user chooses.
  void Save();
  /// Replaces the text by a text file that the user chooses; if the file cannot be read to its end, the text
  /// stays.
  void Open() override;
  /// The same with the file `name`.
  void Load(const std::string& name);
  void Print() override;
  void ChooseFont() override;
  void ChooseBackColor() override;

  void InsertComment();

 private:
  pane::OutputPane* pane_;
  base::Look& look_;
  MessagePrompt& prompt_;
  QWidget* window_;
};

}  // namespace kolvane::window
