#include "base/encoding.h"

#include <gtest/gtest.h>

namespace kolvane::base {
namespace {

TEST(CodePage, All256BytesSurviveARoundTrip) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(ToWindows1252(FromWindows1252(bytes)), bytes);
}

TEST(CodePage, DecodesToUtf8) {
  EXPECT_EQ(FromWindows1252("\x80 \xE4\xF6\xFC\xDF"), "€ äöüß");
  EXPECT_EQ(FromWindows1252("\x81"), "\xC2\x81");
}

TEST(CodePage, WritesAQuestionMarkForCharactersThatItLacks) {
  EXPECT_EQ(ToWindows1252("Ω\u4E2D\U0001F600x"), "???x");
  EXPECT_EQ(ToWindows1252("\xC3"), "?");
  EXPECT_EQ(ToWindows1252("\xE2\x82"),
            "?"
            "?");
  EXPECT_EQ(ToWindows1252("\xFF\xC3\xA4"), "?\xE4");
  EXPECT_EQ(ToWindows1252("\xE0\x80\xAF"), "?") << "no hidden '/'";
}

TEST(CodePage, FindsTheFirstCharacterThatHasNoByte) {
  EXPECT_EQ(FirstOutsideWindows1252(""), std::nullopt);
  EXPECT_EQ(FirstOutsideWindows1252("MEAS:RES 5 ?"), std::nullopt);
  EXPECT_EQ(FirstOutsideWindows1252("Größe 5 µV € Ÿ"), std::nullopt);
  EXPECT_EQ(FirstOutsideWindows1252("MEAS:RES 5 Ω"), 11u);
  EXPECT_EQ(FirstOutsideWindows1252("ö→Ω"), 2u);
  EXPECT_EQ(FirstOutsideWindows1252("\xF0\x9F\x98\x80"), 0u);
  EXPECT_EQ(FirstOutsideWindows1252("ab\xFF"), 2u) << "malformed";
}

TEST(CodePage, NamesTheCharacterThatHasNoByte) {
  EXPECT_EQ(OutsideWindows1252("5 Ω oder 5 →"), "Ω");
  EXPECT_EQ(OutsideWindows1252("5 µ"), "");
}

TEST(CodePage, AnyCharacterCanBeSentInUtf8) {
  EXPECT_EQ(UnsendableCharacter("5 Ω oder 5 →", false), "Ω");
  EXPECT_EQ(UnsendableCharacter("5 µ", false), "");
  EXPECT_EQ(UnsendableCharacter("5 Ω oder 5 →", true), "");
}

TEST(CodePage, EveryByteIsACharacterOfIt) {
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    EXPECT_EQ(FirstOutsideWindows1252(FromWindows1252({&c, 1})), std::nullopt) << byte;
  }
}

TEST(Base64, IsReadBack) {
  for (const std::string& bytes : {std::string(), std::string("f"), std::string("fo"), std::string("foo"),
                                   std::string("\xFB\xFF\0", 3), std::string(1000, '\xA5')})
    EXPECT_EQ(FromBase64(Base64(bytes)), bytes);
  for (const char* wrong : {"Q", "QQ", "QQ=", "Q===", "QQ=A", "Q Q=", "====", "QQ==QQ==", "QQ-_"})
    EXPECT_FALSE(FromBase64(wrong)) << wrong;
}

TEST(Base64, FollowsTheStandard) {
  EXPECT_EQ(Base64(""), "");
  EXPECT_EQ(Base64("f"), "Zg==");
  EXPECT_EQ(Base64("fo"), "Zm8=");
  EXPECT_EQ(Base64("foo"), "Zm9v");
  EXPECT_EQ(Base64("foobar"), "Zm9vYmFy");
  EXPECT_EQ(Base64(std::string_view("\xFB\xFF\0", 3)), "+/8A");
}

}  // namespace
}  // namespace kolvane::base
