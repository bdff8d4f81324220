#include <gtest/gtest.h>

#include "inspect/template_bench.h"

namespace kolvane::inspect {
namespace {

using TemplateRunTest = TemplateBench;
using namespace std::string_literals;

TEST_F(TemplateRunTest, FieldsAreReadFromTheCaretOn) {
  Show("\x08\x0F\0\0"s);
  EXPECT_EQ(Run("BYTECOUNT=4|Status;BYTE;0;3|Flags;SHORT;0;0;3|Value;LONG;0"),
            (Lines{"Status=1", "Flags=8", "Value=3848"}));
  EXPECT_EQ(view_.caret, 5);
  EXPECT_EQ(view_.selected, 8);
}

TEST(TemplateFields, LieWithinTheirRecordOrNot) {
  const auto within = [](std::int32_t offset, std::int32_t length) {
    TemplateField field;
    field.offset = offset;
    field.length = length;
    return IsWithin(field, 4);
  };
  EXPECT_TRUE(within(0, 4));
  EXPECT_TRUE(within(4, 0));
  EXPECT_FALSE(within(1, 4));
  EXPECT_FALSE(within(-1, 2));
  EXPECT_FALSE(within(2, -1));
}

TEST_F(TemplateRunTest, NetworkOrderSwapsAllButDoubles) {
  Show("\x01\x02\x03\x04\x05\x06\x07\x08"s);
  const std::string fields = "BYTECOUNT=8|b;BYTE;1|s;SHORT;0|l;LONG;0|f;FLOAT;0|d;DOUBLE;0";
  EXPECT_EQ(Run(fields), (Lines{"b=2", "s=513", "l=67305985", "f=1,53999E-36", "d=5,44760372201161E-270"}));
  form_.network_order = true;
  EXPECT_EQ(Run(fields), (Lines{"b=2", "s=258", "l=16909060", "f=2,387939E-38", "d=5,44760372201161E-270"}));
}

TEST_F(TemplateRunTest, SignedAndUnsigned) {
  Show("\xFF\xFF\xFF\xFF"s);
  EXPECT_EQ(Run("BYTECOUNT=4|b;BYTE;0|s;SHORT;0|l;LONG;0"), (Lines{"b=255", "s=-1", "l=-1"}));
}

TEST_F(TemplateRunTest, FloatsHaveTheLocalesSignAndTheirOwnDigits) {
  Show("\xDB\x0F\x49\x40\x18\x2D\x44\x54\xFB\x21\x09\x40"s);
  const std::string fields = "BYTECOUNT=12|f;FLOAT;0|d;DOUBLE;4";
  EXPECT_EQ(Run(fields), (Lines{"f=3,141593", "d=3,14159265358979"}));
  form_.decimal_sign = ".";
  EXPECT_EQ(Run(fields), (Lines{"f=3.141593", "d=3.14159265358979"}));
}

TEST_F(TemplateRunTest, ATextIsQuotedWithEveryByte) {
  Show("ABCD\0\xE4\r\"x"s);
  EXPECT_EQ(Run("BYTECOUNT=9|Name;STRING*4;0|Rest;STRING*5;4"),
            (Lines{"Name=\"ABCD\"", "Rest=\"\0\xE4\r\"x\""s}));
}

TEST_F(TemplateRunTest, FixedKeywordsMatchInAnyCaseTextOnlyInUpperCase) {
  Show("ABCD");
  EXPECT_EQ(Run("BYTECOUNT=1|Name;byte;0|x;string*4;0|y;String*4;0|z;ByTe;0"), (Lines{"Name=65", "z=65"}));
}

TEST_F(TemplateRunTest, SpacesInTheTypeFailOnlyFixedKeywords) {
  Show("ABCD");
  EXPECT_EQ(Run("BYTECOUNT=4|a; BYTE;0|b;BYTE ;0|c; my STRING*2 ;0|d;XSTRING*2X;0"),
            (Lines{"c=\"AB\"", "d=\"AB\""}));
}

TEST_F(TemplateRunTest, UnknownTypesAddNothing) {
  Show("ABCD");
  EXPECT_EQ(Run("BYTECOUNT=4|a;WORD;0|b;;0|c;BYTES;0"), Lines{});
}

TEST_F(TemplateRunTest, RemarksAndEmptyLinesAreSkipped) {
  Show("A");
  EXPECT_EQ(Run("a remark||   |BYTECOUNT=1|\tand another|a;BYTE;0|"), (Lines{"a=65"}));
}

TEST_F(TemplateRunTest, NamesAreTakenUnchanged) {
  Show("A");
  EXPECT_EQ(Run("BYTECOUNT=1|  a b ;BYTE;0  |;BYTE;0|\xE4=;BYTE;0"), (Lines{"a b =65", "=65", "\xE4==65"}));
}

TEST_F(TemplateRunTest, OffsetsAreDecimalOrHexadecimalPrefixes) {
  Show(Ramp(32));
  EXPECT_EQ(Run("BYTECOUNT=32|a;BYTE;&H10|b;BYTE; 1 6 x|c;BYTE;1.5|d;BYTE;2.5|e;BYTE;x|f;BYTE;1e1|g;BYTE;"),
            (Lines{"a=16", "b=16", "c=2", "d=2", "e=0", "f=10", "g=0"}));
}

TEST_F(TemplateRunTest, ALineWithoutOffsetTakesTheOneBefore) {
  Show("\x07\x08\x09"s);
  EXPECT_EQ(Run("BYTECOUNT=3|a;BYTE|b;BYTE;2|c;BYTE|d;NONE;1|e;BYTE"), (Lines{"a=7", "b=9", "c=9", "e=8"}));
}

TEST_F(TemplateRunTest, BitsAreThoseOfTheLineItself) {
  Show("\xF6\x7F"s);
  EXPECT_EQ(Run("BYTECOUNT=2|a;BYTE;0;1|b;BYTE;0;0|c;BYTE;0;4;7|d;BYTE;0|e;SHORT;0;8|f;BYTE;0;|g;BYTE;0;2;"),
            (Lines{"a=1", "b=0", "c=240", "d=246", "e=1", "f=0"}));
}

TEST_F(TemplateRunTest, Bit15NeverCounts) {
  Show("\xFF\xFF\xFF\xFF"s);
  EXPECT_EQ(Run("BYTECOUNT=4|a;SHORT;0;0;15|b;LONG;0;0;31|c;SHORT;0;15|d;SHORT;0;14|e;LONG;0;15;16"),
            (Lines{"a=32767", "b=32767", "d=1", "e=0"}));
}

TEST_F(TemplateRunTest, AReversedRangeLeavesTheLineOut) {
  Show("\xFF"s);
  EXPECT_EQ(Run("BYTECOUNT=1|a;BYTE;0;3;1|b;BYTE;0;-1|c;BYTE;0"), (Lines{"c=255"}));
}

TEST_F(TemplateRunTest, FloatsAndTextsIgnoreBits) {
  Show("\0\0\x80\x3F\0\0\0\0\0\0\xF0\x3F"s);
  EXPECT_EQ(Run("BYTECOUNT=12|a;FLOAT;0;0|b;DOUBLE;4;3;1|c;STRING*1;3;1"), (Lines{"a=1", "b=1", "c=\"?\""}));
}

TEST_F(TemplateRunTest, FieldsBeyondTheFifthAreIgnored) {
  Show("\xFF"s);
  EXPECT_EQ(Run("BYTECOUNT=1|a;BYTE;0;0;1;9;x;;;"), (Lines{"a=3"}));
}

TEST_F(TemplateRunTest, TheByteCountMayBeAnywhereInItsLine) {
  Show(Ramp(16));
  EXPECT_EQ(Run("please ByteCount=3 bytes;BYTE;0"), Lines{});
  EXPECT_EQ(view_.selected, 6);
}

TEST_F(TemplateRunTest, TheCountIsReadFromTheUnstrippedLine) {
  Show(Ramp(32));
  // With two spaces before it, the text that is read starts with "T=" and is not a number.
  Run("  BYTECOUNT=3");
  EXPECT_EQ(view_.selected, 2 * 62 - 5);
  Run("BYTECOUNT=3  ");
  EXPECT_EQ(view_.selected, 6);
  Run(" BYTECOUNT=3");
  EXPECT_EQ(view_.selected, 2 * 62 - 5);
}

TEST_F(TemplateRunTest, LaterCountsReadAgain) {
  Show(Ramp(16));
  EXPECT_EQ(Run("BYTECOUNT=4|a;LONG;0|BYTECOUNT=1|b;LONG;0"), (Lines{"a=50462976", "b=50462976"}));
  EXPECT_EQ(view_.selected, 2);
}

TEST_F(TemplateRunTest, WithoutACountTheBufferKeepsTheLastRead) {
  Show("\x05"s);
  EXPECT_EQ(Run("a;LONG;0|b;STRING*2;255"), (Lines{"a=0", "b=\"\0\0\""s}));
  Run("BYTECOUNT=1");
  EXPECT_EQ(Run("a;LONG;0"), (Lines{"a=5"}));
}

TEST_F(TemplateRunTest, AByteOrderMarkMakesItUtf8) {
  Show("\x05");
  EXPECT_EQ(Run("BYTECOUNT=1|Gr\xC3\xB6\xC3\x9F"
                "e;BYTE;0"),
            Lines{"Gr\xC3\xB6\xC3\x9F"
                  "e=5"});
  EXPECT_EQ(Run("\xEF\xBB\xBFGr\xC3\xB6\xC3\x9F"
                "e;BYTE;0|\xE2\x86\x92;BYTE;0"),
            (Lines{"Gr\xF6\xDF"
                   "e=5",
                   "?=5"}));
  EXPECT_EQ(Run("\xEF\xBB\xBF\xF6;BYTE;0"), Lines{"\xEF\xBB\xBF\xF6=5"}) << "not UTF-8 after all";
}

TEST_F(TemplateRunTest, LinesMayHaveLineEndsOfOtherSystems) {
  EXPECT_EQ(TemplateTexts("a;BYTE;0\nb;BYTE;0\rc;BYTE;0", form_, view_, buffer_),
            (Lines{"a=0", "b=0", "c=0"}));
}

}  // namespace
}  // namespace kolvane::inspect
