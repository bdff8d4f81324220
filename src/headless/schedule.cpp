#include "headless/schedule.h"

#include <poll.h>

#include <algorithm>
#include <ctime>

namespace kolvane::headless {
namespace {

constexpr std::chrono::milliseconds kPace{50};

timespec Left(std::optional<Schedule::Clock::time_point> due) {
  std::chrono::nanoseconds left = kPace;
  if (due) left = std::clamp<std::chrono::nanoseconds>(*due - Schedule::Clock::now(), {}, left);
  return {0, static_cast<long>(left.count())};
}

}  // namespace

Schedule::Schedule(std::optional<std::int32_t> passes, std::optional<std::int32_t> period_ms,
                   Clock::time_point start)
    : left_(passes), due_(start) {
  if (period_ms) period_ = std::chrono::milliseconds(*period_ms);
  if (!passes && !period_) left_ = 1;
}

std::optional<Schedule::Clock::time_point> Schedule::Next(Clock::time_point now) {
  if (left_ && (*left_)-- <= 0) return std::nullopt;
  if (first_) {
    first_ = false;
  } else if (!period_) {
    due_ = now;
  } else {
    due_ += *period_;
    if (due_ < now) due_ += (now - due_ + *period_ - Clock::duration(1)) / *period_ * *period_;
  }
  return due_;
}

WaitEnd WaitFor(int descriptor, std::optional<Schedule::Clock::time_point> due,
                const std::function<bool()>& give_up) {
  for (;;) {
    pollfd entry{descriptor, POLLIN, 0};
    const timespec left = Left(due);
    if (ppoll(&entry, 1, &left, nullptr) > 0) return WaitEnd::kReadable;
    if (due && Schedule::Clock::now() >= *due) return WaitEnd::kDue;
    if (give_up()) return WaitEnd::kGivenUp;
  }
}

}  // namespace kolvane::headless
