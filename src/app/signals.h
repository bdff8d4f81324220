#pragma once

#include <signal.h>

#include <span>

namespace kolvane::app {

/// While this lives, some signals make a descriptor readable instead of taking effect at any moment; the
/// destructor discards those received. Signals that are ignored, as nohup does it, stay ignored.
class SignalDescriptor {
 public:
  explicit SignalDescriptor(std::span<const int> numbers);
  ~SignalDescriptor();
  SignalDescriptor(const SignalDescriptor&) = delete;
  SignalDescriptor& operator=(const SignalDescriptor&) = delete;

  /// -1 if the system has none left; the signals then act as usual.
  int get() const { return descriptor_; }
  /// The number of the next signal received; 0 if there is none.
  int Take();

 private:
  sigset_t signals_;
  int descriptor_;
};

/// A descriptor for SIGINT, SIGTERM and SIGHUP, which do not end the process meanwhile.
class EndSignals {
 public:
  EndSignals();
  int descriptor() const { return signals_.get(); }

 private:
  SignalDescriptor signals_;
};

/// A descriptor for SIGTSTP (Ctrl+Z), SIGCONT and SIGWINCH; a stopped process still continues.
class TerminalSignals {
 public:
  TerminalSignals();
  int descriptor() const { return signals_.get(); }

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
  SignalDescriptor signals_;
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
