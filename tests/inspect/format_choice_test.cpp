#include "inspect/decode.h"

#include <gtest/gtest.h>

namespace kolvane::inspect {
namespace {

TEST(FormatChoiceTest, StartsWithTheByteAndAnEmptyBuffer) {
  const InspectorState state;
  EXPECT_EQ(state.format_code, 0);
  EXPECT_EQ(state.buffer, ByteBuffer{});
}

TEST(FormatChoiceTest, OptionsBelowFiveAreTheirOwnCode) {
  InspectorState state;
  for (int option = 0; option < 5; ++option) {
    EXPECT_FALSE(ClickFormat(state, option, 0).lines_shown);
    EXPECT_EQ(state.format_code, option);
  }
}

TEST(FormatChoiceTest, TheOptionShowsTheLinesOfTheFirstTemplateOnly) {
  InspectorState state;
  EXPECT_TRUE(ClickFormat(state, 5, 0).lines_shown);
  EXPECT_EQ(state.format_code, 5);
  EXPECT_FALSE(ClickFormat(state, 5, 1).lines_shown);
  EXPECT_EQ(state.format_code, 6);
  EXPECT_FALSE(ClickFormat(state, 5, 2).lines_shown);
  EXPECT_EQ(state.format_code, 7);
}

TEST(FormatChoiceTest, WithoutTemplatesTheirOptionMeansTheDouble) {
  InspectorState state;
  EXPECT_FALSE(ClickFormat(state, 5, -1).lines_shown);
  EXPECT_EQ(state.format_code, format::kDouble);
}

TEST(FormatChoiceTest, TheListShowsTheLinesOfTheSecondTemplateOnly) {
  InspectorState state;
  EXPECT_FALSE(ClickTemplate(state, 0).lines_shown);
  EXPECT_EQ(state.format_code, 5);
  EXPECT_TRUE(ClickTemplate(state, 1).lines_shown);
  EXPECT_EQ(state.format_code, 6);
  EXPECT_FALSE(ClickTemplate(state, 2).lines_shown);
  EXPECT_EQ(state.format_code, 7);
}

}  // namespace
}  // namespace kolvane::inspect
