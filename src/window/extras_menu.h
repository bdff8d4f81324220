#pragma once

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QObject>
#include <functional>

#include "window/message_prompt.h"

namespace kolvane::window {

/// The menu mnuExtras. Its table has all items in their order, with captions and shortcuts; an item comes
/// into the menu, at its place, when On or OnToggle says what it does.
class ExtrasMenu final : public QObject {
  Q_OBJECT

 public:
  ExtrasMenu(QMainWindow* window, MessagePrompt& prompt);

  /// `name` must stand in the table. Run-time errors of `event` become message boxes.
  QAction* On(const char* name, std::function<void()> event);
  /// A check mark that shows `flag` and turns it over; `changed` is called then.
  QAction* OnToggle(
      const char* name, bool& flag, std::function<void()> changed = [] {});
  /// A submenu, for whoever fills it.
  QMenu* AddMenu(const char* name);

  /// The item of that name, null before it is in the menu.
  QAction* Item(const char* name) const;

  /// Disables an item for reasons of its own, whether a list runs or not.
  void SetAllowed(const char* name, bool allowed);
  /// While a list runs only the items are enabled that cannot disturb it.
  void Lock(bool flag);

 private:
  void Insert(int row, QAction* item);
  void ShowEnabled(QAction* item) const;

  QMenu* menu_;
  MessagePrompt& prompt_;
  bool locked_ = false;
};

}  // namespace kolvane::window
