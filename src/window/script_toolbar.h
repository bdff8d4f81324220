#pragma once

#include "window/key_toolbar.h"

namespace kolvane::window {

/// `Toolbar3`, upright beside the command list: run control, file and edit commands of the list.
class ScriptToolbar final : public KeyToolbar {
 public:
  explicit ScriptToolbar(QWidget* parent = nullptr);

  void ShowRecording(int tag, int image);
};

}  // namespace kolvane::window
