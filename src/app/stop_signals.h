#pragma once

namespace kolvane::app {

/// While it lives, the first SIGINT, SIGTERM or SIGHUP only raises a flag; the next one ends the process as
/// ever. Signals that the process was started to ignore stay ignored. One object at a time.
class StopSignals {
 public:
  StopSignals();
  ~StopSignals();
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

  static bool Raised();
};

}  // namespace kolvane::app
