#pragma once

#include <string>
#include <vector>

#include "base/fake_prompt.h"
#include "device/fake_device.h"
#include "device/fake_port_library.h"
#include "pane/fake_pane.h"
#include "terminal/connect_commands.h"
#include "terminal/session_fakes.h"
#include "terminal/terminal_state.h"

namespace kolvane::terminal {

class FakeConnectionView final : public ConnectionView {
 public:
  void ConnectionChanged() override { ++changes; }
  bool Waiting(device::Operation operation, double /*seconds*/) override {
    waited_for.push_back(operation);
    return !gives_up;
  }
  void WaitEnded() override { ++ended_waits; }

  int changes = 0;
  bool gives_up = false;
  std::vector<device::Operation> waited_for;
  int ended_waits = 0;
};

/// Keeps the last text of each kind.
struct RecordedState final : StateView {
  void ShowState(StateKind kind, std::string_view text) override { line.Set(kind, text); }
  StateLine line;
};

/// Connect commands with only fakes around them, not connected.
struct ConnectBench {
  /// Tag, image and tool tip.
  std::string Button() const {
    const ConnectButtonState& button = connect.button();
    return std::to_string(button.tag) + " " + std::to_string(button.image) + " " + button.tool_tip;
  }

  TerminalState state;
  device::DeviceState device_state;
  device::FakeDevice device;
  pane::FakePane pane;
  FakeLog log;
  base::FakePrompt prompt;
  FakeConnectionView view;
  device::FakePortLibrary library;
  device::FakePortLibrarySource libraries{&library};
  device::FakeClock wait_clock;
  device::Waits waits{libraries, wait_clock, view};
  Output output{state.output, pane, log};
  ConnectCommands connect{device,
                          device_state,
                          output,
                          prompt,
                          view,
                          {.description = [] { return std::string("TCP/IP: 10.0.0.7, Port 7"); },
                           .now = [] { return std::string("20.11.2026 08:05:09"); }}};
};

}  // namespace kolvane::terminal
