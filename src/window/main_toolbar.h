#pragma once

#include <QAction>
#include <QToolBar>

namespace kolvane::window {

/// `Toolbar1`. Each button is an action whose objectName is its key; what changes with its state (text "0" or
/// "1", image number, tool tip) is kept in the properties Tag and Image and in the tool tip.
class MainToolbar final : public QToolBar {
  Q_OBJECT

 public:
  explicit MainToolbar(QWidget* parent = nullptr);

  QAction* Button(const char* key) const;
  void ShowState(const char* key, int tag, int image, const QString& tool_tip);

 Q_SIGNALS:
  void ButtonClick(const QString& key);

 private:
  void AddButton(const char* key, const char* icon, const char* tool_tip, bool enabled);
};

}  // namespace kolvane::window
