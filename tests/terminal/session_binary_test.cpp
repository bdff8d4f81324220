#include <gtest/gtest.h>

#include "terminal/session_bench.h"
#include "terminal/thrown_by.h"

using namespace std::string_literals;

namespace kolvane::terminal {
namespace {

class SessionAutoTest : public testing::Test, protected SessionBench {
 protected:
  SessionAutoTest() { state.receive = {.mode = receive_mode::kAuto, .receive_terminator = ""}; }
};

TEST_F(SessionAutoTest, ReadsByteByByteToTheFirstGap) {
  device.incoming = "OK";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "SetTimeout 3000", "ReadBinary 1", "LastError",
                                 "SetTimeout 50", "ReadBinary 1", "LastError", "ReadBinary 1", "LastError"}));
  EXPECT_EQ(pane.lines, Lines{"OK"});
  EXPECT_EQ(pane.kinds, std::vector{LineKind::kAnswer});
  EXPECT_EQ(state.last_answer.text, "OK");
}

TEST_F(SessionAutoTest, SetsTheWholeTimeoutAgainForEachAnswer) {
  device.incoming = "a";
  session.GetAnswer();
  device.calls.clear();
  session.GetAnswer();
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "SetTimeout 3000", "ReadBinary 1", "LastError"}));
}

TEST_F(SessionAutoTest, DoesNotShowTheErrorThatEndsIt) {
  EXPECT_FALSE(session.GetAnswer());
  EXPECT_EQ(pane.text, "\r\n");
  EXPECT_EQ(state.last_answer.text, "");
}

TEST_F(SessionAutoTest, TheEmptyLineOfAnAnswerThatDidNotArriveIsNoAnswer) {
  for (const bool blocks : {false, true}) {
    state.extras.blocks = blocks;
    session.GetAnswer();
    EXPECT_EQ(pane.kinds.back(), LineKind::kError) << blocks;
    device.incoming = "a";
    session.GetAnswer();
    EXPECT_EQ(pane.kinds.back(), LineKind::kAnswer) << blocks;
  }
}

TEST_F(SessionAutoTest, KeepsSpacesAndTerminators) {
  device.incoming = " 1,2 \r\n\0"s;
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, " 1,2 \r\n\0"s);
  EXPECT_EQ(pane.lines, Lines{" 1,2 \r\n\0"s});
}

TEST_F(SessionAutoTest, ShowsCharactersOrCodesAsTheFlagSays) {
  device.incoming = "\xB5m\r";
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "µm\r");

  device.incoming = "\xB5m\r";
  state.receive.binary_display = 1;
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "<B5><6D><0D>");
}

TEST_F(SessionAutoTest, KeepsTheBytesOfAnAnswerThatIsShownByteByByte) {
  state.receive.binary_display = 1;
  device.incoming = "\0\xFF,"s;
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.bytes, "\0\xFF,"s);

  state.shown.timeout = "x";
  EXPECT_THROW(session.GetAnswer(), base::RuntimeError);
  EXPECT_EQ(state.last_answer.bytes, "\0\xFF,"s) << "the bytes stay those of the text";

  state.shown.timeout = "1";
  state.receive.binary_display = 0;
  device.incoming = "a";
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.bytes, "");
}

TEST_F(SessionAutoTest, ReadsUpToTheLimit) {
  device.incoming = std::string(8192, 'x');
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, std::string(8192, 'x'));
  EXPECT_EQ(device.CountCalls("ReadBinary"), 8193u);
}

TEST_F(SessionAutoTest, DropsTheFirstBytePastTheLimitAndStops) {
  device.incoming = std::string(8192, 'x') + "yz";
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, std::string(8192, 'x'));
  EXPECT_EQ(device.CountCalls("ReadBinary"), 8193u);
  EXPECT_EQ(device.incoming, "z");
}

TEST_F(SessionAutoTest, TenThousandBytesGiveExactlyTheLimit) {
  state.receive.binary_display = 1;
  device.incoming = std::string(10000, '\x41');
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text.size(), 8192u * 4);
  EXPECT_EQ(device.incoming.size(), 10000u - 8193u);
}

class SessionCountTest : public testing::Test, protected SessionBench {
 protected:
  SessionCountTest() { state.receive = {.mode = receive_mode::kCount, .receive_terminator = ""}; }
};

TEST_F(SessionCountTest, ReadsTheGivenNumberOfBytesAtOnce) {
  state.receive.binary_display = 1;
  state.shown.count = "4";
  device.incoming = "\r\nA\xFF!";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "SetTimeout 3000", "ReadBinary 4", "LastError"}));
  EXPECT_EQ(pane.lines, Lines{"<0D><0A><41><FF>"});
  EXPECT_EQ(state.last_answer.text, "<0D><0A><41><FF>");
  EXPECT_EQ(device.incoming, "!");
}

