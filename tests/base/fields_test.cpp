#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/text.h"

namespace kolvane::base {
namespace {

using Fields = std::vector<std::string>;

Fields Split(std::string_view text) {
  Fields fields;
  EXPECT_TRUE(ForEachField(text, [&](std::string_view field) {
    fields.emplace_back(field);
    return true;
  }));
  return fields;
}

TEST(ForEachField, SplitsAtEveryComma) {
  EXPECT_EQ(Split("1,2,3"), (Fields{"1", "2", "3"}));
  EXPECT_EQ(Split("12.5"), Fields{"12.5"});
  EXPECT_EQ(Split("a,, b ,"), (Fields{"a", "", " b ", ""}));
  EXPECT_EQ(Split(","), (Fields{"", ""}));
}

TEST(ForEachField, TakesAnEmptyTextForOneEmptyField) { EXPECT_EQ(Split(""), Fields{""}); }

TEST(ForEachField, StopsOnRequest) {
  Fields fields;
  EXPECT_FALSE(ForEachField("1,x,3", [&](std::string_view field) {
    fields.emplace_back(field);
    return field != "x";
  }));
  EXPECT_EQ(fields, (Fields{"1", "x"}));
}

}  // namespace
}  // namespace kolvane::base
