#pragma once

#include <string>

#include "component/component_state.h"
#include "component/headless_messages.h"
#include "component/headless_pane.h"
#include "device/lazy_port_library.h"
#include "kolvane/CommandRun.h"
#include "terminal/log_control.h"
#include "terminal/receive_controls.h"
#include "terminal/terminal_core.h"

namespace kolvane::component {

/// A terminal whose front end is standard output and standard error, or a host's function. Nothing can be
/// sent through a serial port that was closed again, because the modem refused, say; here that is a
/// connection that failed.
class HeadlessTerminal final : private terminal::ConnectionView, private terminal::ReceiveControlsView {
 public:
  /// `state` holds the connection and the stored terminal settings; the options go over the latter.
  HeadlessTerminal(const CommandRunOptions& options, HostLines& host, ComponentState& state);
  /// Closes the log first and the connection then.
  ~HeadlessTerminal() override;
  HeadlessTerminal(const HeadlessTerminal&) = delete;
  HeadlessTerminal& operator=(const HeadlessTerminal&) = delete;

  /// Connects, and opens the log once that has succeeded.
  [[nodiscard]] bool Connect();

  /// Whether the run is to end after the exchange in hand; the user has been told why then.
  bool StopDue();
  /// What the last StopDue said.
  bool stopped() const { return stopped_; }

  HeadlessMessages& messages() { return messages_; }
  HeadlessPane& pane() { return pane_; }
  terminal::LogControl& log() { return log_; }
  device::PortLibrarySource& library() { return library_; }
  terminal::TerminalCore& core() { return core_; }

 private:
  bool AcceptsConnection() override;
  void ConnectionChanged() override {}
  void Dialling(const device::DialProgress& progress) override;
  bool DiallingGivenUp() const override { return StopRequested(); }
  bool StopRequested() const { return options_.StopRequested && options_.StopRequested(); }
  void ShowReceiveControls(const terminal::ReceiveShown&, bool) override {}

  const CommandRunOptions& options_;
  HostLines& host_;
  ComponentState& state_;
  HeadlessMessages messages_;
  HeadlessPane pane_;
  terminal::LogControl log_;
  device::LazyPortLibrary library_;
  terminal::TerminalCore core_;
  std::string modem_word_;  ///< the last one while dialling
  bool stopped_ = false;
};

}  // namespace kolvane::component
