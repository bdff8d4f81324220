#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/clock.h"
#include "device/connection_parameters.h"
#include "device/loaded_port_library.h"
#include "headless/lines.h"
#include "headless/messages.h"
#include "headless/records.h"
#include "headless/transcript.h"
#include "kolvane/CommandRun.h"
#include "script/script_state.h"
#include "terminal/log_control.h"
#include "terminal/receive_controls.h"
#include "terminal/terminal_core.h"

namespace kolvane::headless {

/// The state that a run works on.
struct RunState {
  device::DeviceState device;
  device::ConnectionParameters connection;
  terminal::TerminalState terminal;
  script::ScriptState script;
};

/// The rest of a run: options, lines and state must outlive it.
struct RunSetup {
  const CommandRunOptions& options;
  HostLines& host;
  RunState& state;
  std::string library_folder;        ///< folder of the port library unless another one is named
  Transcript* transcript = nullptr;  ///< open, must outlive the run
  /// Must outlive the run too; true gives up the current operation and the running list, but not the run.
  const std::function<bool()>* give_up = nullptr;
  bool colors = false;  ///< failures and commands on standard output
};

/// Overwrites `parameters` with those set in `options`; the ones for serial lines are ignored for any other
/// port kind.
void ApplyConnectionOptions(const CommandRunOptions& options, device::ConnectionParameters& parameters);

/// Does the same for the options of receiving and sending; `controls` must work on `state`.
void ApplyTerminalOptions(const CommandRunOptions& options, terminal::ReceiveControls& controls,
                          terminal::TerminalState& state);

/// A terminal with standard output and standard error, or a host's function, as front end. A serial port that
/// was closed again, for example because the modem refused, cannot be used for sending; it counts as a failed
/// connection here.
class Terminal final : private terminal::ConnectionView, private terminal::ReceiveControlsView {
 public:
  /// The state holds the connection and the stored terminal settings, which the options override.
  explicit Terminal(const RunSetup& setup);
  /// Closes the log first, then the connection.
  ~Terminal() override;
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  /// Connects and, if that succeeded, opens the log.
  [[nodiscard]] bool Connect();

  /// Whether the run ends after the current exchange; if so, the user has been told why.
  bool StopDue();
  /// Whether reconnecting after a loss has failed.
  bool IsConnectionLost() const { return core_.connect.lost() && !state_.device.connected; }

  /// Whether the user has given up since Resume.
  bool GivenUp();
  void Resume() { given_up_ = false; }

  /// The last result of StopDue.
  bool stopped() const { return stopped_; }

  /// Shows the output so far; to be called before any wait that does not call Waiting.
  void EndLines();

  const CommandRunOptions& options() const { return options_; }
  const device::DeviceState& device() const { return state_.device; }
  Messages& messages() { return messages_; }
  LinePane& pane() { return pane_; }
  terminal::LogControl& log() { return log_; }
  terminal::TerminalCore& core() { return core_; }

 private:
  device::PortLibrarySource& Source(Transcript* transcript);
  bool AcceptsConnection() override;
  void ConnectionChanged() override {}
  bool Dialling(const device::DialProgress& progress) override;
  bool Waiting(device::Operation operation, double seconds) override;
  void BeforeUnattended() override { pane_.Flush(); }
  bool StopRequested() { return host_.Asks(options_.StopRequested); }
  void ShowReceiveControls(const terminal::ReceiveShown&, bool) override {}

  const CommandRunOptions& options_;
  HostLines& host_;
  RunState& state_;
  base::CoarseClock clock_;
  Messages messages_;
  LinePane pane_;
  terminal::LogControl log_;
  device::LazyPortLibrary library_;
  std::optional<RecordedSource> recorded_;
  terminal::TerminalCore core_;
  RecordWriter records_;
  std::string modem_word_;  ///< the last one during dialling
  const std::function<bool()>* give_up_;
  bool stopped_ = false;
  bool given_up_ = false;
};

}  // namespace kolvane::headless
