#include "help/rtf_tokens.h"

#include <gtest/gtest.h>

#include <string>

namespace kolvane::help {
namespace {

using namespace std::string_literals;

// Kind, text and number of each token: "w:fs:24" for \fs24.
std::string Tokens(const std::string& bytes) {
  constexpr std::string_view kKinds = "{}twshHBET";
  std::string out;
  for (RtfTokens tokens(bytes);;) {
    const RtfToken token = tokens.Next();
    if (token.kind == RtfToken::Kind::kEnd) return out + "E";
    out += kKinds[static_cast<std::size_t>(token.kind)];
    if (!token.text.empty()) out += ":" + std::string(token.text);
    if (token.parameter) out += ":" + std::to_string(*token.parameter);
    out += ' ';
  }
}

TEST(RtfTokens, SplitsGroupsTextAndControls) {
  EXPECT_EQ(Tokens(""), "E");
  EXPECT_EQ(Tokens("{a b}"), "{:{ t:a b }:} E");
  EXPECT_EQ(Tokens("\\b x"), "w:b t:x E");
  EXPECT_EQ(Tokens("\\b  x"), "w:b t: x E");
  EXPECT_EQ(Tokens("\\fs24x"), "w:fs:24 t:x E");
  EXPECT_EQ(Tokens("\\u-10\\'e4\\~"), "w:u:-10 h:e4:228 s:~ E");
  EXPECT_EQ(Tokens("\\li-x"), "w:li t:-x E");
}

TEST(RtfTokens, SkipsLineEndsAndControlBytes) {
  EXPECT_EQ(Tokens("a\r\nb\0c\x01\x1F"
                   "d\te"s),
            "t:a t:b t:c t:d\te E");
  EXPECT_EQ(Tokens("\\b\nx"), "w:b t:x E");
}

TEST(RtfTokens, LimitsNumbersTo32Bits) {
  EXPECT_EQ(Tokens("\\x2147483647"), "w:x:2147483647 E");
  EXPECT_EQ(Tokens("\\x2147483648"), "w:x:2147483647 E");
  EXPECT_EQ(Tokens("\\x-2147483648"), "w:x:-2147483648 E");
  EXPECT_EQ(Tokens("\\x-99999999999999999999999999"), "w:x:-2147483648 E");
}

TEST(RtfTokens, SkipsBinaryData) {
  EXPECT_EQ(Tokens("\\bin3 }{\\x"), "B t:x E");
  EXPECT_EQ(Tokens("\\bin0 x"), "B t:x E");
  EXPECT_EQ(Tokens("\\bin-5 x"), "B t:x E");
  EXPECT_EQ(Tokens("\\bin1 x"), "B E");
  EXPECT_EQ(Tokens("\\bin2 x"), "T E");
  EXPECT_EQ(Tokens("\\bin2147483647 x"), "T E");
}

TEST(RtfTokens, DistinguishesTruncatedFromDamagedText) {
  EXPECT_EQ(Tokens("a\\"), "t:a T E");
  EXPECT_EQ(Tokens("\\'"), "T E");
  EXPECT_EQ(Tokens("\\'e"), "T E");
  EXPECT_EQ(Tokens("\\'g"), "H t:g E");
  EXPECT_EQ(Tokens("\\'-1"), "H t:-1 E");
  EXPECT_EQ(Tokens("\\'eg}"), "H t:eg }:} E");
}

}  // namespace
}  // namespace kolvane::help
