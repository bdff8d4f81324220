#pragma once

namespace kolvane::app {

/// While it lives, SIGINT, SIGTERM and SIGHUP no longer end the process but make a descriptor readable; those
/// that came are done with at its end.
class EndSignals {
 public:
  EndSignals();
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  /// -1 where the system gave none; the signals end the process as ever then.
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_ = -1;
};

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
