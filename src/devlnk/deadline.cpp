#include "devlnk/deadline.h"

#include <cerrno>
#include <ctime>

namespace kolvane::devlnk {
namespace {

constexpr std::int64_t kNsPerMs = 1'000'000;
constexpr std::int64_t kNsPerSecond = 1'000'000'000;

}  // namespace

std::int64_t MonotonicNs() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::int64_t>(now.tv_sec) * kNsPerSecond + now.tv_nsec;
}

void SleepMs(std::int32_t milliseconds) {
  const std::int64_t end = MonotonicNs() + milliseconds * kNsPerMs;
  timespec until{};
  until.tv_sec = static_cast<std::time_t>(end / kNsPerSecond);
  until.tv_nsec = static_cast<long>(end % kNsPerSecond);
  while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
  }
}

void Deadline::Start() {
  if (started_) return;
  started_ = true;
  end_ns_ = MonotonicNs() + total_ms_ * kNsPerMs;
}

std::int32_t Deadline::RemainingMs() {
  if (!started_) {
    Start();
    return total_ms_;
  }
  const std::int64_t left = end_ns_ - MonotonicNs();
  return left <= 0 ? 0 : static_cast<std::int32_t>((left + kNsPerMs - 1) / kNsPerMs);
}

bool Deadline::IsOver() { return started_ ? RemainingMs() == 0 : total_ms_ == 0; }

}  // namespace kolvane::devlnk
