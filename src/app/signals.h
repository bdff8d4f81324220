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

/// While this lives, SIGTSTP (Ctrl+Z), SIGCONT and SIGWINCH make a descriptor readable instead of taking
/// effect at any moment; a stopped process still continues.
class TerminalSignals {
 public:
  TerminalSignals();
  ~TerminalSignals();
  TerminalSignals(const TerminalSignals&) = delete;
  TerminalSignals& operator=(const TerminalSignals&) = delete;

  /// -1 if the system has none left; the signals then act as usual.
  int descriptor() const { return descriptor_; }

  struct Received {
    bool stop = false;
    bool continued = false;
    bool resized = false;
  };
  /// Those since the last call.
  Received Take();
  /// Stops the process as SIGTSTP does by itself; returns when it continues.
  static void Stop();

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
