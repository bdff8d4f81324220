#include "terminal/receive_controls.h"

#include <gtest/gtest.h>

#include "terminal/thrown_by.h"

namespace kolvane::terminal {
namespace {

TEST(TerminatorWords, HaveTwoOrders) {
  const std::array<std::string_view, 4> receive = {"CRLF", "CR", "LF", "Kein"};
  const std::array<std::string_view, 4> send = {"LF", "CR", "CRLF", "Kein"};
  EXPECT_EQ(kReceiveTerminatorWords, receive);
  EXPECT_EQ(kSendTerminatorWords, send);
}

TEST(ReceiveTerminator, KnowsTheWords) {
  EXPECT_EQ(ReceiveTerminator("CRLF"), "\r\n");
  EXPECT_EQ(ReceiveTerminator("CR"), "\r");
  EXPECT_EQ(ReceiveTerminator("LF"), "\n");
  EXPECT_EQ(ReceiveTerminator("Kein"), "");
}

TEST(ReceiveTerminator, AcceptsCharacterCodes) {
  EXPECT_EQ(ReceiveTerminator("59"), ";");
  EXPECT_EQ(ReceiveTerminator(" 10 "), "\n");
  EXPECT_EQ(ReceiveTerminator("58,7"), ";");
  EXPECT_EQ(ReceiveTerminator("58.5"), ":");
  EXPECT_EQ(ReceiveTerminator("0"), std::string(1, '\0'));
  EXPECT_EQ(ReceiveTerminator("128"), "€");
  EXPECT_EQ(ReceiveTerminator("228"), "ä");
  EXPECT_EQ(ReceiveTerminator("255"), "ÿ");
}

TEST(ReceiveTerminator, KeepsOtherTexts) {
  for (const char* text : {"", ";", "abc", "crlf", "10x", "1 0", "kein"})
    EXPECT_FALSE(ReceiveTerminator(text)) << text;
}

TEST(ReceiveTerminator, RefusesCodesOutsideTheCodePage) {
  for (const char* text : {"256", "-1", "255,6", "32768", "99999999999", "1e300", "1e999"})
    EXPECT_EQ(ThrownBy([&] { ReceiveTerminator(text); }), Kind::kInvalidArgument) << text;
  EXPECT_EQ(ReceiveTerminator("255,4"), "ÿ");
  EXPECT_EQ(ReceiveTerminator("-0,4"), std::string(1, '\0'));
}

TEST(SendTerminator, KnowsWordsAndCodesAndKeepsOtherTexts) {
  EXPECT_EQ(SendTerminator("LF"), "\n");
  EXPECT_EQ(SendTerminator("CR"), "\r");
  EXPECT_EQ(SendTerminator("CRLF"), "\r\n");
  EXPECT_EQ(SendTerminator("Kein"), "");
  EXPECT_EQ(SendTerminator("13"), "\r");
  EXPECT_EQ(SendTerminator("252"), "ü");
  EXPECT_EQ(SendTerminator(";"), ";");
  EXPECT_EQ(SendTerminator("ENDE"), "ENDE");
  EXPECT_EQ(SendTerminator("lf"), "lf");
  EXPECT_EQ(SendTerminator(""), "");
  EXPECT_EQ(ThrownBy([] { SendTerminator("256"); }), Kind::kInvalidArgument);
}

TEST(TerminatorWord, IsTheWordOrTheTerminatorItself) {
  EXPECT_EQ(TerminatorWord(""), "Kein");
  EXPECT_EQ(TerminatorWord("\n"), "LF");
  EXPECT_EQ(TerminatorWord("\r"), "CR");
  EXPECT_EQ(TerminatorWord("\r\n"), "CRLF");
  EXPECT_EQ(TerminatorWord(";"), ";");
  EXPECT_EQ(TerminatorWord("\n\r"), "\n\r");
  EXPECT_EQ(TerminatorWord("ä"), "ä");
}

}  // namespace
}  // namespace kolvane::terminal
