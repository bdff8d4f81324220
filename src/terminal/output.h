#pragma once

#include <string_view>

#include "terminal/log_sink.h"
#include "terminal/pane.h"

namespace kolvane::terminal {

/// Whether lines are shown and logged; part of the process-wide state.
struct OutputFlags {
  bool SilentMode = false;     ///< AddLine does nothing at all
  bool log_recording = false;  ///< lines are copied to the log
};

/// The one way by which lines reach pane and log.
class Output {
 public:
  Output(OutputFlags& flags, Pane& pane, LogSink& log) : flags_(flags), pane_(pane), log_(log) {}

  /// Shows `line` on a row of its own and copies it to the log while recording is on.
  void AddLine(LineKind kind, std::string_view line);

  /// Edits the pane's text directly: neither silent mode nor the log applies.
  void AppendText(LineKind kind, std::string_view text, int back) { pane_.AppendText(kind, text, back); }

 private:
  OutputFlags& flags_;
  Pane& pane_;
  LogSink& log_;
};

}  // namespace kolvane::terminal
