#include "terminal/unasked.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "terminal/connect_bench.h"

namespace kolvane::terminal {
namespace {

class UnaskedTest : public testing::Test, protected ConnectBench {
 protected:
  UnaskedTest() {
    device_state.connected = true;
    state.extras.listen = true;
    output.SetStateView(&shown_);
    device.waiting = [this] { return static_cast<std::int32_t>(device.incoming.size()); };
  }

  RecordedState shown_;
  Unasked unasked_{device, device_state, state, output, connect};
};

TEST_F(UnaskedTest, LinesAreShownAsTheyArrive) {
  device.incoming = "a\r\n\r\nb\r\nc";
  EXPECT_TRUE(unasked_.Take());
  EXPECT_EQ(pane.lines, (Lines{"a", "", "b"}));
  EXPECT_TRUE(unasked_.HasPartialLine());
  device.incoming = "d\r\n";
  EXPECT_TRUE(unasked_.Take());
  EXPECT_EQ(pane.lines.back(), "cd");
  EXPECT_FALSE(unasked_.HasPartialLine());
}

TEST_F(UnaskedTest, ALineWithoutAnEndIsShownWhenNothingFollows) {
  device.incoming = "login: ";
  unasked_.Take();
  unasked_.ShowPartialLine();
  EXPECT_EQ(pane.lines, Lines{"login: "});
}

TEST_F(UnaskedTest, WithoutListeningTheNumberOfWaitingBytesIsShown) {
  state.extras.listen = false;
  device.incoming = "greeting\r\n";
  EXPECT_FALSE(unasked_.Take());
  EXPECT_EQ(shown_.line.Text(), "10 Bytes warten");
  EXPECT_EQ(device.incoming.size(), 10u);
  EXPECT_EQ(pane.lines, Lines{});
}

TEST_F(UnaskedTest, TheEndOfTheConnectionIsReportedAtOnce) {
  device_state.last_result = 3;
  device.read_error = {-40, "-40", "geschlossen"};
  EXPECT_FALSE(unasked_.Take());
  EXPECT_EQ(shown_.line.Text(), "Verbindung verloren");
  EXPECT_TRUE(connect.lost());
  EXPECT_TRUE(device_state.connected) << "unchanged until the next attempt to connect";
  EXPECT_EQ(device_state.last_result, 3);
}

TEST_F(UnaskedTest, BytesThatWaitDoNotHideTheEndOfTheConnection) {
  state.extras.listen = false;
  device.incoming = "rest\r\n";
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  device.wait_descriptor = ends[0];
  close(ends[1]);
  unasked_.Take();
  close(ends[0]);
  EXPECT_EQ(shown_.line.Text(), "Verbindung verloren");
  EXPECT_EQ(device.incoming, "rest\r\n");
}

TEST_F(UnaskedTest, WhatAReadHasPutBackIsKeptIfTheNextReadFails) {
  device_state.put_back = "ab";
  device.waiting = [] { return 6; };
  unasked_.Take();
  EXPECT_EQ(device_state.put_back, "ab");
  device.incoming = "cd\r\n";
  unasked_.Take();
  EXPECT_EQ(pane.lines, Lines{"abcd"});
}

TEST_F(UnaskedTest, ALossFoundWhileReadingTheRestIsReported) {
  device_state.put_back = "ab";
  device.waiting = [] { return 6; };
  device.read_error = {-41, "-41"};
  EXPECT_FALSE(unasked_.Take());
  EXPECT_EQ(shown_.line.Text(), "Verbindung verloren");
}

TEST_F(UnaskedTest, BytesThatArriveWhileTheConnectionIsCheckedAreKept) {
  device.incoming = "ab\r\n";
  device.waiting = [] { return 0; };
  unasked_.Take();
  device.waiting = [this] {
    return static_cast<std::int32_t>(device_state.put_back.size() + device.incoming.size());
  };
  unasked_.Take();
  EXPECT_EQ(pane.lines, Lines{"ab"});
}

TEST_F(UnaskedTest, WithNothingLeftNothingIsRead) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  device.wait_descriptor = ends[0];
  EXPECT_TRUE(unasked_.Take());
  EXPECT_EQ(device.CountCalls("Read"), 0u);
  close(ends[1]);
  device.read_error = {-40, "-40"};
  EXPECT_FALSE(unasked_.Take()) << "the end can be read";
  close(ends[0]);
}

TEST_F(UnaskedTest, ALongLineWithoutAnEndIsShownInParts) {
  const std::string half(Unasked::kMaxAtOnce / 2, 'x');
  device.incoming = half + half.substr(1);
  EXPECT_TRUE(unasked_.Take());
  EXPECT_TRUE(pane.lines.empty());
  device.incoming = "x";
  EXPECT_TRUE(unasked_.Take());
  EXPECT_EQ(pane.lines, Lines{half + half});
}

TEST_F(UnaskedTest, AFloodIsReadInPieces) {
  device.incoming = std::string(3 * Unasked::kMaxAtOnce, 'x');
  EXPECT_TRUE(unasked_.Take());
  EXPECT_EQ(device.incoming.size(), 2 * Unasked::kMaxAtOnce);
}

}  // namespace
}  // namespace kolvane::terminal
