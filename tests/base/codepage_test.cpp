#include "base/codepage.h"

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

TEST(CodePage, WritesAQuestionMarkForWhatItLacks) {
  EXPECT_EQ(ToWindows1252("Ω\u4E2D\U0001F600x"), "???x");
  EXPECT_EQ(ToWindows1252("\xC3"), "?");
  EXPECT_EQ(ToWindows1252("\xE2\x82"),
            "?"
            "?");
  EXPECT_EQ(ToWindows1252("\xFF\xC3\xA4"), "?\xE4");
}

TEST(CodePage, KnowsWellFormedUtf8) {
  for (const char* good : {"", "a", "ä€", "\xEF\xBF\xBD", "\U0001F600", "\U0010FFFF", "\u0800", "\u07FF"})
    EXPECT_TRUE(IsUtf8(good)) << good;
  // Cut short, longer than need be, half of a pair, past the last code point.
  for (const char* bad : {"\xC3", "\xC3 ", "\xC0\x80", "\xE2\x82", "\x80", "\xFF", "\xC0\xAF", "\xE0\x80\xAF",
                          "\xF0\x80\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x28\xA1"})
    EXPECT_FALSE(IsUtf8(bad)) << bad;
  EXPECT_EQ(ToWindows1252("\xE0\x80\xAF"), "?") << "no hidden '/'";
}

TEST(CodePage, WritesEachLengthOfUtf8) {
  std::string text;
  for (const char32_t point : {0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}) AppendUtf8(text, point);
  EXPECT_EQ(text, "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(CodePage, KnowsAsciiAtEveryLength) {
  for (std::size_t length = 1; length < 20; ++length) {
    EXPECT_TRUE(IsAscii(std::string(length, 'a')));
    EXPECT_FALSE(IsAscii(std::string(length - 1, 'a') + '\x80'));
  }
}

}  // namespace
}  // namespace kolvane::base
