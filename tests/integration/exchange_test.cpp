#include <gtest/gtest.h>

#include "integration/live_terminal.h"

namespace kolvane::integration {
namespace {

class ExchangeTest : public testing::TestWithParam<Line> {
 protected:
  void SetUp() override {
    ASSERT_TRUE(terminal_.device.connected)
        << (terminal_.prompt.errors.empty() ? "" : terminal_.prompt.errors[0]);
  }

  void ReceiveBinary(int mode, const std::string& count = "") {
    terminal_.controls.PickFormat(1);
    terminal_.controls.PickMode(mode);
    terminal_.controls.EditCount(count);
  }

  LiveTerminal terminal_{GetParam(), {}};
};

TEST_P(ExchangeTest, AnAnswerIsShownAndKeptWithoutItsTerminator) {
  const std::string answer = terminal_.Ask("*IDN?");
  EXPECT_TRUE(answer.starts_with("KOLVANE,")) << answer;
  EXPECT_EQ(answer.find_first_of("\r\n"), std::string::npos);
  EXPECT_EQ(terminal_.pane.lines.back(), answer);
  EXPECT_EQ(terminal_.library.Library()->Delivered(), static_cast<std::int32_t>(answer.size()) + 2)
      << "the rest of the buffer is not read";
}

TEST_P(ExchangeTest, SeveralValuesAreFields) {
  terminal_.Ask("MSV? 0");
  EXPECT_EQ(terminal_.state.last_answer.Fields().size(), 8u);
}

TEST_P(ExchangeTest, SettingsAreKeptAndRefusalsAnswered) {
  EXPECT_EQ(terminal_.Ask("NAME 1,Brücke"), "0");
  EXPECT_EQ(terminal_.Ask("NAME? 1"), "Brücke");
  EXPECT_EQ(terminal_.Ask("NONSENSE"), "?");
}

TEST_P(ExchangeTest, EveryByteIsReceivedInCountMode) {
  ReceiveBinary(2, "256");
  const std::string answer = terminal_.Ask("RAMP? 256");
  EXPECT_EQ(answer.size(), 256u * 4);
  EXPECT_TRUE(answer.starts_with("<00><01><02>"));
  EXPECT_TRUE(answer.ends_with("<FE><FF>"));
}

TEST_P(ExchangeTest, TheLargestCountIsReadAndTheNextRefused) {
  ReceiveBinary(2, "1025");
  EXPECT_EQ(terminal_.Ask("RAMP? 1025").size(), 1025u * 4);
  terminal_.controls.EditCount("1026");
  EXPECT_THROW(terminal_.Ask("RAMP? 1026"), kolvane::RuntimeError);
  EXPECT_EQ(terminal_.core.device.FlushInput(), 0) << "it is read nevertheless";
}

TEST_P(ExchangeTest, AutomaticEndReads8192BytesOfALongerAnswer) {
  ReceiveBinary(1);
  EXPECT_EQ(terminal_.Ask("RAMP? 10000").size(), 8192u * 4);
  EXPECT_EQ(terminal_.core.device.FlushInput(), 10000 - 8193);
}

TEST_P(ExchangeTest, AutomaticEndEndsAtTheFirstGap) {
  ReceiveBinary(1);
  EXPECT_EQ(terminal_.Ask("HEX? 0D0A41"), "<0D><0A><41>");
}

TEST_P(ExchangeTest, ATerminatorDoesNotChangeTheBytesOfABinaryAnswer) {
  ReceiveBinary(1);
  for (const char* terminator : {"CRLF", "LF", "CR", "65"}) {
    terminal_.controls.EditReceiveTerminator(terminator);
    EXPECT_EQ(terminal_.Ask("HEX? 410D0A42200A430D"), "<41><0D><0A><42><20><0A><43><0D>") << terminator;
  }
  ReceiveBinary(2, "10");
  terminal_.controls.EditReceiveTerminator("LF");
  EXPECT_EQ(terminal_.Ask("HEX? 41420A"), "<41><42><0A>");
  EXPECT_EQ(terminal_.Ask("HEX? 41420D0A"), "<41><42><0D><0A>");
  EXPECT_EQ(terminal_.Ask("HEX? 4142434445464748490A"), "<41><42><43><44><45><46><47><48><49><0A>");
}

TEST_P(ExchangeTest, AutomaticEndShowsCharactersInAscii) {
  terminal_.controls.PickMode(1);
  EXPECT_EQ(terminal_.Ask("UNIT? 4"), "°C\r\n");
}

TEST_P(ExchangeTest, ATerminatorMayBeAnyCharacter) {
  terminal_.controls.EditReceiveTerminator("44");
  const std::string first = terminal_.Ask("MSV? 0");
  EXPECT_FALSE(first.empty());
  EXPECT_EQ(first.find(','), std::string::npos);
}

TEST_P(ExchangeTest, StopKeepsTheConnectionAndReadsNothing) {
  EXPECT_EQ(terminal_.Ask("STP"), "");
  EXPECT_TRUE(terminal_.device.connected);
  EXPECT_TRUE(terminal_.Ask("*IDN?").starts_with("KOLVANE"));
}

TEST_P(ExchangeTest, GoingLocalDisconnectsAndTheNextCommandConnectsAgain) {
  terminal_.Ask("DCL");
  EXPECT_FALSE(terminal_.device.connected);
  EXPECT_TRUE(terminal_.Ask("*IDN?").starts_with("KOLVANE"));
  EXPECT_TRUE(terminal_.device.connected);
}

TEST_P(ExchangeTest, ManyExchangesStayInStep) {
  for (int i = 0; i < 500; ++i) {
    const std::string text = "Zeile " + std::to_string(i);
    ASSERT_EQ(terminal_.Ask("ECHO " + text), text);
  }
}

INSTANTIATE_TEST_SUITE_P(Lines, ExchangeTest, testing::Values(Line::kTcp, Line::kPty),
                         [](const auto& line) { return line.param == Line::kTcp ? "Tcp" : "Pty"; });

}  // namespace
}  // namespace kolvane::integration
