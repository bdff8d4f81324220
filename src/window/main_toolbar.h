#pragma once

#include "window/key_toolbar.h"

namespace kolvane::window {

/// `Toolbar1`.
class MainToolbar final : public KeyToolbar {
 public:
  explicit MainToolbar(QWidget* parent = nullptr);
};

}  // namespace kolvane::window
