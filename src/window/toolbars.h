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
  bool ends_group = false;
};

/// A toolbar whose buttons are actions with their key as objectName; their state is in the properties Tag
/// (text "0" or "1") and Image (number in the image list) and in the tool tip. It is one stop in the tab
/// order: the arrow keys move from button to button, Enter and the space bar press one.
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
  /// The buttons that can get the focus, in order.
  QList<QToolButton*> Stops() const;
  /// The first enabled button from `start` on, or from the first one, wrapping around; in a visible bar only
  /// one that fits into it.
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

/// `Toolbar3`, vertical beside the command list: run control, file and edit commands of the list.
class ScriptToolbar final : public KeyToolbar {
 public:
  explicit ScriptToolbar(QWidget* parent = nullptr);

  void ShowRecording(int tag, int image);

  /// Makes the buttons small if not all fit into `height`, so that the run controls stay visible in the
  /// smallest window.
  void FitInto(int height);
  /// With the run controls alone, made as small as they get.
  int SmallestHeight() const;
  /// Play, single step, break and stop.
  QList<QAction*> RunControls() const;

 private:
  /// The bar's height with only those buttons visible.
  int RunControlHeight(QSize icons) const;

  int whole_height_ = 0;  ///< of the bar with large buttons
};

}  // namespace kolvane::window
