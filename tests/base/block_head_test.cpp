#include "base/block_head.h"

#include <gtest/gtest.h>

#include <string_view>

namespace kolvane::base {
namespace {

/// The result of passing all bytes: how many were taken, and the length if the head is complete.
struct Taken {
  std::size_t bytes = 0;
  bool whole = false;
  bool counted = false;
  std::size_t length = 0;
  bool operator==(const Taken&) const = default;
};

Taken Take(std::string_view bytes) {
  BlockHead head;
  for (const char byte : bytes)
    if (head.IsWhole() || !head.Take(byte)) break;
  return {head.bytes(), head.IsWhole(), head.IsCounted(), head.length()};
}

TEST(BlockHead, ReportsHowManyBytesFollow) {
  EXPECT_EQ(Take("#15abcde"), (Taken{3, true, true, 5}));
  EXPECT_EQ(Take("#3200"), (Taken{5, true, true, 200}));
  EXPECT_EQ(Take("#10"), (Taken{3, true, true, 0}));
  EXPECT_EQ(Take("#9999999999"), (Taken{11, true, true, 999'999'999}));
}

TEST(BlockHead, MayLackTheLength) { EXPECT_EQ(Take("#0123"), (Taken{2, true, false, 0})); }

TEST(BlockHead, StopsAtAByteThatIsNotPartOfIt) {
  EXPECT_EQ(Take(""), Taken{});
  EXPECT_EQ(Take("12.5"), Taken{});
  EXPECT_EQ(Take("#H1F"), (Taken{1, false, false, 0}));
  EXPECT_EQ(Take("#21x"), (Taken{3, false, true, 1}));
  EXPECT_EQ(Take("#2"), (Taken{2, false, true, 0}));
}

}  // namespace
}  // namespace kolvane::base
