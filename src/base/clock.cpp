#include "base/clock.h"

#include <ctime>

namespace kolvane::base {
namespace {

double Uptime() {
  timespec now{};
  if (clock_gettime(CLOCK_MONOTONIC, &now) != 0) return 0;
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

SteadyClock::SteadyClock() : origin_(Uptime()) {}

double SteadyClock::Seconds() const { return Uptime() - origin_; }

}  // namespace kolvane::base
