#include "kolvane/Variant.h"

#include <gtest/gtest.h>

namespace kolvane {
namespace {

TEST(Variant, ConvertsToNumbers) {
  EXPECT_EQ(Variant(true).ToInt16(), -1);
  EXPECT_EQ(Variant(2.5).ToInt32(), 2);
  EXPECT_EQ(Variant("100").ToInt16(), 100);
}

TEST(Variant, RefusesTextsThatAreNotANumber) {
  EXPECT_THROW(Variant("zwei").ToInt16(), RuntimeError);
  EXPECT_THROW(Variant(Bytes{1}).ToInt32(), RuntimeError);
  EXPECT_THROW(Variant().ToInt16(), RuntimeError);
  EXPECT_THROW(Variant().ToInt32(), RuntimeError);
  EXPECT_THROW(Variant().ToBool(), RuntimeError);
  EXPECT_EQ(Variant(32767).ToInt16(), 32767);
  EXPECT_THROW(Variant(32768).ToInt16(), RuntimeError);
}

TEST(Variant, ConvertsToText) {
  EXPECT_EQ(Variant().ToText(), "");
  EXPECT_EQ(Variant(7).ToText(), "7");
  EXPECT_EQ(Variant(1.5).ToText(), "1.5");
  EXPECT_EQ(Variant(true).ToText(), "-1");
  EXPECT_EQ(Variant(Bytes{0xE4, 0}).ToText(), std::string("ä\0", 3));
}

TEST(Variant, ConvertsToBytes) {
  EXPECT_EQ(Variant("ä€").ToBytes(), (Bytes{0xE4, 0x80}));
  EXPECT_EQ(Variant().ToBytes(), Bytes{});
  EXPECT_THROW(Variant(1).ToBytes(), RuntimeError);
}

}  // namespace
}  // namespace kolvane
