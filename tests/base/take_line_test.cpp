#include "base/text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kolvane::base {
namespace {

using namespace std::string_literals;

TEST(TakeLineTest, EachLineEndCountsOnceAndTheLastLineMayLackIt) {
  EXPECT_EQ(LinesOf("a\r\nb\nc\rd"), (std::vector<std::string>{"a", "b", "c", "d"}));
  EXPECT_EQ(LinesOf("a\r\n\r\n"), (std::vector<std::string>{"a", ""}));
  EXPECT_EQ(LinesOf("\n\r"), (std::vector<std::string>{"", ""}));
}

TEST(TakeLineTest, NulEndsNoLine) { EXPECT_EQ(LinesOf("a\0b\n"s), std::vector<std::string>{"a\0b"s}); }

}  // namespace
}  // namespace kolvane::base
