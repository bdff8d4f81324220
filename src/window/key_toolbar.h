#pragma once

#include <QAction>
#include <QToolBar>
#include <span>
#include <string_view>

namespace kolvane::window {

/// One button of a KeyToolbar.
struct ButtonRow {
  const char* key;
  const char* icon;
  std::string_view tool_tip;
  bool enabled;
  bool ends_group;
};

/// A toolbar whose buttons are actions with their key as objectName; their state is kept in the properties
/// Tag (text "0" or "1") and Image (number in the image list) and in the tool tip.
class KeyToolbar : public QToolBar {
 public:
  KeyToolbar(const char* name, const char* title, std::span<const ButtonRow> buttons, QWidget* parent);

  QAction* Button(const char* key) const;
  void ShowState(const char* key, int tag, int image, const QString& tool_tip);

 private:
  void AddButton(const ButtonRow& row);
};

}  // namespace kolvane::window
