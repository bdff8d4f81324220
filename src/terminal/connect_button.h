#pragma once

namespace kolvane::terminal {

/// The toolbar button TB_CONNECT, for whoever presses it in the user's stead.
class ConnectButton {
 public:
  virtual ~ConnectButton() = default;
  virtual void Press() = 0;
};

}  // namespace kolvane::terminal
