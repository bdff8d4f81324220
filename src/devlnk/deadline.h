#pragma once

#include <cstdint>

namespace kolvane::devlnk {

/// A total time for one operation. It starts with the first wait, not when it is made, so that an operation
/// that needs no wait never asks the clock.
class Deadline {
 public:
  /// 0: only what can be done at once.
  explicit Deadline(std::int32_t total_ms) : total_ms_(total_ms) {}

  std::int32_t total_ms() const { return total_ms_; }
  bool started() const { return started_; }

  /// Keeps the first start.
  void Start();
  /// Starts it if need be; rounded up, 0 once it is over.
  std::int32_t RemainingMs();
  /// Does not start it.
  bool IsOver();

 private:
  std::int32_t total_ms_;
  bool started_ = false;
  std::int64_t end_ns_ = 0;
};

/// Nanoseconds of the clock that never jumps back.
std::int64_t MonotonicNs();

/// Sleeps for the whole time, whatever signals arrive.
void SleepMs(std::int32_t milliseconds);

}  // namespace kolvane::devlnk
