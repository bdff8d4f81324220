#include <gtest/gtest.h>

#include "inspect/template_bench.h"
#include "inspect/texts.h"

namespace kolvane::inspect {
namespace {

using TemplateLimitsTest = TemplateBench;
using namespace std::string_literals;

TEST_F(TemplateLimitsTest, AnOffsetOutsideTheBufferKeepsTheValueOfTheKind) {
  Show("\x07\x08\x09\x0A\0\0\x80\x3F"s);
  EXPECT_EQ(
      Run("BYTECOUNT=8|a;BYTE;-1|b;BYTE;0|c;SHORT;0|d;BYTE;257|e;SHORT;-1|f;LONG;9999|g;FLOAT;4|h;FLOAT;-5"),
      (Lines{"a=0", "b=7", "c=2055", "d=7", "e=2055", "f=0", "g=1", "h=1"}));
}

TEST_F(TemplateLimitsTest, AKeptValueIsNotSwappedAgain) {
  Show("\x01\x02"s);
  form_.network_order = true;
  EXPECT_EQ(Run("BYTECOUNT=2|a;SHORT;0|b;SHORT;300"), (Lines{"a=258", "b=258"}));
}

TEST_F(TemplateLimitsTest, AKeptValueTakesTheLinesOwnBits) {
  Show("\x07"s);
  EXPECT_EQ(Run("BYTECOUNT=1|a;BYTE;0|b;BYTE;300;1;2"), (Lines{"a=7", "b=6"}));
}

TEST_F(TemplateLimitsTest, TheLastOffsetIs256) {
  Show(Ramp(400));
  EXPECT_EQ(Run("BYTECOUNT=257|a;BYTE;255|b;BYTE;256|c;SHORT;255|d;SHORT;256|e;DOUBLE;256"),
            (Lines{"a=255", "b=0", "c=255", "d=0", "e=0"}));
}

TEST_F(TemplateLimitsTest, AnOffsetThatIsNotA32BitNumberKeepsTheOneBefore) {
  Show("\x07\x08"s);
  EXPECT_EQ(Run("BYTECOUNT=2|a;BYTE;1|b;BYTE;2147483648|c;BYTE;1e300|d;BYTE;2147483647"),
            (Lines{"a=8", "b=8", "c=8", "d=8"}));
}

TEST_F(TemplateLimitsTest, ABitNumberThatIsNotA16BitNumberKeepsTheOneBefore) {
  Show("\x06"s);
  EXPECT_EQ(
      Run("BYTECOUNT=1|a;BYTE;0;99999|b;BYTE;0;1|c;BYTE;0;32768|d;BYTE;0;0;2|e;BYTE;0;0;1e9|f;BYTE;0;-32769"),
      (Lines{"a=0", "b=1", "c=1", "d=6", "e=6", "f=0"}));
}

TEST_F(TemplateLimitsTest, AHugeRangeOfBitsIsQuick) {
  Show("\xFF"s);
  std::string fields = "BYTECOUNT=1";
  for (int line = 0; line < 1000; ++line) fields += "|a;BYTE;0;-32768;32767";
  EXPECT_EQ(Run(fields), Lines(1000, "a=255"));
}

TEST_F(TemplateLimitsTest, CountsAtAndBeyondTheBuffer) {
  Show(Ramp(400));
  for (const char* count : {"256", "257"}) {
    EXPECT_EQ(Run("BYTECOUNT="s + count + "|a;BYTE;255"), (Lines{"a=255"}));
    EXPECT_EQ(view_.caret, 5);
    EXPECT_GT(view_.selected, 0);
  }
  for (const char* count : {"258", "1e9", "0", "-1", "-1e9", "x"}) {
    Show(Ramp(400));
    EXPECT_EQ(Run("BYTECOUNT="s + count + "|a;BYTE;255|b;BYTE;256"), (Lines{"a=255", "b=0"})) << count;
    EXPECT_EQ(view_.selected, 0) << count;
  }
}

TEST_F(TemplateLimitsTest, ACountThatIsNotA32BitNumberKeepsTheOneBefore) {
  Show(Ramp(400));
  Run("BYTECOUNT=3|BYTECOUNT=99999999999");
  EXPECT_EQ(view_.selected, 6);
}

TEST_F(TemplateLimitsTest, TextsEndWithTheBuffer) {
  Show(Ramp(400));
  const Lines lines =
      Run("BYTECOUNT=257|a;STRING*257;0|b;STRING*258;0|c;STRING*1000000000;0|d;STRING*2147483647;250");
  const std::string whole = '"' + Ramp(257) + '"';
  EXPECT_EQ(lines, (Lines{"a=" + whole, "b=" + whole, "c=" + whole, "d=\"" + Ramp(257).substr(250) + '"'}));
}

TEST_F(TemplateLimitsTest, TextsOfNoLengthAreEmpty) {
  Show("ABCD");
  EXPECT_EQ(Run("BYTECOUNT=4|a;STRING*0;0|b;STRING*-1;0|c;STRING*;0|d;STRING*x;0|e;STRING*-2147483648;0"),
            (Lines{"a=\"\"", "b=\"\"", "c=\"\"", "d=\"\"", "e=\"\""}));
}

TEST_F(TemplateLimitsTest, TextsTakeTheirPartInsideTheBuffer) {
  Show("ABCD");
  EXPECT_EQ(Run("BYTECOUNT=4|a;STRING*4;-2|b;STRING*4;-9|c;STRING*4;257|d;STRING*2147483647;-2147483648"),
            (Lines{"a=\"AB\"", "b=\"\"", "c=\"\"", "d=\"\""}));
  EXPECT_EQ(Run("e;STRING*2147483647;2147483647"), (Lines{"e=\"\""}));
}

TEST_F(TemplateLimitsTest, ALengthThatIsNotA32BitNumberKeepsTheOneBefore) {
  Show("ABCD");
  EXPECT_EQ(Run("BYTECOUNT=4|a;STRING*99999999999;0|b;STRING*2;0|c;STRING*99999999999;1"),
            (Lines{"a=\"\"", "b=\"AB\"", "c=\"BC\""}));
}

TEST_F(TemplateLimitsTest, EmptyAndMeaninglessFilesGiveNoLines) {
  EXPECT_EQ(Run(""), Lines{});
  EXPECT_EQ(TemplateTexts("\0\0\x1A\xFF\r\r\n\n"s, form_, view_, buffer_), Lines{});
  EXPECT_EQ(Run(";"), Lines{});
  EXPECT_EQ(Run(";;;;;;;;"), Lines{});
}

TEST_F(TemplateLimitsTest, NulIsACharacterLikeOthers) {
  EXPECT_EQ(TemplateTexts("a\0b;BYTE;0\0"s, form_, view_, buffer_), (Lines{"a\0b=0"s}));
}

TEST_F(TemplateLimitsTest, LinesMayBeOfAnyLength) {
  const std::string mebibyte(1 << 20, 'x');
  const std::string digits(1 << 20, '1');
  const std::string spaces(1 << 20, ' ');
  Show("A");
  Run("BYTECOUNT=1");
  EXPECT_EQ(Run(mebibyte), Lines{});
  EXPECT_EQ(Run(mebibyte + ";BYTE;0"), (Lines{mebibyte + "=65"}));
  EXPECT_EQ(Run("a;" + mebibyte + ";0|b;BYTE;" + spaces + "0;" + spaces), (Lines{"b=1"}));
  EXPECT_EQ(Run("a;BYTE;0;0;1;" + mebibyte), (Lines{"a=1"}));
  EXPECT_EQ(Run("a;BYTE;" + digits + "|b;STRING*" + digits + ";0|BYTECOUNT=" + digits),
            (Lines{"a=65", "b=\"\""}));
}

// The word of the help and of the dialog.
TEST(TemplateProblemText, NamesThePosition) {
  using Kind = TemplateProblem::Kind;
  EXPECT_EQ(texts::Problem(3, Kind::kOffset, "x"), "Zeile 3: Position „x“ ist keine Zahl");
  EXPECT_EQ(texts::Problem(3, Kind::kOutside, "300"),
            "Zeile 3: Position „300“ führt über die 257 gelesenen Bytes hinaus");
  EXPECT_EQ(texts::Problem(1, Kind::kByteCount, "x"), "Zeile 1: Länge „x“ hinter BYTECOUNT= ist keine Zahl");
}

}  // namespace
}  // namespace kolvane::inspect
