#include "window/text_file.h"

#include <gtest/gtest.h>

#include <vector>

namespace kolvane::window {
namespace {

using Pieces = std::vector<std::string>;

Pieces Decode(const Pieces& bytes) {
  TextDecoder decoder;
  Pieces out;
  for (const std::string& piece : bytes) out.push_back(decoder.Decode(piece));
  out.push_back(decoder.Finish());
  return out;
}

TEST(TextDecoder, ReadsWindows1252) {
  EXPECT_EQ(Decode({"Gr\xF6\xDF\x65 \x80\r\n"}), (Pieces{"Größe €\r\n", ""}));
}

TEST(TextDecoder, ReadsUtf8AfterAByteOrderMark) {
  EXPECT_EQ(Decode({"\xEF\xBB\xBFGröße"}), (Pieces{"Größe", ""}));
  EXPECT_EQ(Decode({"\xEF\xBB\xBF"}), (Pieces{"", ""}));
}

TEST(TextDecoder, KeepsALaterByteOrderMark) {
  EXPECT_EQ(Decode({"\xEF\xBB\xBF", "\xEF\xBB\xBFx"}), (Pieces{"", "\xEF\xBB\xBFx", ""}));
}

TEST(TextDecoder, KeepsCrAndLfTogether) {
  EXPECT_EQ(Decode({"a\r", "\nb\r", "c\r"}), (Pieces{"a", "\r\nb", "\rc", "\r"}));
}

TEST(TextDecoder, KeepsTheBytesOfACharacterTogether) {
  EXPECT_EQ(Decode({"\xEF\xBB\xBF\xC3", "\xB6\xE2\x82", "\xAC\xF0\x9F\x98", "\x80"}),
            (Pieces{"", "ö", "€", "\xF0\x9F\x98\x80", ""}));
}

TEST(TextDecoder, PassesOnIncompleteCharacters) {
  EXPECT_EQ(Decode({"\xEF\xBB\xBF\xE2\x82"}), (Pieces{"", "\xE2\x82"}));
  EXPECT_EQ(Decode({"\xEF\xBB\xBF\x82\x82\x82\x82"}), (Pieces{"\x82\x82\x82\x82", ""}));
}

TEST(TextDecoder, KeepsNul) {
  const std::string nul("a\0b", 3);
  EXPECT_EQ(Decode({nul}), (Pieces{nul, ""}));
}

}  // namespace
}  // namespace kolvane::window