TEST_F(SessionCountTest, ShowsOnlyTheBytesReceivedBeforeATerminator) {
  state.receive = {.mode = receive_mode::kCount, .binary_display = 1, .receive_terminator = "\n"};
  state.shown.count = "10";
  device.incoming = "AB\nC";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(pane.lines, Lines{"<41><42><0A>"});
  EXPECT_EQ(device.incoming, "C");
}

TEST_F(SessionCountTest, ShowsCharactersWithTheFlagOff) {
  state.shown.count = " 3,4 ";
  device.incoming = "\xE4,\x80";
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "ä,€");
  EXPECT_EQ(state.last_answer.Fields(), (std::vector<std::string>{"ä", "€"}));
}

TEST_F(SessionCountTest, TheFormatListDoesNotMatterHere) {
  state.shown = {.mode = 2, .format = receive_format::kBinary, .count = "1"};
  device.incoming = "A";
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "A");
}

TEST_F(SessionCountTest, AReadErrorBecomesTheAnswer) {
  state.shown.count = "4";
  device.incoming = "abc";
  EXPECT_FALSE(session.GetAnswer());
  EXPECT_EQ(pane.lines, Lines{"Zeitüberschreitung"});
  EXPECT_EQ(state.last_answer.text, "Zeitüberschreitung");
}

TEST_F(SessionCountTest, FillsTheWholeBuffer) {
  state.shown.count = "1025";
  device.incoming = std::string(1025, 'x');
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, std::string(1025, 'x'));
}

TEST_F(SessionCountTest, CountsAboveTheBufferThrowOnceSoManyBytesAreRead) {
  state.last_answer.text = "old";
  for (const int count : {1026, 32767}) {
    device.incoming = std::string(static_cast<std::size_t>(count), 'x') + "next";
    state.shown.count = std::to_string(count);
    EXPECT_EQ(ThrownBy([&] { session.GetAnswer(); }), Kind::kSubscript) << count;
    EXPECT_EQ(device.incoming, "next");
  }
  EXPECT_EQ(pane.text, "");
  EXPECT_EQ(state.last_answer.text, "old");
}

TEST_F(SessionCountTest, AFailedReadComesBeforeACountAboveTheBuffer) {
  state.shown.count = "1026";
  device.incoming = std::string(1025, 'x');
  EXPECT_FALSE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "Zeitüberschreitung");
}

TEST_F(SessionCountTest, TheMessageSaysThatTheAnswerIsToComeOnlyIfItWasNotRead) {
  const auto message_for = [this](const char* count) -> std::string {
    state.shown.count = count;
    session.SendCommand("B?");
    device.incoming = std::string(1026, 'x');
    try {
      session.GetAnswer();
    } catch (const base::RuntimeError& error) {
      return error.what();
    }
    return {};
  };
  EXPECT_EQ(message_for("1026"), "Anzahl: Index außerhalb des gültigen Bereichs");
  EXPECT_EQ(message_for("-1"),
            "Anzahl: Index außerhalb des gültigen Bereichs. Die Antwort auf den Befehl steht noch aus, "
            "„Eingangspuffer flushen“ verwirft sie.");
}

TEST_F(SessionCountTest, CountsThatAreNoneThrowBeforeAnythingIsRead) {
  state.last_answer.text = "old";
  device.incoming = std::string(1026, 'x');
  for (const char* text : {"-1", "-32768"}) {
    state.shown.count = text;
    EXPECT_EQ(ThrownBy([&] { session.GetAnswer(); }), Kind::kSubscript) << text;
  }
  for (const auto& [text, kind] :
       {std::pair{"", Kind::kTypeMismatch}, {"vier", Kind::kTypeMismatch}, {"32768", Kind::kOverflow}}) {
    state.shown.count = text;
    EXPECT_EQ(ThrownBy([&] { session.GetAnswer(); }), kind) << text;
  }
  EXPECT_EQ(device.CountCalls("ReadBinary"), 0u);
  EXPECT_EQ(pane.text, "");
  EXPECT_EQ(state.last_answer.text, "old");
}

TEST_F(SessionCountTest, NothingOfAnOlderAnswerIsReturned) {
  state.shown.count = "2";
  device.incoming = "AB";
  session.GetAnswer();
  device.reads_copy_nothing = true;
  session.GetAnswer();
  EXPECT_EQ(state.last_answer.text, "\0\0"s);
}

TEST_F(SessionCountTest, ZeroTakesNothingAndIsAnEmptyAnswer) {
  state.last_answer.text = "old";
  state.shown.count = "0";
  device.incoming = "x";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(device.calls, (Lines{"ClearLastError", "SetTimeout 3000", "ReadBinary 0", "LastError"}));
  EXPECT_EQ(device.incoming, "x");
  EXPECT_EQ(pane.text, "\r\n");
  EXPECT_EQ(state.last_answer.text, "");
}

}  // namespace
}  // namespace kolvane::terminal
