#include "device/number_entry.h"

#include <algorithm>
#include <limits>

#include "base/number.h"

namespace kolvane::device {
namespace {

constexpr std::int32_t kShortestDialTimeout = 10;
constexpr std::int32_t kDefaultDialTimeout = 60;
constexpr std::int32_t kFifthLptMode = 5;
constexpr std::int32_t kFifthLptModeValue = 95;

double TypedWithin(std::string_view text, double lowest, double highest) {
  return std::clamp(base::LeadingTypedNumber(text), lowest, highest);
}

template <typename Int>
double LowestOf() {
  return static_cast<double>(std::numeric_limits<Int>::min());
}

template <typename Int>
double HighestOf() {
  return static_cast<double>(std::numeric_limits<Int>::max());
}

}  // namespace

std::int32_t TypedInt32(std::string_view text) {
  return base::RoundToInt32(TypedWithin(text, LowestOf<std::int32_t>(), HighestOf<std::int32_t>()));
}

std::int16_t TypedInt16(std::string_view text) {
  return base::RoundToInt16(TypedWithin(text, LowestOf<std::int16_t>(), HighestOf<std::int16_t>()));
}

std::uint8_t TypedByte(std::string_view text) {
  return static_cast<std::uint8_t>(base::RoundToInt16(TypedWithin(text, 0, HighestOf<std::uint8_t>())));
}

std::int16_t TypedIpPort(std::string_view text) {
  const double port = TypedWithin(text, LowestOf<std::int16_t>(), HighestOf<std::uint16_t>());
  return static_cast<std::int16_t>(base::RoundToInt32(port));
}

std::int32_t TypedReceiveBuffer(std::string_view text) {
  return std::max(TypedInt32(text), kSmallestReceiveBuffer);
}

std::int32_t TypedDialTimeout(std::string_view text) {
  const std::int32_t seconds = TypedInt32(text);
  return seconds < kShortestDialTimeout ? kDefaultDialTimeout : seconds;
}

std::int32_t BaudOfLptMode(std::int32_t mode_index) {
  const std::int32_t value = mode_index + 1;
  return value == kFifthLptMode ? kFifthLptModeValue : value;
}

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
