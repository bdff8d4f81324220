#include "window/listener.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QTest>
#include <string>

#include "terminal/connect_bench.h"

namespace kolvane::window {
namespace {

/// A port whose descriptor is a pipe's, readable while a byte of an unasked line is waiting.
class ListenerTest : public testing::Test, protected terminal::ConnectBench {
 protected:
  ListenerTest() {
    EXPECT_EQ(pipe(pipe_), 0);
    device.wait_descriptor = pipe_[0];
    device.waiting = [this] { return static_cast<std::int32_t>(device.incoming.size()); };
    device_state.connected = true;
    state.extras.listen = true;
    listener_.Renew();
  }
  ~ListenerTest() override {
    listener_.Forget();
    close(pipe_[0]);
    close(pipe_[1]);
  }

  void Deliver(const std::string& line) {
    device.incoming += line;
    EXPECT_EQ(write(pipe_[1], "x", 1), 1);
  }
  bool Shown(const std::string& line) {
    return QTest::qWaitFor([&] { return !pane.lines.empty() && pane.lines.back() == line; });
  }

  int pipe_[2] = {-1, -1};
  bool busy_ = false;
  int asked_ = 0;
  device::ConnectionParameters connection_;
  Listener listener_{device, terminal::TerminalSlices{device_state, connection_, state}, output, connect,
                     [this] {
                       ++asked_;
                       return busy_;
                     }};
};

TEST_F(ListenerTest, ShowsReceivedLinesWhileTheWindowIsIdle) {
  Deliver("ALARM 1\r\n");
  EXPECT_TRUE(Shown("ALARM 1"));
}

TEST_F(ListenerTest, AnUnfinishedLineDoesNotFollowTheAnswerOfACommand) {
  Deliver("ALARM 1\r\nALA");
  EXPECT_TRUE(Shown("ALARM 1"));
  listener_.EndLine();
  EXPECT_EQ(pane.lines.back(), "ALA");
  const std::size_t lines = pane.lines.size();
  listener_.EndLine();
  EXPECT_EQ(pane.lines.size(), lines) << "shown once";
}

TEST_F(ListenerTest, DoesNotReadDuringACommand) {
  busy_ = true;
  Deliver("ALARM 1\r\n");
  ASSERT_TRUE(QTest::qWaitFor([this] { return asked_ > 0; }));
  const int asked = asked_;
  for (int i = 0; i < 100; ++i) QCoreApplication::processEvents();
  EXPECT_EQ(asked_, asked) << "the descriptor is not watched during a command";
  listener_.Look();
  EXPECT_EQ(pane.lines, terminal::Lines{});
  busy_ = false;
  listener_.Look();
  EXPECT_TRUE(Shown("ALARM 1"));
}

TEST_F(ListenerTest, CountsBytesThatGoOnComingUnread) {
  terminal::RecordedState shown;
  output.SetStateView(&shown);
  state.extras.listen = false;
  for (const char* text : {"9 Bytes warten", "18 Bytes warten", "27 Bytes warten"}) {
    Deliver("ALARM 1\r\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.line.Text() == text; })) << text;
  }
  EXPECT_LT(asked_, 10) << "it does not ask without end";
}

}  // namespace
}  // namespace kolvane::window
