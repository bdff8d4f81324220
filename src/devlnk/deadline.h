#pragma once

#include <cstdint>

namespace kolvane::devlnk {

/// Called by whoever waits; see QDX_SetWaitHandler. Without a function nobody is called.
struct WaitHandler {
  std::int32_t (*function)(void* context, std::int32_t waited_ms) = nullptr;
  void* context = nullptr;
};

/// The wait of one operation as its handler sees it.
class Waiting {
 public:
  static constexpr std::int32_t kPaceMs = 50;

  explicit Waiting(WaitHandler handler) : handler_(handler) {}

  bool attended() const { return handler_.function != nullptr; }
  bool given_up() const { return given_up_; }
  bool called() const { return called_; }

  void Start(std::int64_t now_ns);
  /// When the handler is to be called next, nanoseconds.
  std::int64_t due_ns() const { return due_ns_; }
  /// Calls the handler where that is due.
  void Attend(std::int64_t now_ns);

 private:
  WaitHandler handler_;
  std::int64_t start_ns_ = 0;
  std::int64_t due_ns_ = 0;
  bool called_ = false;
  bool given_up_ = false;
};

/// A total time for one operation. It starts with the first wait, not when it is made, so that an operation
/// that needs no wait never asks the clock. Whoever waits does so in slices of SliceMs() while Continue()
/// allows it, so that the wait handler is called in time.
class Deadline {
 public:
  /// 0: only what can be done at once. `waiting` outlives this; null: nobody is called meanwhile.
  explicit Deadline(std::int32_t total_ms, Waiting* waiting = nullptr)
      : total_ms_(total_ms), waiting_(waiting) {}

  /// A part of this for one of several attempts; it starts now.
  Deadline Part(std::int32_t total_ms) const { return Deadline(total_ms, waiting_); }

  std::int32_t total_ms() const { return total_ms_; }
  Waiting* waiting() const { return waiting_; }
  bool started() const { return started_; }
  /// Whether somebody is to be called while it lasts.
  bool attended() const { return waiting_ != nullptr && waiting_->attended(); }
  /// Whether that somebody has given the operation up; the deadline is over then.
  bool given_up() const { return waiting_ != nullptr && waiting_->given_up(); }
  bool called() const { return waiting_ != nullptr && waiting_->called(); }

  /// Keeps the first start.
  void Start();
  /// Starts it if need be; rounded up, 0 once it is over.
  std::int32_t RemainingMs();
  /// What may be waited for at once, at most RemainingMs().
  std::int32_t SliceMs();
  /// Calls the wait handler where that is due; false once the deadline is over.
  [[nodiscard]] bool Continue();
  /// The same between the pieces of what takes long, before any wait too.
  void Attend();
  /// Does not start it.
  bool IsOver();

 private:
  std::int32_t total_ms_;
  Waiting* waiting_;
  bool started_ = false;
  std::int64_t end_ns_ = 0;
};

/// Waits until one of `events` (of poll) or a hang-up shows, whatever signals arrive; false when the deadline
/// is over.
bool WaitFor(int fd, short events, Deadline& deadline);

/// Nanoseconds of the clock that never jumps back.
std::int64_t MonotonicNs();

/// Sleeps until the deadline is over, whatever signals arrive.
void SleepUntilOver(Deadline& deadline);
/// Sleeps for the whole time.
void SleepMs(std::int32_t milliseconds);

}  // namespace kolvane::devlnk
