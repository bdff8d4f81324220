#pragma once

#include <cstdint>
#include <string>

#include "base/clock.h"
#include "device/port_library.h"

namespace kolvane::device {

/// What is under way while a terminal waits.
enum class Operation { kNone, kConnecting, kSending, kAnswer, kDelay };

/// How far dialling has come. Texts are UTF-8, without line ends.
struct DialProgress {
  std::string command = {};       ///< has just gone out; empty while waiting for the connection
  std::string reply = {};         ///< the modem's last word to the last command; empty where none came
  std::int32_t seconds_left = 0;  ///< of the dial time-out, while waiting
};

/// Called while a terminal waits, on its thread, by whoever waits. It may show and note things, but start
/// nothing on the device.
class WaitListener {
 public:
  virtual ~WaitListener() = default;
  /// Before a call that may take long and during which nobody is called: a host's, or one of a port library
  /// without a wait handler.
  virtual void BeforeUnattended() {}
  /// About every 50 ms, from 50 ms on. `seconds`: since the first wait of the outermost Waits::Scope began.
  /// False gives up whatever is under way until that scope ends.
  virtual bool Waiting(Operation /*operation*/, double /*seconds*/) { return true; }
  /// Once the outermost scope in which there was a Waiting ends.
  virtual void WaitOver() {}
  /// Before each step of a dialling that may take long. False gives up as above.
  virtual bool Dialling(const DialProgress& /*progress*/) { return true; }
};

/// What a terminal waits for: the one place that the port library, the host and everything that takes time
/// report to while they wait.
class Waits {
 public:
  /// Sets itself as the wait handler of the library of `source`.
  Waits(PortLibrarySource& source, const base::Clock& clock, WaitListener& listener);
  ~Waits();
  Waits(const Waits&) = delete;
  Waits& operator=(const Waits&) = delete;

  /// For as long as it lives `operation` is under way; of nested ones the innermost.
  class Scope {
   public:
    Scope(Waits& waits, Operation operation) : waits_(waits), outer_(waits.operation_) {
      waits_.operation_ = operation;
      if (waits_.depth_++ == 0) waits_.Begin();
    }
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

  /// To be called between the parts of what takes long: calls the listener where 50 ms have gone by. False
  /// once the operation was given up.
  bool Attend();
  /// The same, however little time has gone by.
  bool AttendNow();
  /// Before a call of the host's.
  void BeforeHostCall() { listener_.BeforeUnattended(); }
  /// Before a call of the port library's that may take long.
  void BeforeLibraryCall() {
    if (!source_.IsAttended()) listener_.BeforeUnattended();
  }

  /// While an operation is under way.
  bool IsUnderWay() const { return depth_ > 0; }
  /// Before the next step of a dialling.
  void TellDialling(const DialProgress& progress) {
    if (!listener_.Dialling(progress)) given_up_ = true;
  }

  /// The port library's Delay, as an operation of its own. kNoPortLibrary without a library.
  std::int32_t Delay(std::int32_t milliseconds);

 private:
  static std::int32_t Handle(void* context, std::int32_t waited_ms);
  void Begin();
  void End();
  void StartAt(double seconds);
  bool Tell(double now);

  PortLibrarySource& source_;
  const base::Clock& clock_;
  WaitListener& listener_;
  Operation operation_ = Operation::kNone;
  int depth_ = 0;
  bool timed_ = false;  // start_ and last_told_ hold
  double start_ = 0;    // seconds
  double last_told_ = 0;
  bool told_ = false;
  bool attending_ = false;
  bool given_up_ = false;
};

}  // namespace kolvane::device
