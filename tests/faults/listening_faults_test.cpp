// Unasked lines and blocks when the instrument fails.

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

#include "devlnk/status.h"
#include "faults/live_window.h"

namespace kolvane::faults {
namespace {

using devlnk::Status;

constexpr int kLongestWaitMs = 60'000;

class ListeningFault : public LiveWindowTest {
 protected:
  /// The fault's answer is sent at once, everything else once the window listens.
  LiveWindow& Listen(Fault fault) {
    LiveWindow& live = Open([fault = std::move(fault)](Wire& wire) {
      wire.Send("own\r\n");
      wire.AwaitEndOfFault();
      return fault(wire);
    });
    live.terminal().extras.listen = true;
    live.Send("FAULT");
    EXPECT_EQ(live.NewLines(), "FAULT|own");
    live.instrument().EndFault();
    return live;
  }
  /// The lines shown from here on, up to and including `last`.
  std::string LinesUntil(const std::string& last) {
    std::string lines;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
          const std::string more = live_->NewLines();
          lines += (lines.empty() || more.empty() ? "" : "|") + more;
          return lines.ends_with(last);
        },
        kLongestWaitMs))
        << lines.substr(0, 1000);
    return lines;
  }
  void ExpectUsable() {
    live_->Send("NOW");
    EXPECT_EQ(live_->NewLines(), "NOW|NOW");
    EXPECT_TRUE(live_->boxes().empty());
  }
  void ExpectReconnects() {
    live_->Press("TB_CONNECT");
    live_->Press("TB_CONNECT");
    EXPECT_EQ(live_->NewLines(), "<->|<+>");
    ExpectUsable();
  }
  QString State() { return live_->window().findChild<QLabel*>(QStringLiteral("StatusBar1_2"))->text(); }
};

using ListeningOnTcp = ListeningFault;
using BlockFault = ListeningFault;
using BlockOnTcp = ListeningFault;
INSTANTIATE_TEST_SUITE_P(Ports, ListeningFault, testing::ValuesIn(kPorts), PortName);
INSTANTIATE_TEST_SUITE_P(Ports, ListeningOnTcp, testing::Values(Port::kTcp), PortName);
INSTANTIATE_TEST_SUITE_P(Ports, BlockFault, testing::ValuesIn(kPorts), PortName);
INSTANTIATE_TEST_SUITE_P(Ports, BlockOnTcp, testing::Values(Port::kTcp), PortName);

TEST_P(ListeningOnTcp, Row33AnEndAfterHalfALine) {
  Listen([](Wire& wire) {
    wire.Send("unasked\r\nhalf a li");
    return After::kEnd;
  });
  EXPECT_EQ(LinesUntil("half a li"), "unasked|half a li");
  EXPECT_TRUE(QTest::qWaitFor([&] { return State() == "Verbindung verloren"; }, kLongestWaitMs));
  ExpectReconnects();
}

TEST_P(ListeningFault, Row33TheInstrumentGoes) {
  Listen([](Wire&) { return After::kEnd; });
  EXPECT_TRUE(QTest::qWaitFor([&] { return State() == "Verbindung verloren"; }, kLongestWaitMs));
  EXPECT_EQ(live_->NewLines(), "");
  ExpectReconnects();
}

TEST_P(ListeningOnTcp, Row33AFloodIsShownLineByLine) {
  constexpr int kLines = 5000;
  std::string all;
  for (int i = 1; i <= kLines; ++i) all += "unasked " + std::to_string(i) + "\r\n";
  Listen([all](Wire& wire) {
    wire.Send(all);
    return After::kContinue;
  });
  std::string expected;
  for (int i = 1; i <= kLines; ++i) expected += (i == 1 ? "unasked " : "|unasked ") + std::to_string(i);
  EXPECT_EQ(LinesUntil("|unasked " + std::to_string(kLines)), expected);
  ExpectUsable();
}

TEST_P(ListeningOnTcp, Row33ALineWithoutEndIsShownInParts) {
  constexpr std::size_t kBytes = 300'000;
  Listen([](Wire& wire) {
    wire.Send(std::string(kBytes, 'x') + "\r\nend\r\n");
    return After::kContinue;
  });
  const std::string lines = LinesUntil("end");
  EXPECT_EQ(std::count(lines.begin(), lines.end(), 'x'), static_cast<std::ptrdiff_t>(kBytes));
  ExpectUsable();
}

TEST_P(BlockFault, Row34ABlockThatBreaksOffFails) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("#3100" + std::string(50, 'x'));
    wire.AwaitEndOfFault();
    return After::kContinue;
  });
  live.terminal().extras.blocks = true;
  live.terminal().shown.timeout = "1000";
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + TextOf(Status::kReadTimeout));
  live.terminal().shown.timeout = "20000";
  live.instrument().EndFault();
  ExpectUsable();
}

TEST_P(BlockFault, Row34ADrippedBlockIsWhole) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Drip("#15a\r\nb", 40);
    // A terminator counts for 50 ms.
    wire.Send("\n\r\n");
    return After::kContinue;
  });
  live.terminal().extras.blocks = true;
  live.Send("FAULT");
  EXPECT_TRUE(live.NewLines().starts_with("FAULT|#15a"));
  ExpectUsable();
}

TEST_P(BlockFault, Row34ALengthBeyondTheLimitIsRefused) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("#9999999999");
    return After::kContinue;
  });
  live.terminal().extras.blocks = true;
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|-61");
  ExpectUsable();
}

TEST_P(BlockOnTcp, Row34AResetWithinABlock) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("#41000" + std::string(500, 'x'));
    wire.ResetAtEnd();
    return After::kEnd;
  });
  live.terminal().extras.blocks = true;
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + TextOf(Status::kConnectionLost));
  ExpectReconnects();
}

TEST_P(BlockFault, Row34AnEndWithinABlock) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("#41000" + std::string(500, 'x'));
    return After::kEnd;
  });
  live.terminal().extras.blocks = true;
  live.Send("FAULT");
  const Status end = GetParam() == Port::kTcp ? Status::kClosedByPeer : Status::kConnectionLost;
  EXPECT_EQ(live.NewLines(), "FAULT|" + TextOf(end));
  ExpectReconnects();
}

}  // namespace
}  // namespace kolvane::faults
