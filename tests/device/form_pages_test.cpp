#include "device/connection_form.h"

#include <gtest/gtest.h>

#include <string>

namespace kolvane::device {
namespace {

// The page numbers that can be reached, the current one in brackets.
std::string State(const FormPages& pages) {
  std::string text;
  for (int page = 0; page < form_page::kCount; ++page) {
    if (!pages.enabled[static_cast<std::size_t>(page)]) continue;
    const std::string number = std::to_string(page);
    text += page == pages.front ? "[" + number + "]" : number;
  }
  return text;
}

std::string Clicked(std::initializer_list<std::int16_t> options) {
  FormPages pages;
  for (const std::int16_t option : options) pages.ClickPort(option);
  return State(pages);
}

TEST(FormPages, FollowTheKind) {
  const char* expected[] = {"[0]12345", "[0]12345", "[0]12345", "[0]12345", "[3]45",
                            "[3]45",    "[2]45",    "04[5]",    "3[4]5",    "012345[6]"};
  for (std::int16_t option = 0; option < 10; ++option)
    EXPECT_EQ(Clicked({option}), expected[option]) << option;
}

TEST(FormPages, ChangeOnlyWhatAKindMustChange) {
  EXPECT_EQ(Clicked({4, 9}), "0345[6]");
  EXPECT_EQ(Clicked({6, 8}), "[4]5");
  EXPECT_EQ(Clicked({7, 6}), "[2]45");
  EXPECT_EQ(Clicked({9, 7}), "04[5]");
}

TEST(FormPages, ComBringsBothItsPagesBack) {
  EXPECT_EQ(Clicked({4, 0}), "[0]1345");
  EXPECT_EQ(Clicked({6, 3}), "[0]1245");
}

TEST(FormPages, AnInvalidOptionChangesNothing) {
  EXPECT_EQ(Clicked({8, 10}), "3[4]5");
  EXPECT_EQ(Clicked({-1}), "[0]123456");
}

}  // namespace
}  // namespace kolvane::device
