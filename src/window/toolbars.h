#pragma once

#include <QAction>
#include <QPointer>
#include <QToolBar>
#include <QToolButton>
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
/// Tag (text "0" or "1") and Image (number in the image list) and in the tool tip. It is one stop in the tab
/// order: the arrow keys go from button to button, Enter and the space bar press.
class KeyToolbar : public QToolBar {
 public:
  KeyToolbar(const char* name, const char* title, std::span<const ButtonRow> buttons, QWidget* parent);

  QAction* Button(const char* key) const;
  void ShowState(const char* key, int tag, int image, const QString& tool_tip);

 protected:
  void actionEvent(QActionEvent* event) override;
  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  void AddButton(const ButtonRow& row);
  /// The buttons that can be gone to, in their order.
  QList<QToolButton*> Stops() const;
  /// The first enabled button from `start` on, or from the first one, around the bar.
  QToolButton* EnabledFrom(const QAction* start) const;
  void SetTabStop(QToolButton* button);
  bool MoveByKey(QToolButton* from, int key);

  QPointer<QToolButton> tab_stop_;
};

/// `Toolbar1`.
class MainToolbar final : public KeyToolbar {
 public:
  explicit MainToolbar(QWidget* parent = nullptr);
};

/// `Toolbar3`, upright beside the command list: run control, file and edit commands of the list.
class ScriptToolbar final : public KeyToolbar {
 public:
  explicit ScriptToolbar(QWidget* parent = nullptr);

  void ShowRecording(int tag, int image);

  /// Makes the buttons small where they do not all find room in `height`, so that those that control a run
  /// stay in view in the smallest window.
  void FitInto(int height);
  /// Play, single step, break and stop.
  QList<QAction*> RunControls() const;

 private:
  /// Of the bar with only those buttons in view.
  int RunControlHeight(QSize icons) const;

  int whole_height_ = 0;  ///< of the bar with large buttons
};

}  // namespace kolvane::window
