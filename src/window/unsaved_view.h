#pragma once

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <string>
#include <vector>

#include "script/ui/command_grid.h"
#include "script/unsaved_list.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// The bar `UnsavedBar` above the grid: it offers, one after the other, the lists that other windows have
/// left unsaved, and is hidden if there are none. It also maintains the copy of this window's list.
class UnsavedView final : public QFrame {
  Q_OBJECT

 public:
  static constexpr int kWrittenAfterMs = 2000;  ///< the most that is lost if the program is killed

  /// `folder` holds the copies of all windows; empty: none is kept or offered.
  UnsavedView(script::CommandGrid* grid, const std::string& folder, MessagePrompt& prompt, QWidget* parent);

  /// Updates the copy at once. If the list is modified, the copy outlives this object. Returns 0, or an errno
  /// with the copy as it was.
  int Keep();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void NoteChange();
  void Restore();
  void Discard();
  void ShowNext();
  void Announce();
  QPushButton* AddButton(const char* name, std::string_view text, void (UnsavedView::*command)());

  script::CommandGrid* grid_;
  MessagePrompt& prompt_;
  script::UnsavedCopy copy_;
  std::vector<script::AbandonedCopy> left_;
  std::uint64_t last_revision_ = 0;  ///< the list's revision
  QTimer write_{this};
  QLabel* text_;
};

}  // namespace kolvane::window
