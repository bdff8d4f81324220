#include "inspect/byte_values.h"

#include <gtest/gtest.h>

#include <map>

#include "inspect/texts.h"

namespace kolvane::inspect {
namespace {

using Pair = std::pair<std::string, std::string>;

std::map<std::string_view, Pair> TableOf(std::string_view bytes) {
  std::map<std::string_view, Pair> table;
  for (const ValueRow& row : ValueTable(bytes, ",")) table[row.type] = {row.little_endian, row.big_endian};
  return table;
}

TEST(ValueTable, HasEachTypeInBothOrders) {
  auto table = TableOf(std::string_view("\x01\x02\x03\x04\x05\x06\x07\x88", 8));
  EXPECT_EQ(table.size(), 14u);
  EXPECT_EQ(table[texts::kUnsigned8], (Pair{"1", "1"}));
  EXPECT_EQ(table[texts::kUnsigned16], (Pair{"513", "258"}));
  EXPECT_EQ(table[texts::kSigned32], (Pair{"67305985", "16909060"}));
  EXPECT_EQ(table[texts::kUnsigned64], (Pair{"9801809732607083009", "72623859790382984"}));
  EXPECT_EQ(table[texts::kSigned64], (Pair{"-8644934341102468607", "72623859790382984"}));
}

TEST(ValueTable, HasSignsAndFloats) {
  auto table = TableOf(std::string_view("\xFF\xFE\0\0\0\0\xF8\x3F", 8));
  EXPECT_EQ(table[texts::kUnsigned8], (Pair{"255", "255"}));
  EXPECT_EQ(table[texts::kSigned8], (Pair{"-1", "-1"}));
  EXPECT_EQ(table[texts::kSigned16], (Pair{"-257", "-2"}));
  EXPECT_EQ(TableOf(std::string_view("\0\0\xC0\x3F", 4))[texts::kSingle].first, "1,5");
  EXPECT_EQ(TableOf(std::string_view("\x3F\xC0\0\0", 4))[texts::kSingle].second, "1,5");
  EXPECT_EQ(TableOf(std::string_view("\0\0\0\0\0\0\xF8\xBF", 8))[texts::kDouble].first, "-1,5");
  EXPECT_EQ(TableOf(std::string_view("\xBF\xF8\0\0\0\0\0\0", 8))[texts::kDouble].second, "-1,5");
}

TEST(ValueTable, HasCharactersBitsAndTimes) {
  auto table = TableOf(
      "A\xE4\n\x7F"
      "bcdefgh");
  EXPECT_EQ(table[texts::kCharacters].first, "Aä..bcde");
  EXPECT_EQ(table[texts::kBits], (Pair{"0100 0001", "0100 0001"}));
  EXPECT_EQ(TableOf(std::string_view("\0\0\0\0", 4))[texts::kTime32].first, "01.01.1970 00:00:00");
  EXPECT_EQ(TableOf("\x7F\xFF\xFF\xFF")[texts::kTime32].second, "19.01.2038 03:14:07");
  EXPECT_EQ(TableOf(std::string_view("\x80\x43\x6D\x38\0\0\0\0", 8))[texts::kTime64].first,
            "01.01.2000 00:00:00");
  EXPECT_EQ(TableOf(std::string_view("\x80\x43\x6D\x38\0\0\0\0", 8))[texts::kTime64].second, "keine Zeit");
}

TEST(ValueTable, LeavesTypesWithTooFewBytesEmpty) {
  for (const ValueRow& row : ValueTable("", ","))
    EXPECT_EQ(row.little_endian + row.big_endian, "") << row.type;
  auto table = TableOf("abc");
  EXPECT_EQ(table[texts::kUnsigned16].first, "25185");
  EXPECT_EQ(table[texts::kUnsigned32], (Pair{"", ""}));
  EXPECT_EQ(table[texts::kSingle], (Pair{"", ""}));
  EXPECT_EQ(table[texts::kTime32], (Pair{"", ""}));
}

}  // namespace
}  // namespace kolvane::inspect
