#include "device/test_answer.h"

#include <gtest/gtest.h>

#include <string>

namespace kolvane::device {
namespace {

TEST(WriteTerminatorCode, FollowsItsTable) {
  EXPECT_EQ(WriteTerminatorCode("\r\n"), 2);
  EXPECT_EQ(WriteTerminatorCode("\n"), 10);
  EXPECT_EQ(WriteTerminatorCode("\r"), 13);
  EXPECT_EQ(WriteTerminatorCode(std::string(1, '\0')), 0);
  EXPECT_EQ(WriteTerminatorCode("ÿ"), 255);
  EXPECT_EQ(WriteTerminatorCode("€"), 128);
  EXPECT_EQ(WriteTerminatorCode(""), -1);
}

TEST(WriteTerminatorCode, HasNoneForSeveralCharacters) {
  EXPECT_EQ(WriteTerminatorCode("END"), -1);
  EXPECT_EQ(WriteTerminatorCode("\n\r"), -1);
}

TEST(ReadTerminatorCode, FollowsItsTable) {
  EXPECT_EQ(ReadTerminatorCode("\r\n"), 10);
  EXPECT_EQ(ReadTerminatorCode("\n"), 10);
  EXPECT_EQ(ReadTerminatorCode("\r"), 13);
  EXPECT_EQ(ReadTerminatorCode("ÿ"), 255);
  EXPECT_EQ(ReadTerminatorCode(""), 0);
}

TEST(ReadTerminatorCode, TakesTheLastOfSeveralCharacters) { EXPECT_EQ(ReadTerminatorCode("END"), 'D'); }

}  // namespace
}  // namespace kolvane::device
