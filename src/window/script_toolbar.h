#pragma once

#include "window/key_toolbar.h"

namespace kolvane::window {

/// `Toolbar3`, upright beside the command list: run control, file and edit commands of the list.
class ScriptToolbar final : public KeyToolbar {
 public:
  explicit ScriptToolbar(QWidget* parent = nullptr);

  void ShowRecording(int tag, int image);

  /// Makes the buttons small where they do not all find room in `height`, so that those that control a run
  /// stay in view in the smallest window.
  void FitInto(int height);

 private:
  /// Of the bar with only those buttons in view.
  int RunControlHeight(QSize icons) const;

  int whole_height_ = 0;  ///< of the bar with large buttons
};

}  // namespace kolvane::window
