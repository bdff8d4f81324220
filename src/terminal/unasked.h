#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "device/device.h"
#include "device/device_state.h"
#include "terminal/connect_commands.h"
#include "terminal/output.h"
#include "terminal/terminal_state.h"

namespace kolvane::terminal {

/// What an instrument sends without having been asked: it is shown line by line while the user listens, and
/// counted otherwise.
class Unasked {
 public:
  /// What is taken in one go, bytes.
  static constexpr std::size_t kMostAtOnce = 256u << 10;

  Unasked(device::Device& device, device::DeviceState& device_state, const TerminalState& state,
          Output& output, ConnectCommands& connect)
      : device_(device), device_state_(device_state), state_(state), output_(output), connect_(connect) {}

  /// Called where the port says that something has come or the connection has ended. Returns whether it is
  /// worth while to look again: false while nobody takes what has come, and after a loss.
  bool Take();

  /// Shows the unfinished line, since no more comes.
  void ShowRest();
  bool HasRest() const { return !rest_.empty(); }

 private:
  bool Probe();
  void ShowLines(std::string_view bytes);
  void ShowLine();

  device::Device& device_;
  device::DeviceState& device_state_;
  const TerminalState& state_;
  Output& output_;
  ConnectCommands& connect_;
  std::string rest_;  // of a line
  Bytes buffer_;
};

}  // namespace kolvane::terminal
