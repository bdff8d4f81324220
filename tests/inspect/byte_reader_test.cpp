#include "inspect/byte_values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "inspect/hex_dump.h"
#include "inspect/marked_bytes.h"

namespace kolvane::inspect {
namespace {

class ByteReaderTest : public testing::Test {
 protected:
  ByteReaderTest() { buffer_.fill(0xEE); }

  bool Read(const std::string& dump, Position caret, std::int32_t count) {
    view_ = {dump, caret, 0};
    return BuildByteBuf(count, view_, buffer_);
  }

  std::vector<int> First(std::size_t count) const {
    return {buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(count)};
  }

  DumpView view_;
  ByteBuffer buffer_;
};

TEST(HexPairTest, IsReadUpToTheFirstInvalidDigit) {
  EXPECT_EQ(HexPair('4', '1'), 0x41);
  EXPECT_EQ(HexPair('f', 'F'), 0xFF);
  EXPECT_EQ(HexPair('4', 'x'), 4);
  EXPECT_EQ(HexPair('4', ' '), 4);
  EXPECT_EQ(HexPair('x', '4'), 0);
  EXPECT_EQ(HexPair(' ', '4'), 4);
  EXPECT_EQ(HexPair(' ', 'x'), 0);
  EXPECT_EQ(HexPair('\r', '4'), 0);
  EXPECT_EQ(HexPair(' ', ' '), 0);
  EXPECT_EQ(HexPair('\0', '\0'), 0);
  EXPECT_EQ(HexPair('\xB2', '\xB3'), 0);
}

TEST_F(ByteReaderTest, OneByteIsReadAndSelected) {
  EXPECT_TRUE(Read(DumpOf(Ramp(16)), 14, 1));
  EXPECT_EQ(First(2), (std::vector<int>{4, 0xEE}));
  EXPECT_EQ(view_.caret, 14);
  EXPECT_EQ(view_.selected, 2);
}

TEST_F(ByteReaderTest, ReadingContinuesAcrossGroupsAndLines) {
  EXPECT_TRUE(Read(DumpOf(Ramp(48)), 5, 20));
  for (int i = 0; i < 20; ++i) EXPECT_EQ(buffer_[static_cast<std::size_t>(i)], i);
  EXPECT_EQ(view_.caret, 5);
  EXPECT_EQ(view_.selected, 67 + 6 - 5 + 2);
}

TEST_F(ByteReaderTest, ACaretOnAGroupsSpaceReadsOn) {
  EXPECT_TRUE(Read(DumpOf("ABCDEFGH"), 13, 3));
  EXPECT_EQ(First(3), (std::vector<int>{4, 'F', 'G'}));
}

TEST_F(ByteReaderTest, ACaretOnTheOffsetReadsItsDigits) {
  EXPECT_TRUE(Read(DumpOf(Ramp(48)), 62, 3));
  EXPECT_EQ(First(3), (std::vector<int>{0x00, 0x10, 0x11}));
}

TEST_F(ByteReaderTest, TheLastBytesOfTheDumpGiveFewerThanAskedFor) {
  const std::string dump = DumpOf(Ramp(32));
  EXPECT_TRUE(Read(dump, 62 + 36, 4));
  EXPECT_EQ(First(4), (std::vector<int>{0x1E, 0x1F, 0, 0xEE}));
  EXPECT_TRUE(Read(dump, 62 + 38, 4));
  EXPECT_EQ(First(3), (std::vector<int>{0x1F, 0, 0}));
  EXPECT_EQ(view_.caret, 62 + 38);
  EXPECT_EQ(view_.selected, 24);
}

TEST_F(ByteReaderTest, BeyondTheSelectedBytesOfALineAreZeros) {
  EXPECT_TRUE(Read(DumpOf("\x01\x02"), 5, 4));
  EXPECT_EQ(First(5), (std::vector<int>{1, 2, 0, 0, 0xEE}));
}

TEST_F(ByteReaderTest, ReadingStops22PositionsBeforeTheEnd) {
  const std::string dump = DumpOf(Ramp(16));
  EXPECT_TRUE(Read(dump, 40, 3));
  EXPECT_EQ(First(3), (std::vector<int>{0, 0, 0xEE}));
  EXPECT_TRUE(Read(dump, 41, 3));
  EXPECT_EQ(First(3), (std::vector<int>{0, 0, 0xEE}));
  EXPECT_EQ(view_.selected, 2);
}

TEST_F(ByteReaderTest, AnEmptyTextReadsAsZero) {
  EXPECT_TRUE(Read("", 0, 8));
  EXPECT_EQ(First(2), (std::vector<int>{0, 0xEE}));
  EXPECT_EQ(view_.selected, 0);
}

TEST_F(ByteReaderTest, TheBufferTakes257Bytes) {
  const std::string dump = DumpOf(Ramp(400));
  EXPECT_TRUE(Read(dump, 5, 256));
  EXPECT_EQ(buffer_[255], 255);
  EXPECT_EQ(buffer_[256], 0xEE);
  EXPECT_TRUE(Read(dump, 5, 257));
  EXPECT_EQ(buffer_[256], 0);
  EXPECT_EQ(view_.caret, 5);
  EXPECT_EQ(view_.selected, 16 * 62 + 2);
}

TEST_F(ByteReaderTest, ALargerCountFillsTheBufferAndStops) {
  const std::string dump = DumpOf(Ramp(400));
  for (const std::int32_t count : {258, 1000000000, 0, -1, std::numeric_limits<std::int32_t>::min()}) {
    buffer_.fill(0xEE);
    EXPECT_FALSE(Read(dump, 5, count)) << count;
    for (std::size_t i = 0; i < buffer_.size(); ++i) EXPECT_EQ(buffer_[i], i & 255);
    EXPECT_EQ(view_.caret, 16 * 62 + 7) << count;
    EXPECT_EQ(view_.selected, 0);
  }
}

TEST_F(ByteReaderTest, CountsBelowOneReadToTheEndOfAShortDump) {
  for (const std::int32_t count : {0, -1, 1000000000}) {
    buffer_.fill(0xEE);
    EXPECT_TRUE(Read(DumpOf(Ramp(16)), 5, count));
    EXPECT_EQ(First(18), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 0, 0xEE}));
    EXPECT_EQ(view_.selected, 57);
  }
}

TEST_F(ByteReaderTest, EveryCaretInAnyTextIsSafe) {
  const std::string texts[] = {DumpOf(Ramp(20)), "4", "zz\r\n", std::string(70, '\0'),
                               std::string(1, '\xFF')};
  for (const std::string& text : texts) {
    for (Position caret = 0; caret <= static_cast<Position>(text.size()); ++caret) {
      (void)Read(text, caret, 0);
      EXPECT_LE(view_.caret + view_.selected, view_.Length());
    }
  }
}

}  // namespace
}  // namespace kolvane::inspect
