#include "base/clock.h"

#include <locale.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <string_view>

namespace kolvane::base {
namespace {

double Uptime(clockid_t clock = CLOCK_MONOTONIC) {
  timespec now{};
  if (clock_gettime(clock, &now) != 0) return 0;
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

SteadyClock::SteadyClock() : origin_(Uptime()) {}

[[gnu::hot]] double SteadyClock::Seconds() const { return Uptime() - origin_; }

[[gnu::hot]] double CoarseClock::Seconds() const { return Uptime(CLOCK_MONOTONIC_COARSE); }

timespec TimeUntil(std::chrono::steady_clock::time_point due) {
  using std::chrono::nanoseconds;
  constexpr std::int64_t kPerSecond = 1'000'000'000;
  const auto left = std::chrono::duration_cast<nanoseconds>(due - std::chrono::steady_clock::now());
  const auto count = std::max<std::int64_t>(left.count(), 0);
  return {count / kPerSecond, count % kPerSecond};
}

namespace {

constexpr char kGermanForm[] = "%d.%m.%Y %H:%M:%S";

bool IsPlainLocale(std::string_view name) { return name == "C" || name == "POSIX" || name.starts_with("C."); }

// The locale name for dates, by the precedence that POSIX defines.
std::string_view TimeLocaleName() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return "C";
}

}  // namespace

std::string DateTimeText(std::time_t when) {
  std::tm local{};
  localtime_r(&when, &local);
  char buffer[120];
  const locale_t user = IsPlainLocale(TimeLocaleName()) ? nullptr : newlocale(LC_TIME_MASK, "", nullptr);
  if (user == nullptr) return {buffer, std::strftime(buffer, sizeof buffer, kGermanForm, &local)};
  const std::size_t length = strftime_l(buffer, sizeof buffer, "%x %X", &local, user);
  freelocale(user);
  return {buffer, length};
}

std::string CurrentDateTimeText() { return DateTimeText(std::time(nullptr)); }

namespace {

constexpr std::int64_t kMsPerSecond = 1000;

// Milliseconds count forwards before 1970 too.
std::int64_t MsOf(std::int64_t time_ms) { return (time_ms % kMsPerSecond + kMsPerSecond) % kMsPerSecond; }

std::time_t SecondOf(std::int64_t time_ms) {
  return static_cast<std::time_t>((time_ms - MsOf(time_ms)) / kMsPerSecond);
}

std::string ThreeDigits(std::int64_t ms) { return std::to_string(kMsPerSecond + ms).substr(1); }

}  // namespace

std::int64_t WallClockMs() {
  const auto since_1970 = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::floor<std::chrono::milliseconds>(since_1970).count();
}

std::string UtcTimeText(std::int64_t time_ms) {
  const std::time_t second = SecondOf(time_ms);
  std::tm utc{};
  gmtime_r(&second, &utc);
  char text[64];
  const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S.", &utc);
  return std::string(text, length) + ThreeDigits(MsOf(time_ms)) + 'Z';
}

void TimeText::Append(std::int64_t time_ms, char decimal_sign, std::string& out) {
  const std::time_t second = SecondOf(time_ms);
  if (second != second_ || text_.empty()) {
    std::tm local{};
    localtime_r(&second, &local);
    char text[64];
    text_.assign(text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local));
    second_ = second;
  }
  out += text_;
  out += decimal_sign;
  out += ThreeDigits(MsOf(time_ms));
}

std::string TimeStamp() {
  std::string text;
  TimeText().Append(WallClockMs(), '.', text);
  return text;
}

}  // namespace kolvane::base
