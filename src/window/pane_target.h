#pragma once

#include <QWidget>

#include "terminal/ui/output_pane.h"
#include "terminal/window_settings.h"
#include "window/edit_target.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// The commands of menu, toolbar and popup menu on the output pane.
class PaneTarget final : public EditTarget {
 public:
  /// `look` takes what the user chooses; `window` stands behind the dialogs.
  PaneTarget(terminal::OutputPane* pane, terminal::Look& look, MessagePrompt& prompt, QWidget* window)
      : pane_(pane), look_(look), prompt_(prompt), window_(window) {}

  /// Gives the pane the font and the colours of its look.
  void ShowLook();

  void Copy() override { pane_->copy(); }
  void Cut() override { pane_->cut(); }
  void Paste() override { pane_->paste(); }
  void Delete() override { pane_->deleteSelection(); }
  void SelectAll() override { pane_->selectAll(); }
  void ClearAll() override;
  /// Writes the whole text and a line end behind it, all or nothing, under a name that the user chooses.
  void Save();
  /// Puts a text file that the user chooses in place of the text; where it is not read to its end the text
  /// stays.
  void Open() override;
  /// The same with the file `name`.
  void Load(const std::string& name);
  void Print() override;
  void ChooseFont() override;
  void ChooseBackColor() override;

  void InsertComment();

 private:
  terminal::OutputPane* pane_;
  terminal::Look& look_;
  MessagePrompt& prompt_;
  QWidget* window_;
};

}  // namespace kolvane::window
