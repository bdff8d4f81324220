#pragma once

#include <cstdint>

namespace kolvane::devlnk {

/// Called during waits; see QDX_SetWaitHandler. Without a function nothing is called.
struct WaitHandler {
  std::int32_t (*function)(void* context, std::int32_t waited_ms) = nullptr;
  void* context = nullptr;
};

/// Calls the wait handler during one operation.
class Waiting {
 public:
  static constexpr std::int32_t kPaceMs = 50;

  explicit Waiting(WaitHandler handler) : handler_(handler) {}

  bool attended() const { return handler_.function != nullptr; }
  bool given_up() const { return given_up_; }
  bool called() const { return called_; }

  void Start(std::int64_t now_ns);
  /// The time of the next call to the handler, nanoseconds.
  std::int64_t due_ns() const { return due_ns_; }
  /// Calls the handler if that is due.
  void Attend(std::int64_t now_ns);

 private:
  WaitHandler handler_;
  std::int64_t start_ns_ = 0;
  std::int64_t due_ns_ = 0;
  bool called_ = false;
  bool given_up_ = false;
};

/// A total time for one operation. It starts with the first wait, not on construction, so that an operation
/// that does not wait never reads the clock. To wait, sleep in slices of SliceMs() while Continue() is true,
/// so that the wait handler is called in time.
class Deadline {
 public:
  /// 0: only what can be done at once. `waiting` must outlive this; null: no handler.
  explicit Deadline(std::int32_t total_ms, Waiting* waiting = nullptr)
      : total_ms_(total_ms), waiting_(waiting) {}

  /// A shorter deadline for one of several attempts, which starts with its own first wait.
  Deadline Part(std::int32_t total_ms) const { return Deadline(total_ms, waiting_); }

  std::int32_t total_ms() const { return total_ms_; }
  Waiting* waiting() const { return waiting_; }
  bool started() const { return started_; }
  /// Whether there is a handler to call.
  bool attended() const { return waiting_ != nullptr && waiting_->attended(); }
  /// Whether the handler has given up the operation; the deadline is then over.
  bool given_up() const { return waiting_ != nullptr && waiting_->given_up(); }
  bool called() const { return waiting_ != nullptr && waiting_->called(); }

  /// Starts it unless already started.
  void Start();
  /// Starts it if necessary; rounded up, 0 once it is over.
  std::int32_t RemainingMs();
  /// How long to wait before the next Continue(), at most RemainingMs().
  std::int32_t SliceMs();
  /// Calls the wait handler if that is due; false once the deadline is over.
  [[nodiscard]] bool Continue();
  /// Calls the wait handler between the steps of a long operation, even before any wait.
  void Attend();
  /// Does not start it.
  bool HasExpired();

 private:
  std::int32_t total_ms_;
  Waiting* waiting_;
  bool started_ = false;
  std::int64_t end_ns_ = 0;
};

/// Waits until one of `events` (of poll) or a hang-up occurs, regardless of signals; false if the deadline is
/// over.
bool WaitFor(int fd, short events, Deadline& deadline);

/// The monotonic clock in nanoseconds.
std::int64_t MonotonicNs();

/// Sleeps until the deadline is over, regardless of signals.
void SleepUntilExpired(Deadline& deadline);
/// Sleeps for the whole time.
void SleepMs(std::int32_t milliseconds);

}  // namespace kolvane::devlnk
