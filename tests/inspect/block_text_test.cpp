#include "inspect/block.h"

#include <gtest/gtest.h>

namespace kolvane::inspect {
namespace {

constexpr std::string_view kBytes("A\0\xE4", 3);

std::string Copied(CopyForm form, std::string_view bytes, std::size_t offset) {
  CopyText copy(form, offset, bytes.size());
  std::string_view rest = bytes;
  do {
    copy.Append(rest.substr(0, CopyText::kPieceBytes));
    rest.remove_prefix(std::min(rest.size(), CopyText::kPieceBytes));
  } while (!rest.empty());
  return copy.text();
}

TEST(CopyText, HasEachForm) {
  EXPECT_EQ(Copied(CopyForm::kHex, kBytes, 0), "41 00 e4");
  EXPECT_EQ(Copied(CopyForm::kC, kBytes, 0), "const unsigned char data[3] = {\n    0x41, 0x00, 0xe4\n};");
  EXPECT_EQ(Copied(CopyForm::kPython, kBytes, 0), "b\"\\x41\\x00\\xe4\"");
  EXPECT_EQ(Copied(CopyForm::kBase64, kBytes, 0), "QQDk");
  EXPECT_EQ(Copied(CopyForm::kDump, kBytes, 32),
            "0032 4100E4                                 A...............");
  EXPECT_EQ(Copied(CopyForm::kText, "A\xE4", 0), "Aä");
}

TEST(CopyText, HasSixteenBytesPerLine) {
  const std::string bytes(17, 'B');
  EXPECT_EQ(Copied(CopyForm::kHex, bytes, 0), "42 42 42 42 42 42 42 42 42 42 42 42 42 42 42 42\n42");
  const std::string c = Copied(CopyForm::kC, bytes, 0);
  EXPECT_EQ(c.substr(c.size() - 18), " 0x42,\n    0x42\n};");
  const std::string python = Copied(CopyForm::kPython, bytes, 0);
  EXPECT_TRUE(python.starts_with("(\n    b\"\\x42")) << python;
  EXPECT_TRUE(python.ends_with("\\x42\"\n    b\"\\x42\"\n)")) << python;
}

TEST(CopyText, IsTheSameInPieces) {
  std::string bytes;
  for (std::size_t i = 0; i < 2 * CopyText::kPieceBytes + 5; ++i) bytes += static_cast<char>(i * 7 + i / 256);
  for (const CopyForm form : {CopyForm::kHex, CopyForm::kC, CopyForm::kPython, CopyForm::kBase64,
                              CopyForm::kDump, CopyForm::kText}) {
    CopyText whole(form, 16, bytes.size());
    whole.Append(bytes);
    EXPECT_EQ(Copied(form, bytes, 16), whole.text());
  }
}

TEST(CopyText, OfNothingIsWellFormed) {
  EXPECT_EQ(Copied(CopyForm::kHex, "", 0), "");
  EXPECT_EQ(Copied(CopyForm::kC, "", 0), "const unsigned char data[0] = {\n};");
  EXPECT_EQ(Copied(CopyForm::kPython, "", 0), "b\"\"");
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
