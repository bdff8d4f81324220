#include "inspect/byte_values.h"

#include <gtest/gtest.h>

#include <limits>

namespace kolvane::inspect {
namespace {

TEST(ByteSwapTest, BytesAreReversed) {
  EXPECT_EQ(BSwapS(0x0102), 0x0201);
  EXPECT_EQ(BSwapS(-2), static_cast<std::int16_t>(0xFEFF));
  EXPECT_EQ(BSwapL(0x01020304), 0x04030201);
  EXPECT_EQ(BSwapL(-2), static_cast<std::int32_t>(0xFEFFFFFF));
  EXPECT_EQ(BSwapL(std::numeric_limits<std::int32_t>::min()), 0x80);
}

TEST(ByteSwapTest, ASingleIsABitPattern) {
  EXPECT_EQ(std::bit_cast<std::uint32_t>(BSwapF(1.0F)), 0x0000803Fu);
  for (const std::uint32_t bits : {0x7FC00000u, 0x7F800001u, 0xFFFFFFFFu, 0x01000000u, 0x80000000u}) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(BSwapF(BSwapF(std::bit_cast<float>(bits)))), bits);
  }
}

TEST(ByteValuesTest, LowBytesAreFirst) {
  ByteBuffer buffer{0x01, 0x02, 0x03, 0x04};
  EXPECT_EQ(ByteAt(buffer, 1), 2);
  EXPECT_EQ(ShortAt(buffer, 0, false), 513);
  EXPECT_EQ(ShortAt(buffer, 0, true), 258);
  EXPECT_EQ(LongAt(buffer, 0, false), 0x04030201);
  EXPECT_EQ(LongAt(buffer, 0, true), 0x01020304);
}

TEST(ByteValuesTest, OffsetsOutsideTheBufferGiveNothing) {
  const ByteBuffer buffer{};
  for (const std::int32_t offset :
       {-1, 257, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_EQ(ByteAt(buffer, offset), std::nullopt);
    EXPECT_EQ(ShortAt(buffer, offset, false), std::nullopt);
    EXPECT_EQ(LongAt(buffer, offset, false), std::nullopt);
    EXPECT_EQ(FloatAt(buffer, offset, false), std::nullopt);
    EXPECT_EQ(DoubleAt(buffer, offset), std::nullopt);
  }
}

TEST(ByteValuesTest, BytesAfterTheBufferAreZero) {
  ByteBuffer buffer{};
  buffer[256] = 0x12;
  EXPECT_EQ(ByteAt(buffer, 256), 0x12);
  EXPECT_EQ(ShortAt(buffer, 256, false), 0x12);
  EXPECT_EQ(LongAt(buffer, 256, true), 0x12000000);
  EXPECT_EQ(DoubleAt(buffer, 256), std::bit_cast<double>(std::uint64_t{0x12}));
}

}  // namespace
}  // namespace kolvane::inspect
