// What a window shows when the instrument fails, and that the user can continue in the same window.

#include <gtest/gtest.h>

#include "devlnk/status.h"
#include "faults/live_window.h"

namespace kolvane::faults {
namespace {

using devlnk::Status;

/// How an orderly end of the connection is reported.
std::string EndOf(Port port) {
  return TextOf(port == Port::kTcp ? Status::kClosedByPeer : Status::kConnectionLost);
}

const std::string kTimeout = TextOf(Status::kReadTimeout);

/// The instrument works again after the fault: the same window connects and is answered once.
void ExpectReconnects(LiveWindow& live) {
  live.Reconnect();
  live.Send("NOW");
  EXPECT_EQ(live.NewLines(), "<->|<+>|NOW|NOW");
  EXPECT_TRUE(live.boxes().empty());
}

class WindowFault : public LiveWindowTest {};

using WindowOnTcp = WindowFault;
INSTANTIATE_TEST_SUITE_P(Ports, WindowFault, testing::ValuesIn(kPorts), PortName);
INSTANTIATE_TEST_SUITE_P(Ports, WindowOnTcp, testing::Values(Port::kTcp), PortName);

TEST_P(WindowOnTcp, Row01AResetInTheMiddleOfAnAnswer) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("part of an ans");
    wire.ResetAtEnd();
    return After::kEnd;
  });
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + TextOf(Status::kConnectionLost));
  live.Send("NEXT");
  const std::string lost = TextOf(Status::kConnectionLost);
  EXPECT_EQ(live.NewLines(), "Write error: " + lost + "|NEXT|" + lost);
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row02AnEndInTheMiddleOfAnAnswer) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("part of an ans");
    return After::kEnd;
  });
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + EndOf(GetParam()));
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row18TheInstrumentGoesWhileNothingHappens) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("last words\r\n");
    wire.AwaitEndOfFault();
    return After::kEnd;
  });
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|last words");
  live.instrument().EndFault();
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row18TheInstrumentGoesInTheMiddleOfACommand) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.ResetAtEnd();
    return After::kEnd;
  });
  const std::string endless(std::size_t{16} << 20, 'x');
  EXPECT_EQ(live.window().core().session.SendCommand(endless), terminal::Sent::kWriteFailed);
  EXPECT_EQ(live.NewLines(), "Write error: " + TextOf(Status::kConnectionLost));
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row06AnAnswerOfSingleBytesIsNotCutShort) {
  for (const int gap_ms : {20, 40, 60}) {
    LiveWindow& live = Open([gap_ms](Wire& wire) {
      wire.Drip("12.5\r\n", gap_ms);
      return After::kContinue;
    });
    live.Send("FAULT");
    EXPECT_EQ(live.NewLines(), "FAULT|12.5");
    live.instrument().EndFault();
    live.Send("NEXT");
    EXPECT_EQ(live.NewLines(), "NEXT|NEXT");
    ExpectReconnects(live);
  }
}

