#include "window/window_area.h"

#include <gtest/gtest.h>

namespace kolvane::window {
namespace {

LayoutInput DefaultInput() {
  return {.inner_width = 1000,
          .inner_height = 700,
          .split_left = 6,
          .split_top = 10,
          .toolbar2_height = 80,
          .toolbar3_width = 40,
          .status1_height = 22,
          .status2_height = 22,
          .command_left = 6,
          .send_width = 100};
}

TEST(WindowLayout, FollowsTheFiveSteps) {
  const WindowLayout layout = LayOut(DefaultInput());
  EXPECT_TRUE(layout.applies);
  EXPECT_EQ(layout.split_width, 951);    // 1000 - 6 - 3.33 - 40
  EXPECT_EQ(layout.split_height, 564);   // 700 - 10 - 80 - 22 - 22 - 1.67
  EXPECT_EQ(layout.command_width, 844);  // 951 - 100 - 6.67
  EXPECT_EQ(layout.send_left, 853);      // 6 + 844 + 3.33
  EXPECT_EQ(layout.toolbar3_left, 960);  // after the splitter
}

TEST(WindowLayout, DoesNotLayOutASmallerWindow) {
  LayoutInput input = DefaultInput();
  input.inner_width = 134;
  input.inner_height = 267;
  EXPECT_TRUE(LayOut(input).applies);
  input.inner_width = 133;  // 1995 of 2000 units
  EXPECT_FALSE(LayOut(input).applies);
  input.inner_width = 134;
  input.inner_height = 266;  // 3990 of 4000 units
  EXPECT_FALSE(LayOut(input).applies);
}

}  // namespace
}  // namespace kolvane::window
