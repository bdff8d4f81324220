#include "device/timeout_entry.h"

#include <algorithm>
#include <limits>

#include "base/number.h"

namespace kolvane::device {
namespace {

constexpr double kMillisecondsPerSecond = 1000;

std::int32_t Scaled(std::string_view text, double factor) {
  return base::RoundToInt32(std::clamp(base::LeadingTypedNumber(text) * factor,
                                       double{std::numeric_limits<std::int32_t>::min()},
                                       double{std::numeric_limits<std::int32_t>::max()}));
}

std::int32_t SecondsEntry(std::string_view text) { return Scaled(text, kMillisecondsPerSecond); }

}  // namespace

std::int32_t Rs232Timeout(std::string_view text) { return std::max(SecondsEntry(text), 0); }

std::int32_t ParallelTimeout(std::string_view text) { return SecondsEntry(text); }

std::int32_t TcpIpTimeout(std::string_view text) { return SecondsEntry(text); }

std::int32_t GpibTimeout(std::string_view text) {
  const bool milliseconds = text.find("msec") != std::string_view::npos;
  return milliseconds ? Scaled(text, 1) : SecondsEntry(text);
}

}  // namespace kolvane::device
