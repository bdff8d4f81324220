#include "values/row.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace kolvane::values {
namespace {

using Numbers = std::vector<double>;

std::optional<Numbers> NumbersOf(std::string_view answer) {
  RowMaker maker;
  const auto row = maker.Make({}, "MSV?", answer);
  if (!row) return std::nullopt;
  return Numbers(row->fields.begin(), row->fields.end());
}

TEST(RowMaker, AcceptsAnswersThatSplitIntoNumbers) {
  EXPECT_EQ(NumbersOf("12.5"), Numbers{12.5});
  EXPECT_EQ(NumbersOf("12.5023,215.471,6.4848"), (Numbers{12.5023, 215.471, 6.4848}));
  EXPECT_EQ(NumbersOf("+1,-2,.5,5.,-0"), (Numbers{1, -2, .5, 5, -0.0}));
  EXPECT_EQ(NumbersOf("1e3,1E-3,+1.5E+02,1d2"), (Numbers{1000, .001, 150, 100}));
}

TEST(RowMaker, StripsSpacesAroundAField) { EXPECT_EQ(NumbersOf(" 1 ,\t2, 3\r\n"), (Numbers{1, 2, 3})); }

TEST(RowMaker, RefusesAnswersWithAFieldThatIsNotANumber) {
  for (const char* answer :
       {"",    " ",     "OK", "1,", ",1", "1,,2", "1,OK", "12.5 V", "1 2", "1-2",   "--1",
        "+ 1", "1.2.3", "e5", "1e", ".",  "-",    "1;2",  "\"1\"",  "?",   "1\r\n2"})
    EXPECT_EQ(NumbersOf(answer), std::nullopt) << answer;
}

TEST(RowMaker, RefusesHexadecimalNumbersNanAndInfinities) {
  for (const char* answer :
       {"0x10", "&H10", "#H10", "FF", "NaN", "nan", "INF", "-inf", "Infinity", "1e999", "-1e999"})
    EXPECT_EQ(NumbersOf(answer), std::nullopt) << answer;
}

TEST(RowMaker, ReadsWhatIsTooSmallForADoubleAsZero) { EXPECT_EQ(NumbersOf("1e-999"), Numbers{0}); }

TEST(RowMaker, KeepsEveryDigitOfADouble) {
  EXPECT_EQ(NumbersOf("0.1,1.7976931348623157e308,4.9406564584124654e-324"),
            (Numbers{0.1, 1.7976931348623157e308, 4.9406564584124654e-324}));
}

TEST(RowMaker, PassesOnTimeAndCommand) {
  RowMaker maker;
  const auto row = maker.Make({5, 2.5}, "MSV? 1", "7");
  ASSERT_TRUE(row);
  EXPECT_EQ(row->moment.time_ms, 5);
  EXPECT_EQ(row->moment.seconds, 2.5);
  EXPECT_EQ(row->command, "MSV? 1");
}

class StoppedClock final : public base::Clock {
 public:
  double Seconds() const override { return 17.5; }
};

TEST(Now, HasTheSecondsOfTheClockAndTheTimeOfDay) {
  const Moment now = Now(StoppedClock());
  EXPECT_EQ(now.seconds, 17.5);
  EXPECT_NEAR(static_cast<double>(now.time_ms) / 1000, static_cast<double>(std::time(nullptr)), 60);
}

}  // namespace
}  // namespace kolvane::values
