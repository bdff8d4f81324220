#include "base/number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "base/runtime_error.h"

namespace kolvane::base {
namespace {

RuntimeError::Kind KindOf(void (*step)()) {
  try {
    step();
  } catch (const RuntimeError& error) {
    return error.kind();
  }
  return RuntimeError::Kind::kOther;
}

TEST(LeadingNumber, TakesTheNumberAtTheStart) {
  EXPECT_EQ(LeadingNumber("  12.5 V"), 12.5);
  EXPECT_EQ(LeadingNumber("1 6 15"), 1615);
  EXPECT_EQ(LeadingNumber("-3e2x"), -300);
  EXPECT_EQ(LeadingNumber("3ex"), 3);
  EXPECT_EQ(LeadingNumber("1,5"), 1);
  EXPECT_EQ(LeadingNumber("abc"), 0);
  EXPECT_EQ(LeadingNumber("-"), 0);
  EXPECT_EQ(LeadingNumber(""), 0);
  EXPECT_EQ(LeadingNumber("&H10"), 16);
  EXPECT_EQ(LeadingNumber("&hFFFF"), -1);
  EXPECT_EQ(LeadingNumber("1e-999"), 0);
}

TEST(LeadingNumber, TypedNumbersMayHaveAComma) {
  EXPECT_EQ(LeadingTypedNumber("1,5 s"), 1.5);
  EXPECT_EQ(LeadingTypedNumber("1.5"), 1.5);
}

TEST(FitInt, RoundsHalfToEvenOnlyWithinTheRange) {
  EXPECT_EQ(FitInt16(2.5), 2);
  EXPECT_EQ(FitInt16(32767.4), 32767);
  EXPECT_EQ(FitInt16(32767.5), std::nullopt);
  EXPECT_EQ(FitInt16(-32768.6), std::nullopt);
  EXPECT_EQ(FitInt32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(FitInt32(2147483648.0), std::nullopt);
}

TEST(WholeTextNumber, TakesTheWholeTextOrNothing) {
  EXPECT_EQ(WholeTextNumber(" 10 "), 10);
  EXPECT_EQ(WholeTextNumber("1,5"), 1.5);
  EXPECT_FALSE(WholeTextNumber("10x"));
  EXPECT_FALSE(WholeTextNumber("1 0"));
  EXPECT_FALSE(WholeTextNumber(""));
  EXPECT_FALSE(WholeTextNumber("-"));
}

TEST(WholeTextNumber, DistinguishesTooSmallFromTooLargeInEveryForm) {
  const std::string zeros(400, '0');
  EXPECT_EQ(WholeTextNumber("0." + zeros + "1"), 0.0);
  EXPECT_EQ(WholeTextNumber("-0." + zeros + "1"), 0.0);
  EXPECT_EQ(WholeTextNumber("1e-400"), 0.0);
  EXPECT_EQ(WholeTextNumber("1e-99999999999999999999"), 0.0);
  EXPECT_EQ(WholeTextNumber("1" + zeros + "e-10"), HUGE_VAL);
  EXPECT_EQ(WholeTextNumber("-1" + zeros), -HUGE_VAL);
  EXPECT_EQ(WholeTextNumber("1e99999999999999999999"), HUGE_VAL);
  EXPECT_EQ(WholeTextNumber("0." + zeros + "1e405"), 10000.0);
  for (const char* limit : {"9223372036854775807", "9223372036854775808"}) {
    EXPECT_EQ(WholeTextNumber("333333E" + std::string(limit)), HUGE_VAL);
    EXPECT_EQ(WholeTextNumber("0.003E-" + std::string(limit)), 0.0);
    EXPECT_EQ(WholeTextNumber("0E" + std::string(limit)), 0.0);
  }
}

TEST(Conversion, RoundsHalfToEven) {
  EXPECT_EQ(TextToInt16("2,5"), 2);
  EXPECT_EQ(TextToInt16("3.5"), 4);
  EXPECT_EQ(TextToInt32("-2147483648"), INT32_MIN);
}

TEST(Conversion, ThrowsAtAndPastTheLimits) {
  EXPECT_EQ(TextToInt16("32767"), 32767);
  EXPECT_EQ(KindOf([] { TextToInt16("32768"); }), RuntimeError::Kind::kOverflow);
  EXPECT_EQ(TextToInt16("-32768"), -32768);
  EXPECT_EQ(KindOf([] { TextToInt16("-32769"); }), RuntimeError::Kind::kOverflow);
  EXPECT_EQ(TextToInt32("2147483647"), INT32_MAX);
  EXPECT_EQ(KindOf([] { TextToInt32("2147483648"); }), RuntimeError::Kind::kOverflow);
  EXPECT_EQ(KindOf([] { TextToInt32("1e999"); }), RuntimeError::Kind::kOverflow);
  EXPECT_EQ(KindOf([] { TextToInt32("abc"); }), RuntimeError::Kind::kTypeMismatch);
  EXPECT_EQ(KindOf([] { TextToInt32(""); }), RuntimeError::Kind::kTypeMismatch);
}

TEST(NumberText, IsGeneralAndUsesTheGivenSign) {
  EXPECT_EQ(SingleText(3.25f, ","), "3,25");
  EXPECT_EQ(SingleText(0.1f, "."), "0.1");
  EXPECT_EQ(SingleText(123456789.0f, ","), "1,234568E+08");
  EXPECT_EQ(DoubleText(0.1, ","), "0,1");
  EXPECT_EQ(DoubleText(-5, ","), "-5");
}

TEST(NumberText, CanBeShort) {
  EXPECT_EQ(ShortText(0.0284699997864664, ","), "0,0285");
  EXPECT_EQ(ShortText(0.25, "."), "0.25");
  EXPECT_EQ(ShortText(12.345, ","), "12,3");
  EXPECT_EQ(ShortText(999.4, ","), "999");
  EXPECT_EQ(ShortText(999.5, ","), "1000");
  EXPECT_EQ(ShortText(1234.56, ","), "1235");
  EXPECT_EQ(ShortText(86400000.4, ","), "86400000");
  EXPECT_EQ(ShortText(0, ","), "0");
  EXPECT_EQ(ShortText(-3.1416, ","), "-3,14");
}

TEST(NumberValues, AreDigitsWithinTheirLimits) {
  EXPECT_EQ(NumberValue("0", 0, 31), 0);
  EXPECT_EQ(NumberValue("31", 0, 31), 31);
  EXPECT_EQ(NumberValue("-1", -1, 1), -1);
  EXPECT_EQ(NumberValue("fF", 0, 0xFFFF, 16), 255);
  for (const char* other : {"", "32", "-0", "-1", "+1", " 1", "1 ", "1.0", "99999999999"})
    EXPECT_EQ(NumberValue(other, 0, 31), std::nullopt) << other;
}

TEST(RuntimeErrors, CarryTheirGermanDescriptions) {
  EXPECT_STREQ(RuntimeError(RuntimeError::Kind::kOverflow).what(), "Überlauf");
  EXPECT_STREQ(RuntimeError(RuntimeError::Kind::kSubscript).what(), "Index außerhalb des gültigen Bereichs");
  EXPECT_STREQ(RuntimeError(RuntimeError::Kind::kTypeMismatch).what(), "Typen unverträglich");
  EXPECT_STREQ(RuntimeError(RuntimeError::Kind::kDivisionByZero).what(), "Division durch Null");
}

}  // namespace
}  // namespace kolvane::base
