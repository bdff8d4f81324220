#pragma once

#include <QAction>
#include <QToolBar>
#include <span>

namespace kolvane::window {

/// One button of a KeyToolbar.
struct ButtonRow {
  const char* key;
  const char* icon;
  const char* tool_tip;
  bool enabled;
  bool ends_group;
};

/// A toolbar whose buttons are actions with their key as objectName; what changes with a button's state (text
/// "0" or "1", image number, tool tip) is kept in the properties Tag and Image and in the tool tip.
class KeyToolbar : public QToolBar {
 public:
  KeyToolbar(const char* name, const char* title, std::span<const ButtonRow> buttons, QWidget* parent);

  QAction* Button(const char* key) const;
  void ShowState(const char* key, int tag, int image, const QString& tool_tip);

 private:
  void AddButton(const ButtonRow& row);
};

}  // namespace kolvane::window
