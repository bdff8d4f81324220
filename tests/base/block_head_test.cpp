#include "base/block_head.h"

#include <gtest/gtest.h>

#include <string_view>

namespace kolvane::base {
namespace {

/// The result of passing all bytes: how many were taken, and the length if the head is complete.
struct ParsedHead {
  std::size_t bytes = 0;
  bool whole = false;
  bool counted = false;
  std::size_t length = 0;
  bool operator==(const ParsedHead&) const = default;
};

ParsedHead Parse(std::string_view bytes) {
  BlockHead head;
  for (const char byte : bytes)
    if (head.IsWhole() || !head.Take(byte)) break;
  return {head.bytes(), head.IsWhole(), head.IsCounted(), head.length()};
}

TEST(BlockHead, ReportsHowManyBytesFollow) {
  EXPECT_EQ(Parse("#15abcde"), (ParsedHead{3, true, true, 5}));
  EXPECT_EQ(Parse("#3200"), (ParsedHead{5, true, true, 200}));
  EXPECT_EQ(Parse("#10"), (ParsedHead{3, true, true, 0}));
  EXPECT_EQ(Parse("#9999999999"), (ParsedHead{11, true, true, 999'999'999}));
}

TEST(BlockHead, MayLackTheLength) { EXPECT_EQ(Parse("#0123"), (ParsedHead{2, true, false, 0})); }

TEST(BlockHead, StopsAtAByteThatIsNotPartOfIt) {
  EXPECT_EQ(Parse(""), ParsedHead{});
  EXPECT_EQ(Parse("12.5"), ParsedHead{});
  EXPECT_EQ(Parse("#H1F"), (ParsedHead{1, false, false, 0}));
  EXPECT_EQ(Parse("#21x"), (ParsedHead{3, false, true, 1}));
  EXPECT_EQ(Parse("#2"), (ParsedHead{2, false, true, 0}));
}

}  // namespace
}  // namespace kolvane::base
