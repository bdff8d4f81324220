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

/// Bytes that an instrument sends unasked: shown line by line while the user listens, otherwise counted.
class Unasked {
 public:
  /// The most taken in one call, bytes.
  static constexpr std::size_t kMaxAtOnce = 256u << 10;

  Unasked(device::Device& device, device::DeviceState& device_state, const TerminalState& state,
          Output& output, ConnectCommands& connect)
      : device_(device), device_state_(device_state), state_(state), output_(output), connect_(connect) {}

  /// Call it when the port reports received bytes or an end of the connection. Returns whether it is worth
  /// calling again: false if received bytes are not taken, and after a loss.
  bool Take();

  /// Shows the unfinished line when no more bytes are expected.
  void ShowPartialLine();
  bool HasPartialLine() const { return !partial_line_.empty(); }

 private:
  bool Probe();
  void ShowLines(std::string_view bytes);
  void ShowLine();

  device::Device& device_;
  device::DeviceState& device_state_;
  const TerminalState& state_;
  Output& output_;
  ConnectCommands& connect_;
  std::string partial_line_;
  Bytes buffer_;
};

}  // namespace kolvane::terminal
