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
  EXPECT_EQ(ToWindows1252("\xE0\x80\xAF"), "?") << "no hidden '/'";
}

}  // namespace
}  // namespace kolvane::base
