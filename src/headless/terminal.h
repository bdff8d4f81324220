#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/clock.h"
#include "device/loaded_port_library.h"
#include "headless/lines.h"
#include "headless/messages.h"
#include "headless/records.h"
#include "headless/transcript.h"
#include "kolvane/CommandRun.h"
#include "script/script_state.h"
#include "terminal/log.h"
#include "terminal/receive_controls.h"
#include "terminal/terminal_core.h"

namespace kolvane::headless {

/// What a run works on.
struct RunState {
  device::DeviceState device;
  device::ConnectionParameters connection;
  terminal::TerminalState terminal;
  script::ScriptState script;
};

/// What a run is made of besides: options, lines and state outlive it.
struct RunSetup {
  const CommandRunOptions& options;
  HostLines& host;
  RunState& state;
  std::string library_folder;        ///< where the port library lies unless another one is named
  Transcript* transcript = nullptr;  ///< open, outlives the run
  /// Outlives it, too; true gives up what is under way, and the list that runs, but not the run.
  const std::function<bool()>* give_up = nullptr;
  bool colors = false;  ///< failures and commands on standard output
};

/// A terminal whose front end is standard output and standard error, or a host's function. Nothing can be
/// sent through a serial port that was closed again, because the modem refused, say; here that is a
/// connection that failed.
class Terminal final : private terminal::ConnectionView, private terminal::ReceiveControlsView {
 public:
  /// The state holds the connection and the stored terminal settings; the options go over the latter.
  explicit Terminal(const RunSetup& setup);
  /// Closes the log first and the connection then.
  ~Terminal() override;
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  /// Connects, and opens the log once that has succeeded.
  [[nodiscard]] bool Connect();

  /// Whether the run is to end after the exchange in hand; the user has been told why then.
  bool StopDue();
  /// Whether connecting again after a loss was in vain.
  bool ConnectionGone() const { return core_.connect.lost() && !state_.device.connected; }

  /// Whether what was under way since Resume has been given up.
  bool GivenUp();
  void Resume() { given_up_ = false; }

  /// What the last StopDue said.
  bool stopped() const { return stopped_; }

  /// What has come is seen: to be called before anything is waited for that does not call Waiting.
  void EndLines();

  const CommandRunOptions& options() const { return options_; }
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
  bool StopRequested() const { return options_.StopRequested && options_.StopRequested(); }
  void ShowReceiveControls(const terminal::ReceiveShown&, bool) override {}

  const CommandRunOptions& options_;
  HostLines& host_;
  RunState& state_;
  base::SteadyClock clock_;
  Messages messages_;
  LinePane pane_;
  terminal::LogControl log_;
  device::LazyPortLibrary library_;
  std::optional<RecordedSource> recorded_;
  terminal::TerminalCore core_;
  RecordWriter records_;
  std::string modem_word_;  ///< the last one while dialling
  const std::function<bool()>* give_up_;
  bool stopped_ = false;
  bool given_up_ = false;
};

}  // namespace kolvane::headless
