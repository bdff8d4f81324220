#pragma once

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QObject>
#include <functional>

#include "window/message_prompt.h"

namespace kolvane::window {

/// The menu mnuExtras. Its table holds all items in order, with captions and shortcuts; an item is inserted
/// at its position when On, OnToggle or AddMenu is called for it.
class ExtrasMenu final : public QObject {
  Q_OBJECT

 public:
  ExtrasMenu(QMainWindow* window, MessagePrompt& prompt);

  /// `name` must be in the table. Run-time errors of `event` become message boxes.
  QAction* On(const char* name, std::function<void()> event);
  /// An item with a check mark that shows `flag`; it toggles the flag, then calls `changed`.
  QAction* OnToggle(
      const char* name, bool& flag, std::function<void()> changed = [] {});
  /// A submenu, to be filled by the caller.
  QMenu* AddMenu(const char* name);

  /// The item of that name; null if it is not in the menu yet.
  QAction* Item(const char* name) const;

  /// With `allowed` false an item is disabled, whether a list runs or not.
  void SetAllowed(const char* name, bool allowed);
  /// While `locked`, because a list runs, only the items that cannot disturb it are enabled.
  void Lock(bool locked);

 private:
  void Insert(int row, QAction* item);
  void ShowEnabled(QAction* item) const;

  QMenu* menu_;
  MessagePrompt& prompt_;
  bool locked_ = false;
};

}  // namespace kolvane::window
