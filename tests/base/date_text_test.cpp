#include "base/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kolvane::base {
namespace {

TEST(DateText, IsGermanOnASystemWithoutALocale) {
  setenv("TZ", "UTC", 1);
  tzset();
  for (const char* locale : {"C.UTF-8", "C", "POSIX"}) {
    setenv("LC_ALL", locale, 1);
    EXPECT_EQ(DateTimeText(1792828800), "24.10.2026 08:00:00") << locale;
  }
}

TEST(DateText, FallsBackIfTheLocaleIsNotInstalled) {
  setenv("LC_ALL", "xx_XX.UTF-8", 1);
  setenv("TZ", "UTC", 1);
  tzset();
  EXPECT_EQ(DateTimeText(0), "01.01.1970 00:00:00");
}

TEST(UtcTimeText, IsRfc3339) {
  EXPECT_EQ(UtcTimeText(1792828800007), "2026-10-24T08:00:00.007Z");
  EXPECT_EQ(UtcTimeText(-1), "1969-12-31T23:59:59.999Z");
}

TEST(TimeText, IsDateAndTimeOfDayToTheMillisecond) {
  setenv("TZ", "UTC", 1);
  tzset();
  TimeText text;
  std::string out;
  text.Append(1792828800007, '.', out);
  text.Append(1792828800107, ',', out);
  text.Append(-1, '.', out);
  EXPECT_EQ(out, "2026-10-24 08:00:00.0072026-10-24 08:00:00,1071969-12-31 23:59:59.999");
}

}  // namespace
}  // namespace kolvane::base
