#pragma once

#include <cstdint>
#include <string>

#include "amplifier/server.h"
#include "base/fake_prompt.h"
#include "device/loaded_port_library.h"
#include "pane/fake_pane.h"
#include "terminal/receive_controls.h"
#include "terminal/session_fakes.h"
#include "terminal/terminal_core.h"

namespace kolvane::integration {

enum class Line { kTcp, kPty };

class QuietView final : public terminal::ConnectionView, public terminal::ReceiveControlsView {
 public:
  void ConnectionChanged() override {}
  void ShowReceiveControls(const terminal::ReceiveShown&, bool) override {}
};

/// A terminal without a window, connected to a simulated amplifier through the real port library.
class LiveTerminal {
 public:
  LiveTerminal(Line line, amplifier::Options options);
  ~LiveTerminal();
  LiveTerminal(const LiveTerminal&) = delete;
  LiveTerminal& operator=(const LiveTerminal&) = delete;

  /// Sends `command` as a row of a list and returns the answer kept by the session; empty if none is read.
  std::string Ask(const std::string& command);

  /// The status of the last operation: negative = failure.
  std::int16_t Status() { return core.device.LastError().code; }

  amplifier::ServerThread amplifier;
  device::DeviceState device;
  device::ConnectionParameters parameters;
  terminal::TerminalState state;
  device::LazyPortLibrary library;
  pane::FakePane pane;
  terminal::FakeLog log;
  base::FakePrompt prompt;
  QuietView view;
  terminal::TerminalCore core;
  terminal::ReceiveControls controls;

 private:
  static amplifier::Options WithLine(Line line, amplifier::Options options, const std::string& link);
  void Configure(Line line);

  std::string link_;
};

}  // namespace kolvane::integration
