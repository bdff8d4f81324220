#pragma once

#include <string>
#include <string_view>

#include "device/device.h"
#include "pane/pane.h"

namespace kolvane::terminal {

/// Whether lines are shown and logged; part of the process-wide state.
struct OutputFlags {
  bool SilentMode = false;     ///< AddLine does nothing at all
  bool log_recording = false;  ///< lines are copied to the log
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

  /// Edits the pane's text directly: neither silent mode nor the log applies.
  void AppendText(LineKind kind, std::string_view text, int back) { pane_.AppendText(kind, text, back); }

 private:
  OutputFlags& flags_;
  pane::Pane& pane_;
  Log& log_;
};

/// Discards what the device has sent and nobody has read, and says in the pane how much it was. Silent where
/// flushing does not apply (not connected, test mode).
void FlushInput(device::Device& device, Output& output);

}  // namespace kolvane::terminal
