#include "inspect/template_run.h"

#include <gtest/gtest.h>

namespace kolvane::inspect {
namespace {

void Expect(int first, int last, int mask, int divisor) {
  const BitRange bits = BitsFromTo(static_cast<std::int16_t>(first), static_cast<std::int16_t>(last));
  EXPECT_EQ(bits.mask, mask) << first << " to " << last;
  EXPECT_EQ(bits.divisor, divisor) << first << " to " << last;
}

TEST(BitRangeTest, ASingleBitIsItsOwnDivisor) {
  Expect(0, 0, 1, 1);
  Expect(3, 3, 8, 8);
  Expect(14, 14, 16384, 16384);
}

TEST(BitRangeTest, SeveralBitsAreNotShiftedDown) {
  Expect(0, 3, 15, 1);
  Expect(4, 7, 0xF0, 1);
}

TEST(BitRangeTest, Bit15AndAboveNeverEnterTheMask) {
  Expect(0, 14, 0x7FFF, 1);
  Expect(0, 15, 0x7FFF, 1);
  Expect(0, 16, 0x7FFF, 1);
  Expect(14, 32767, 0x4000, 1);
  Expect(15, 15, 0, 0);
  Expect(16, 16, 0, 0);
  Expect(15, 16, 0, 1);
}

TEST(BitRangeTest, NegativeBitsAreIgnored) {
  Expect(-1, -1, 0, 0);
  Expect(-3, 1, 3, 1);
  Expect(-32768, 32767, 0x7FFF, 1);
}

TEST(BitRangeTest, AReversedRangeHasNoDivisor) {
  Expect(3, 2, 0, 0);
  Expect(32767, -32768, 0, 0);
}

}  // namespace
}  // namespace kolvane::inspect
