#include "inspect/block.h"

#include <gtest/gtest.h>

namespace kolvane::inspect {
namespace {

constexpr std::string_view kBytes("A\0\xE4", 3);

TEST(CopyText, HasEachForm) {
  EXPECT_EQ(CopyText(CopyForm::kHex, kBytes, 0), "41 00 e4");
  EXPECT_EQ(CopyText(CopyForm::kC, kBytes, 0), "const unsigned char data[3] = {\n    0x41, 0x00, 0xe4\n};");
  EXPECT_EQ(CopyText(CopyForm::kPython, kBytes, 0), "b\"\\x41\\x00\\xe4\"");
  EXPECT_EQ(CopyText(CopyForm::kBase64, kBytes, 0), "QQDk");
  EXPECT_EQ(CopyText(CopyForm::kDump, kBytes, 32),
            "0032 4100E4                                 A...............");
  EXPECT_EQ(CopyText(CopyForm::kText, "A\xE4", 0), "Aä");
}

TEST(CopyText, HasSixteenBytesPerLine) {
  const std::string bytes(17, 'B');
  EXPECT_EQ(CopyText(CopyForm::kHex, bytes, 0), "42 42 42 42 42 42 42 42 42 42 42 42 42 42 42 42\n42");
  const std::string c = CopyText(CopyForm::kC, bytes, 0);
  EXPECT_EQ(c.substr(c.size() - 18), " 0x42,\n    0x42\n};");
  const std::string python = CopyText(CopyForm::kPython, bytes, 0);
  EXPECT_TRUE(python.starts_with("(\n    b\"\\x42")) << python;
  EXPECT_TRUE(python.ends_with("\\x42\"\n    b\"\\x42\"\n)")) << python;
}

TEST(SearchBytes, TakesHexTextAndQuotedText) {
  EXPECT_EQ(SearchBytes("0D0a"), "\r\n");
  EXPECT_EQ(SearchBytes(" 0D 0A "), "\r\n");
  EXPECT_EQ(SearchBytes("\"0D0A\""), "0D0A");
  EXPECT_EQ(SearchBytes("\"\""), "\"\"") << "there is nothing between them";
  EXPECT_EQ(SearchBytes("0D0"), "0D0");
  EXPECT_EQ(SearchBytes("RIFF"), "RIFF");
  EXPECT_EQ(SearchBytes("5 A"), "5 A");
  EXPECT_EQ(SearchBytes("Prüf"),
            "Pr\xFC"
            "f");
}

TEST(SearchBytes, RefusesInvalidBytes) {
  EXPECT_EQ(SearchBytes(""), std::nullopt);
  EXPECT_EQ(SearchBytes("5 Ω"), std::nullopt);
}

TEST(TypedOffset, TakesDecimalHexadecimalAndRelativeNumbers) {
  EXPECT_EQ(TypedOffset("17", 5), 17);
  EXPECT_EQ(TypedOffset(" &H11 ", 5), 17);
  EXPECT_EQ(TypedOffset("&hff", 5), 255);
  EXPECT_EQ(TypedOffset("0x1F", 5), 31);
  EXPECT_EQ(TypedOffset("+4", 5), 9);
  EXPECT_EQ(TypedOffset("-4", 5), 1);
  EXPECT_EQ(TypedOffset("-&H10", 5), -11);
  EXPECT_EQ(TypedOffset("&H1000000000000000", 5), std::int64_t{1} << 60);
}

TEST(TypedOffset, RefusesInvalidOffsets) {
  for (const char* typed : {"", "+", "&H", "0x", "abc", "1 2", "12x", "--4", "+-4", "1.5",
                            "&H1000000000000001", "99999999999999999999"})
    EXPECT_EQ(TypedOffset(typed, 0), std::nullopt) << typed;
}

}  // namespace
}  // namespace kolvane::inspect
