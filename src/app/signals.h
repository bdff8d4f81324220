#pragma once

namespace kolvane::app {

/// While this lives, SIGINT, SIGTERM and SIGHUP do not end the process but make a descriptor readable; the
/// destructor discards those received.
class EndSignals {
 public:
  EndSignals();
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  /// -1 if the system has none left; the signals then end the process as usual.
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_ = -1;
};

/// While this lives, the first SIGINT, SIGTERM or SIGHUP only sets a flag; the next one ends the process as
/// usual. Signals ignored at process start stay ignored. Only one object at a time.
class StopSignals {
 public:
  StopSignals();
  ~StopSignals();
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

  static bool Raised();
};

}  // namespace kolvane::app
