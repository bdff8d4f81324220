#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace kolvane::headless {

/// Start times of the passes of a run: the first at once, each further one at a multiple of the period after
/// that, so that delays do not add up. Without a period each starts when the previous one has ended.
class Schedule {
 public:
  using Clock = std::chrono::steady_clock;

  /// Without `passes` there is one pass, or with a period no limit.
  Schedule(std::optional<std::int32_t> passes, std::optional<std::int32_t> period_ms,
           Clock::time_point start);

  /// The start of the next pass; nothing after the last one. Missed starts are skipped and do not count as
  /// passes.
  std::optional<Clock::time_point> Next(Clock::time_point now);

 private:
  std::optional<std::int64_t> left_;
  std::optional<Clock::duration> period_;
  Clock::time_point due_;
  bool first_ = true;
};

enum class WaitEnd { kReadable, kDue, kGivenUp };

/// Waits until `descriptor` is readable (negative: none) or `due`. Calls `give_up` about every 50 ms and
/// after a signal, but not if there is no need to wait.
WaitEnd WaitFor(int descriptor, std::optional<Schedule::Clock::time_point> due,
                const std::function<bool()>& give_up);

}  // namespace kolvane::headless
