#include "inspect/hex_dump.h"

#include <gtest/gtest.h>

#include "inspect/marked_bytes.h"

namespace kolvane::inspect {
namespace {

const std::string kTwoLines = DumpOf(Ramp(32));

Position Valid(Position caret) {
  DumpView view{kTwoLines, caret, 0};
  EnsureValidCaretPos(view);
  return view.caret;
}

Position AfterKey(int key_code, Position caret) {
  DumpView view{kTwoLines, caret, 3};
  PressKey(key_code, view);
  return view.caret;
}

TEST(CaretTest, TheOffsetFieldLeadsToTheLinesFirstByte) {
  for (const Position column : {0, 1, 2, 3, 4}) {
    EXPECT_EQ(Valid(column), 5) << column;
    EXPECT_EQ(Valid(62 + column), 67) << column;
  }
}

TEST(CaretTest, AFirstDigitIsKept) {
  for (const Position column : {5, 7, 9, 11, 14, 16, 18, 20, 23, 25, 27, 29, 32, 34, 36, 38}) {
    EXPECT_EQ(Valid(column), column);
    EXPECT_EQ(Valid(62 + column), 62 + column);
  }
}

TEST(CaretTest, ASecondDigitLeadsToTheNextPosition) {
  EXPECT_EQ(Valid(6), 7);
  EXPECT_EQ(Valid(10), 11);
  EXPECT_EQ(Valid(37), 38);
}

TEST(CaretTest, TheSecondDigitOfAGroupsLastByteLeadsOntoTheSpace) {
  for (const Position column : {12, 21, 30}) EXPECT_EQ(Valid(column), column + 1);
  for (const Position column : {13, 22, 31}) EXPECT_EQ(Valid(column), column + 1);
}

TEST(CaretTest, TheLinesLastDigitLeadsBack) {
  EXPECT_EQ(Valid(39), 38);
  EXPECT_EQ(Valid(62 + 39), 62 + 38);
}

TEST(CaretTest, APositionRightOfTheBytesLeadsToTheNextLine) {
  for (const Position column : {40, 44, 59, 60, 61}) EXPECT_EQ(Valid(column), 67) << column;
}

TEST(CaretTest, AfterTheLastLineIsTheTextsEnd) {
  for (const Position column : {40, 61}) EXPECT_EQ(Valid(62 + column), 124) << column;
  DumpView empty;
  EnsureValidCaretPos(empty);
  EXPECT_EQ(empty.caret, 0);
}

TEST(CaretTest, RightGoesTwoPositionsUpToTheEnd) {
  EXPECT_EQ(AfterKey(key::kRight, 5), 7);
  EXPECT_EQ(AfterKey(key::kRight, 122), 124);
  EXPECT_EQ(AfterKey(key::kRight, 123), 123);
  EXPECT_EQ(AfterKey(key::kRight, 124), 124);
}

TEST(CaretTest, LeftGoesTwoPositionsFromTheThirdOn) {
  EXPECT_EQ(AfterKey(key::kLeft, 7), 5);
  EXPECT_EQ(AfterKey(key::kLeft, 3), 1);
  EXPECT_EQ(AfterKey(key::kLeft, 2), 2);
  EXPECT_EQ(AfterKey(key::kLeft, 0), 0);
}

TEST(CaretTest, NoOtherKeyMovesAnything) {
  for (int code = 0; code < 256; ++code) {
    if (code == key::kLeft || code == key::kRight) continue;
    DumpView view{kTwoLines, 7, 2};
    PressKey(code, view);
    EXPECT_EQ(view.caret, 7) << code;
    EXPECT_EQ(view.selected, 2) << code;
  }
}

TEST(CaretTest, RightFromALinesLastByteReachesTheNextLine) {
  const Position right = AfterKey(key::kRight, 38);
  EXPECT_EQ(right, 40);
  EXPECT_EQ(Valid(right), 67);
}

TEST(CaretTest, LeftFromALinesFirstByteReturnsToIt) { EXPECT_EQ(Valid(AfterKey(key::kLeft, 67)), 67); }

TEST(CaretTest, LeftFromAGroupsFirstByteStopsAtTheSpaceBeforeIt) {
  const Position left = Valid(AfterKey(key::kLeft, 14));
  EXPECT_EQ(left, 13);
  EXPECT_EQ(Valid(AfterKey(key::kLeft, left)), 11);
}

TEST(CaretTest, LeftFromTheTextsEndReturnsToIt) { EXPECT_EQ(Valid(AfterKey(key::kLeft, 124)), 124); }

TEST(CaretTest, LeftHeldDownReachesTheLineBefore) {
  Position caret = 67;
  for (int repeat = 0; repeat < 14; ++repeat) caret = AfterKey(key::kLeft, caret);
  EXPECT_EQ(Valid(caret), 38);
}

}  // namespace
}  // namespace kolvane::inspect