TEST_P(WindowFault, Row07TheTimeoutIsForTheWholeAnswer) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Drip(std::string(1000, 'x'), 40);
    return After::kContinue;
  });
  live.terminal().shown.timeout = "300";
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + kTimeout);
  live.terminal().shown.timeout = "20000";
  live.instrument().EndFault();
  live.Press("TB_FLUSH");
  EXPECT_TRUE(live.NewLines().starts_with("Empfangspuffer gelöscht ("));
  live.Send("NEXT");
  EXPECT_EQ(live.NewLines(), "NEXT|NEXT");
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row08ALateAnswerCanBeFlushed) {
  LiveWindow& live = Open([](Wire& wire) {
    const auto next = wire.Line();
    wire.Send("late\r\n" + next.value_or("") + "\r\n");
    return After::kContinue;
  });
  live.terminal().shown.timeout = "30";
  live.Send("FAULT");
  live.terminal().shown.timeout = "20000";
  live.Send("NEXT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + kTimeout + "|NEXT|late");
  live.Press("TB_FLUSH");
  EXPECT_EQ(live.NewLines(), "Empfangspuffer gelöscht (6 Bytes)");
  live.Send("THIRD");
  EXPECT_EQ(live.NewLines(), "THIRD|THIRD");
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row09NoAnswerAtAll) {
  LiveWindow& live = Open([](Wire&) { return After::kContinue; });
  live.terminal().shown.timeout = "30";
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + kTimeout);
  live.terminal().shown.timeout = "20000";
  live.Send("NEXT");
  EXPECT_EQ(live.NewLines(), "NEXT|NEXT");
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row10CrAndLfOnTheirOwn) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("12.5\r");
    wire.Pause(30);
    wire.Send("\n");
    return After::kContinue;
  });
  live.Send("FAULT");
  live.Send("NEXT");
  EXPECT_EQ(live.NewLines(), "FAULT|12.5|NEXT|NEXT");
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row11TheTerminatorInsideACountedBlock) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("\r\n1\r\n2\r\n");
    return After::kContinue;
  });
  live.terminal().receive = {.mode = 2, .binary_display = 1, .receive_terminator = ""};
  live.terminal().shown.count = "8";
  live.Send("FAULT");
  live.terminal().receive = {};
  live.Send("NEXT");
  EXPECT_EQ(live.NewLines(), "FAULT|<0D><0A><31><0D><0A><32><0D><0A>|NEXT|NEXT");
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row12ALineWithoutEnd) {
  LiveWindow& live = Open([](Wire& wire) {
    const std::string piece(1000, 'x');
    while (wire.Send(piece)) {
    }
    return After::kContinue;
  });
  live.Send("FAULT");
  live.Send("NEXT");
  const std::string full(16000, 'x');
  EXPECT_EQ(live.NewLines(), "FAULT|" + full + "|NEXT|" + full);
  live.instrument().EndFault();
  live.Press("TB_FLUSH");
  live.instrument().AwaitAnswers(3);
  live.NewLines();
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row13AnInstrumentThatTalksUnasked) {
  LiveWindow& live = Open([](Wire& wire) {
    while (wire.Send("unasked\r\n")) {
    }
    return After::kContinue;
  });
  live.Send("FAULT");
  live.Send("NEXT");
  EXPECT_EQ(live.NewLines(), "FAULT|unasked|NEXT|unasked");
  live.instrument().EndFault();
  live.Press("TB_FLUSH");
  live.instrument().AwaitAnswers(3);
  EXPECT_TRUE(live.NewLines().starts_with("Empfangspuffer gelöscht ("));
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row13GarbageAndAMebibyteThatNobodyAskedFor) {
  LiveWindow& live = Open([](Wire& wire) {
    std::string garbage(std::size_t{1} << 20, '\0');
    std::uint32_t seed = 1;
    for (char& byte : garbage) byte = static_cast<char>((seed = seed * 1664525 + 1013904223) >> 24);
    wire.Send("own\r\n" + garbage);
    return After::kContinue;
  });
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|own");
  // A hundred lines of it: each read gives one answer and none is an error.
  for (int i = 0; i < 100; ++i) ASSERT_TRUE(live.window().core().session.GetAnswer());
  live.instrument().EndFault();
  live.Press("TB_FLUSH");
  live.NewLines();
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row17AnInstrumentThatNoLongerReads) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.AwaitEndOfFault();
    wire.ResetAtEnd();
    return After::kEnd;
  });
  live.Send("FIRST");
  live.NewLines();
  live.connection().timeout_ms = 300;
  live.Reconnect();
  live.NewLines();
  const std::string endless(std::size_t{16} << 20, 'x');
  EXPECT_EQ(live.window().core().session.SendCommand(endless), terminal::Sent::kWriteFailed);
  EXPECT_EQ(live.NewLines(), "Write error: " + TextOf(Status::kWriteTimeout));
  live.connection().timeout_ms = 5000;
  live.instrument().AwaitFault();
  live.instrument().EndFault();
  ExpectReconnects(live);
}

TEST_P(WindowFault, Row22AHangUpInTheMiddleOfAList) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("\r\nNO CARRIER\r\n");
    for (int commands = 0; commands < 2 && wire.Line(); ++commands) {
    }
    return After::kEnd;
  });
  live.Play("ONE\r\nFAULT\r\nTWO\r\nTHREE\r\nFOUR\r\n");
  const std::string lines = live.NewLines();
  const std::string end = EndOf(GetParam());
  EXPECT_TRUE(lines.starts_with("ONE|ONE|FAULT|TWO|NO CARRIER|THREE|" + end + "|")) << lines;
  EXPECT_TRUE(lines.ends_with("|FOUR|" + end)) << lines;
  EXPECT_TRUE(live.window().findChild<QToolBar*>("Toolbar1")->isEnabled());
  ExpectReconnects(live);
}

}  // namespace
}  // namespace kolvane::faults
