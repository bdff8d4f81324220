#include "terminal/session.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace kolvane::terminal {
namespace {

std::string Trimmed(std::string answer, std::string_view terminator = "\r\n") {
  TrimAnswer(answer, terminator);
  return answer;
}

TEST(TrimAnswer, StripsSpacesNulAndCrLfInThisOrder) {
  EXPECT_EQ(Trimmed("12.5\r\n"), "12.5");
  EXPECT_EQ(Trimmed("12.5\r\n" + std::string(15994, ' ')), "12.5");
  EXPECT_EQ(Trimmed("  12.5"), "12.5");
  EXPECT_EQ(Trimmed("12.5\r\n\0"s), "12.5");
  EXPECT_EQ(Trimmed("12.5\r\n\0   "s), "12.5");
  EXPECT_EQ(Trimmed("12.5\0"s), "12.5");
  EXPECT_EQ(Trimmed("12.5\0\r\n"s), "12.5\0"s);
  EXPECT_EQ(Trimmed("12.5\0\0"s), "12.5\0"s);
  EXPECT_EQ(Trimmed("12.5 \r\n"), "12.5 ");
  EXPECT_EQ(Trimmed("\r\n12.5"), "\r\n12.5");
}

TEST(TrimAnswer, KeepsAnEmptyAnswerEmpty) {
  EXPECT_EQ(Trimmed(""), "");
  EXPECT_EQ(Trimmed("    "), "");
  EXPECT_EQ(Trimmed("\r\n"), "");
  EXPECT_EQ(Trimmed("\0"s), "");
}

TEST(TrimAnswer, StripsCrLfOnceWhateverTheTerminator) {
  for (const char* terminator : {"\r\n", "\n", "\r", ";", ""}) {
    EXPECT_EQ(Trimmed("12.5\r\n", terminator), "12.5");
    EXPECT_EQ(Trimmed("12.5\r\n\r\n", terminator), "12.5\r\n");
  }
}

TEST(TrimAnswer, StripsTheTerminatorThatWasLeftOn) {
  EXPECT_EQ(Trimmed("12.5\n", "\n"), "12.5");
  EXPECT_EQ(Trimmed("12.5\r", "\r"), "12.5");
  EXPECT_EQ(Trimmed("12.5;", ";"), "12.5");
  EXPECT_EQ(Trimmed("12.5;\0"s, ";"), "12.5");
  EXPECT_EQ(Trimmed("12.5ä", "ä"), "12.5");
  EXPECT_EQ(Trimmed("12.5;;", ";"), "12.5;");
  EXPECT_EQ(Trimmed("1;2", ";"), "1;2");
}

TEST(TrimAnswer, StripsHalfACrLfOnlyAtTheEndOfAnAnswer) {
  EXPECT_EQ(Trimmed("12.5\n"), "12.5");
  EXPECT_EQ(Trimmed("12.5\r"), "12.5");
  EXPECT_EQ(Trimmed("12.5\n", ";"), "12.5\n");
  EXPECT_EQ(Trimmed("12.5\r", "\n"), "12.5\r");
}

TEST(TrimAnswer, KeepsUmlauts) { EXPECT_EQ(Trimmed(" Größe µm \r\n"), "Größe µm "); }

std::string Display(std::string_view bytes, bool binary) {
  std::string text;
  AppendDisplayForm(bytes, binary, text);
  return text;
}

TEST(DisplayForm, IsTwoUpperCaseDigitsInBrackets) {
  EXPECT_EQ(Display("\r\nA\xFF", true), "<0D><0A><41><FF>");
  EXPECT_EQ(Display("\0\x0F\x10"s, true), "<00><0F><10>");
  EXPECT_EQ(Display("", true), "");
}

TEST(DisplayForm, IsTheCharacterWithThatCode) {
  EXPECT_EQ(Display("12.5\r\n", false), "12.5\r\n");
  EXPECT_EQ(Display("\xB5m \xE4\x80", false), "µm ä€");
  EXPECT_EQ(Display("\0"s, false), "\0"s);
  EXPECT_EQ(Display("", false), "");
}

}  // namespace
}  // namespace kolvane::terminal
