#include "devlnk/deadline.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

namespace kolvane::devlnk {
namespace {

constexpr std::int64_t kNsPerMs = 1'000'000;
constexpr std::int64_t kNsPerSecond = 1'000'000'000;

// Rounded up; 0 if past.
std::int32_t MsUntil(std::int64_t end_ns, std::int64_t now_ns) {
  const std::int64_t left = end_ns - now_ns;
  return left <= 0 ? 0 : static_cast<std::int32_t>((left + kNsPerMs - 1) / kNsPerMs);
}

}  // namespace

[[gnu::hot]] std::int64_t MonotonicNs() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::int64_t>(now.tv_sec) * kNsPerSecond + now.tv_nsec;
}

void Waiting::Start(std::int64_t now_ns) {
  if (start_ns_ != 0) return;
  start_ns_ = now_ns;
  due_ns_ = now_ns + kPaceMs * kNsPerMs;
}

void Waiting::Attend(std::int64_t now_ns) {
  if (!attended() || given_up_ || now_ns < due_ns_) return;
  const auto waited_ms =
      static_cast<std::int32_t>(std::min<std::int64_t>((now_ns - start_ns_) / kNsPerMs, INT32_MAX));
  called_ = true;
  given_up_ = handler_.function(handler_.context, waited_ms) != 0;
  // Counted from the end of the call: a slow handler must not keep the operation from making progress.
  due_ns_ = MonotonicNs() + kPaceMs * kNsPerMs;
}

[[gnu::hot]] void Deadline::Start() {
  if (started_) return;
  started_ = true;
  const std::int64_t now = MonotonicNs();
  end_ns_ = now + total_ms_ * kNsPerMs;
  if (waiting_ != nullptr) waiting_->Start(now);
}

std::int32_t Deadline::RemainingMs() {
  if (given_up()) return 0;
  if (!started_) {
    Start();
    return total_ms_;
  }
  return MsUntil(end_ns_, MonotonicNs());
}

std::int32_t Deadline::SliceMs() {
  const std::int32_t remaining = RemainingMs();
  return attended() ? std::min(remaining, MsUntil(waiting_->due_ns(), MonotonicNs())) : remaining;
}

void Deadline::Attend() {
  Start();
  if (attended()) waiting_->Attend(MonotonicNs());
}

bool Deadline::Continue() {
  Attend();
  return !HasExpired();
}

[[gnu::hot]] bool Deadline::HasExpired() {
  return started_ || given_up() ? RemainingMs() == 0 : total_ms_ == 0;
}

bool WaitFor(int fd, short events, Deadline& deadline) {
  pollfd entry{fd, events, 0};
  for (bool more = true;;) {
    const int ready = poll(&entry, 1, deadline.SliceMs());
    if (ready > 0) return true;
    if ((ready < 0 && errno != EINTR) || !more) return false;
    more = deadline.Continue();
    // A handler may have taken until the deadline: what arrived meanwhile still counts.
    if (!more && (deadline.given_up() || !deadline.called())) return false;
  }
}

void SleepUntilExpired(Deadline& deadline) {
  while (!deadline.HasExpired()) {
    const std::int32_t slice = deadline.SliceMs();
    const timespec time{slice / 1000, slice % 1000 * 1'000'000L};
    clock_nanosleep(CLOCK_MONOTONIC, 0, &time, nullptr);
    if (!deadline.Continue()) return;
  }
}

void SleepMs(std::int32_t milliseconds) {
  Deadline deadline(milliseconds);
  SleepUntilExpired(deadline);
}

}  // namespace kolvane::devlnk
