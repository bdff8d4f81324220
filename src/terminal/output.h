#pragma once

#include <string>
#include <string_view>

#include "device/device.h"
#include "pane/pane.h"
#include "terminal/state_line.h"

namespace kolvane::terminal {

/// Whether lines are shown and logged; part of the process-wide state.
struct OutputFlags {
  bool SilentMode = false;       ///< AddLine does nothing at all
  bool log_recording = false;    ///< lines are copied to the log
  bool log_time_stamps = false;  ///< each line of the log begins with its time
};

/// The log file as output and command list reach it. Whoever implements it tells the user about a file that
/// cannot be opened or written.
class Log {
 public:
  virtual ~Log() = default;
  virtual bool IsOpen() const = 0;
  /// Opens `file_name` (UTF-8, may be empty) for appending.
  virtual void OpenLog(const std::string& file_name) = 0;
  /// Nothing happens where none is open.
  virtual void CloseLog() = 0;
  /// One line into the open log, whether lines are being recorded or not; nothing happens where none is open.
  virtual void WriteLine(std::string_view line) = 0;
};

/// The one way by which lines reach pane and log.
class Output {
 public:
  Output(OutputFlags& flags, pane::Pane& pane, Log& log) : flags_(flags), pane_(pane), log_(log) {}

  /// Shows `line` on a row of its own and copies it to the log while recording is on.
  void AddLine(LineKind kind, std::string_view line);

  /// For those who look at the lines without a window: what a failed answer means, and why an exchange ended.
  void Remark(LineKind kind, std::string_view text) { pane_.Remark(kind, text); }

  /// One view at most.
  void SetStateView(StateView* view) { state_view_ = view; }
  bool ShowsState() const { return state_view_ != nullptr; }
  void ShowState(StateKind kind, std::string_view text) {
    if (ShowsState()) state_view_->ShowState(kind, text);
  }

  /// Edits the pane's text directly: neither silent mode nor the log applies.
  void AppendText(LineKind kind, std::string_view text, int back) { pane_.AppendText(kind, text, back); }

 private:
  OutputFlags& flags_;
  pane::Pane& pane_;
  Log& log_;
  StateView* state_view_ = nullptr;
};

/// Discards what the device has sent and nobody has read, and says in the pane how much it was. Silent where
/// flushing does not apply (not connected, test mode).
void FlushInput(device::Device& device, Output& output);

}  // namespace kolvane::terminal
