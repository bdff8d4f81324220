#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace kolvane::headless {

/// When the passes of a run start: the first at once, each further one at a multiple of the period after
/// that, so that nothing adds up. Without a period each starts when the one before has ended.
class Schedule {
 public:
  using Clock = std::chrono::steady_clock;

  /// Without `passes` there is one, with a period no end of them.
  Schedule(std::optional<std::int32_t> passes, std::optional<std::int32_t> period_ms,
           Clock::time_point start);

  /// When the next pass starts; nothing after the last one. Starts that have gone by meanwhile are skipped
  /// and are no passes.
  std::optional<Clock::time_point> Next(Clock::time_point now);

 private:
  std::optional<std::int64_t> left_;
  std::optional<Clock::duration> period_;
  Clock::time_point due_;
  bool first_ = true;
};

enum class WaitEnd { kReadable, kDue, kGivenUp };

/// Waits until `descriptor` is readable (negative: none) or it is `due`. `give_up` is asked about every 50 ms
/// and when a signal has come; it is not asked where there is nothing to wait for.
WaitEnd WaitFor(int descriptor, std::optional<Schedule::Clock::time_point> due,
                const std::function<bool()>& give_up);

}  // namespace kolvane::headless
