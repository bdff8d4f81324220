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
  bool log_time_stamps = false;  ///< each line of the log starts with its time
};

/// The log file as seen by output and command list. The implementation reports to the user a file that cannot
/// be opened or written.
class Log {
 public:
  virtual ~Log() = default;
  virtual bool IsOpen() const = 0;
  /// Opens `file_name` (UTF-8, may be empty) for appending.
  virtual void OpenLog(const std::string& file_name) = 0;
  /// Does nothing if no log is open.
  virtual void CloseLog() = 0;
  /// Writes one line to the log, even if lines are not being recorded; does nothing if no log is open.
  virtual void WriteLine(std::string_view line) = 0;
};

/// The only way by which lines reach pane and log.
class Output {
 public:
  Output(OutputFlags& flags, pane::Pane& pane, Log& log) : flags_(flags), pane_(pane), log_(log) {}

  /// Shows `line` on a new row and copies it to the log while recording is on.
  void AddLine(LineKind kind, std::string_view line);

  /// For callers without a window: the meaning of a failed answer, why an exchange ended.
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

/// Discards bytes that were received but not read, and shows in the pane how many. Shows nothing if flushing
/// does not apply (not connected, test mode).
void FlushInput(device::Device& device, Output& output);

}  // namespace kolvane::terminal
