#include "inspect/hex_dump.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "inspect/marked_bytes.h"

namespace kolvane::inspect {
namespace {

std::string Line(const std::string& dump, std::size_t line) { return dump.substr(line * 62, 62); }

TEST(HexDumpTest, AByteIsShownAsDigitsAndAsCharacter) {
  EXPECT_EQ(BuildDump("<41><42><43>"), "0000 414243                                 ABC.............\r\n");
}

TEST(HexDumpTest, SixteenBytesFillALine) {
  EXPECT_EQ(BuildDump(Marked("ABCDEFGHIJKLMNOP")),
            "0000 41424344 45464748 494A4B4C 4D4E4F50    ABCDEFGHIJKLMNOP\r\n");
}

TEST(HexDumpTest, TheSeventeenthByteStartsALineWithItsOffset) {
  const std::string dump = DumpOf(Ramp(17));
  ASSERT_EQ(dump.size(), 124u);
  EXPECT_EQ(Line(dump, 0), "0000 00010203 04050607 08090A0B 0C0D0E0F    ................\r\n");
  EXPECT_EQ(Line(dump, 1), "0016 10                                     ................\r\n");
}

TEST(HexDumpTest, AnEmptySelectionHasNoLine) {
  EXPECT_EQ(BuildDump(""), "");
  EXPECT_EQ(BuildDump(">"), "");
  EXPECT_EQ(BuildDump("4"), "");
  EXPECT_EQ(BuildDump("<>"), "");
}

TEST(HexDumpTest, TheLastCharacterIsIgnored) {
  EXPECT_EQ(BuildDump("<41><42").substr(0, 12), "0000 414    ");
  EXPECT_EQ(BuildDump("414"), "0000 41                                     A...............\r\n");
  EXPECT_EQ(BuildDump("4142"), "0000 414                                    A...............\r\n");
}

TEST(HexDumpTest, APartOfALineThatDoesNotEndInADigitIsLost) {
  EXPECT_EQ(BuildDump("<41><4"), "");
  EXPECT_EQ(BuildDump("<41> "), "");
  EXPECT_EQ(BuildDump(Marked(Ramp(17)) + " ").size(), 62u);
  EXPECT_EQ(BuildDump(Marked(Ramp(16)) + "<4").size(), 62u);
}

TEST(HexDumpTest, EveryCharacterExceptTheBracketsCountsAsADigit) {
  EXPECT_EQ(BuildDump("<41>\r\n<42>"), "0000 41\r\n42                                 A.B.............\r\n");
  EXPECT_EQ(BuildDump("x y\xFCz<41>").substr(0, 16), "0000 x y\xFCz41    ");
  EXPECT_EQ(BuildDump(std::string("\0<41>", 5)).substr(5, 3), std::string("\0"
                                                                          "41",
                                                                          3));
}

TEST(HexDumpTest, AnInvalidHexadecimalNumberIsAPoint) {
  EXPECT_EQ(Line(BuildDump("zz4141"), 0).substr(44, 3), ".A.");
  EXPECT_EQ(Line(BuildDump("5z41x"), 0).substr(44, 2), ".A");
}

TEST(HexDumpTest, CharactersFrom32To127AreShown) {
  EXPECT_EQ(Line(DumpOf("\x1F\x20\x7E\x7F\x80\xFF"), 0).substr(44, 6), ". ~\x7F..");
}

TEST(HexDumpTest, LowerCaseDigitsStayAsTheyAre) {
  EXPECT_EQ(BuildDump("<4a>.").substr(0, 7), "");
  EXPECT_EQ(BuildDump("<4a>").substr(0, 46), "0000 4a                                     J.");
}

TEST(HexDumpTest, OffsetsFrom10000OnReplaceTheSpace) {
  const std::string dump = DumpOf(Ramp(10016));
  EXPECT_EQ(Line(dump, 624).substr(0, 9), "9984 0001");
  EXPECT_EQ(Line(dump, 625).substr(0, 9), "100001011");
  EXPECT_EQ(dump.size(), 626u * 62);
}

TEST(HexDumpTest, TheLargestDumpHas2047Lines) {
  const std::string dump = DumpOf(Ramp(32752));
  EXPECT_EQ(dump.size(), 2047u * 62);
  EXPECT_EQ(Line(dump, 2046).substr(0, 13), "32736E0E1E2E3");
}

TEST(HexDumpTest, OneMoreLineOverflows) {
  for (const std::size_t bytes : {32768u, 32769u, 40000u}) {
    try {
      (void)DumpOf(Ramp(bytes));
      ADD_FAILURE() << bytes;
    } catch (const base::RuntimeError& error) {
      EXPECT_EQ(error.kind(), base::RuntimeError::Kind::kOverflow);
    }
  }
  // A line that is not finished does not count.
  EXPECT_EQ(BuildDump(Marked(Ramp(32753)) + " ").size(), 2047u * 62);
}

TEST(HexDumpTest, BytesAreInSixteenColumns) {
  std::string columns;
  for (Position column = 0; column < kLineLength; ++column) columns += IsByteColumn(column) ? 'x' : '-';
  EXPECT_EQ(columns, "-----x-x-x-x--x-x-x-x--x-x-x-x--x-x-x-x-----------------------");
}

TEST(DumpOfBytes, IsTheDumpOfTheSameBytesSelected) {
  std::string all;
  for (int i = 0; i < 700; ++i) all += static_cast<char>(i * 7);
  for (const std::size_t length : {0u, 1u, 15u, 16u, 17u, 700u}) {
    const std::string bytes = all.substr(0, length);
    const std::string dump = DumpOfBytes(bytes);
    EXPECT_EQ(dump, DumpOf(bytes)) << length;
    EXPECT_EQ(BytesOf(dump), bytes) << length;
  }
  const std::string most(kMaxDumpBytes, 'x');
  EXPECT_EQ(DumpOfBytes(most), DumpOf(most));
}

TEST(BytesOf, TakesASingleDigitForAByte) {
  EXPECT_EQ(BytesOf(BuildDump("<41><4>")), "A\x04");
  EXPECT_EQ(BytesOf(BuildDump("<41><  ><42>")), std::string("A\0B", 3));
}

TEST(ByteAtPosition, IsThatOfTheDigitsOrTheOneBefore) {
  for (std::size_t byte = 0; byte < 40; ++byte) {
    EXPECT_EQ(ByteAtPosition(PositionOfByte(byte)), byte);
    EXPECT_EQ(ByteAtPosition(PositionOfByte(byte) + 1), byte);
  }
  EXPECT_EQ(ByteAtPosition(0), 0u);
  EXPECT_EQ(ByteAtPosition(PositionOfByte(3) + 2), 3u);
  EXPECT_EQ(ByteAtPosition(kCharacters), 15u);
}

TEST(AppendDumpLine, ContinuesPastTheOffsetsOfTheInspector) {
  std::string line;
  AppendDumpLine(100000, "A", line);
  EXPECT_TRUE(line.starts_with("100000 41 "));
  EXPECT_TRUE(line.ends_with("    A..............."));
}

}  // namespace
}  // namespace kolvane::inspect
