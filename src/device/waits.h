#pragma once

#include <cstdint>
#include <string>

#include "base/clock.h"
#include "device/port_library.h"

namespace kolvane::device {

/// What the terminal is waiting for.
enum class Operation { kNone, kConnecting, kSending, kAnswer, kDelay };

/// The progress of dialling. Texts are UTF-8, without line ends.
struct DialProgress {
  std::string command = {};       ///< the command just sent; empty while waiting for the connection
  std::string reply = {};         ///< the modem's last word after the last command; empty if none
  std::int32_t seconds_left = 0;  ///< of the dial time-out, while waiting
};

/// Called while a terminal waits, on the waiting thread. It may show and record things, but must not start
/// anything on the device.
class WaitListener {
 public:
  virtual ~WaitListener() = default;
  /// Before a call that may take long without calling a handler: a host's, or one of a port library without a
  /// wait handler.
  virtual void BeforeUnattended() {}
  /// About every 50 ms, from 50 ms on. `seconds`: since the first wait of the outermost Waits::Scope. False
  /// gives up everything until that scope ends.
  virtual bool Waiting(Operation /*operation*/, double /*seconds*/) { return true; }
  /// When the outermost scope ends, if Waiting was called in it.
  virtual void WaitEnded() {}
  /// Before each dialling step that may take long. False gives up as above.
  virtual bool Dialling(const DialProgress& /*progress*/) { return true; }
};

/// All waiting of a terminal: the port library, the host and every other slow operation report to it while
/// they wait.
class Waits {
 public:
  /// Sets itself as the wait handler of the library of `source`.
  Waits(PortLibrarySource& source, const base::Clock& clock, WaitListener& listener);
  ~Waits();
  Waits(const Waits&) = delete;
  Waits& operator=(const Waits&) = delete;

  /// `operation` is running while this lives; of nested scopes the innermost counts.
  class Scope {
   public:
    Scope(Waits& waits, Operation operation) : waits_(waits), outer_(waits.operation_) {
      waits_.operation_ = operation;
      if (waits_.depth_++ == 0) waits_.StartOperation();
    }
    /// A step of the operation that is running, or a single call outside one.
    explicit Scope(Waits& waits) : Scope(waits, waits.operation_) {}
    ~Scope() {
      waits_.operation_ = outer_;
      if (--waits_.depth_ == 0) waits_.End();
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    Waits& waits_;
    Operation outer_;
  };

  /// To be called between the steps of a slow operation: calls the listener if 50 ms have passed. False once
  /// the operation was given up.
  bool Attend();
  /// The same, even if 50 ms have not passed.
  bool AttendNow();
  /// To be called before a call to the host.
  void BeforeHostCall() { listener_.BeforeUnattended(); }
  /// To be called before a port library call that may take long.
  void BeforeLibraryCall() {
    if (!source_.IsAttended()) listener_.BeforeUnattended();
  }

  /// Whether an operation is running.
  bool IsUnderWay() const { return depth_ > 0; }
  /// To be called before the next dialling step.
  void ReportDialling(const DialProgress& progress) {
    if (!listener_.Dialling(progress)) given_up_ = true;
  }

  /// The port library's Delay, as a separate operation. kNoPortLibrary if there is no library.
  std::int32_t Delay(std::int32_t milliseconds);

 private:
  static std::int32_t Handle(void* context, std::int32_t waited_ms);
  void StartOperation();
  void End();
  void StartAt(double seconds);
  bool Report(double now);

  PortLibrarySource& source_;
  const base::Clock& clock_;
  WaitListener& listener_;
  Operation operation_ = Operation::kNone;
  int depth_ = 0;
  bool timed_ = false;  // start_ and last_reported_ are set
  double start_ = 0;    // seconds
  double last_reported_ = 0;
  bool reported_ = false;
  bool attending_ = false;
  bool given_up_ = false;
};

}  // namespace kolvane::device
