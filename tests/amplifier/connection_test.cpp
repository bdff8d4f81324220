#include "amplifier/connection.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <deque>
#include <string>
#include <vector>

#include "amplifier/line_handler.h"

namespace kolvane::amplifier {
namespace {

using namespace std::chrono_literals;

// Delivers the packets that a test puts in; accepts only as many bytes at once as the test allows.
struct FakePeer {
  std::deque<std::string> incoming;
  bool end_of_stream = false;
  std::size_t room = 1 << 20;
  bool broken = false;
  bool has_read = true;
  std::vector<std::string> calls;  // "send x", "orderly", "reset"
};

class FakeStream final : public Stream {
 public:
  explicit FakeStream(FakePeer& peer) : peer_(peer) {}
  int descriptor() const override { return 42; }
  Transfer Receive(std::span<char> space) override {
    if (peer_.incoming.empty())
      return {peer_.end_of_stream ? Transfer::Kind::kEnded : Transfer::Kind::kLater, 0};
    const std::string packet = peer_.incoming.front();
    peer_.incoming.pop_front();
    std::ranges::copy(packet, space.begin());
    return {Transfer::Kind::kMoved, packet.size()};
  }
  Transfer ReceiveWithTimeout(std::span<char> space) override { return Receive(space); }
  Transfer Send(std::string_view bytes) override {
    if (peer_.broken) return {Transfer::Kind::kEnded, 0};
    const std::size_t count = std::min(bytes.size(), peer_.room);
    if (count == 0) return {};
    peer_.room -= count;
    peer_.calls.push_back("send " + std::string(bytes.substr(0, count)));
    return {Transfer::Kind::kMoved, count};
  }
  [[nodiscard]] bool EndOrderly() override {
    peer_.calls.push_back("orderly");
    return peer_.has_read;
  }
  void EndByReset() override { peer_.calls.push_back("reset"); }

 private:
  FakePeer& peer_;
};

// Echoes "|" after each line; WAIT answers late.
class ConnectionTest : public testing::Test {
 protected:
  class Handler final : public LineHandler {
   public:
    void Handle(const Line& line, Reply& reply) override {
      reply.kind = line.text == "none"  ? Reply::Kind::kNone
                   : line.text == "raw" ? Reply::Kind::kBytes
                                        : Reply::Kind::kLine;
      reply.bytes = line.text;
      reply.wait_ms = line.text == "wait" ? 50 : 0;
    }
    const Transmission& transmission() const override { return transmission_; }
    Transmission transmission_{0, 0, "|"};
  };

  Connection Connect(Behaviour behaviour = {}) {
    return Connection(std::make_unique<FakeStream>(peer_), handler_, behaviour);
  }
  void Receive(Connection& connection, std::string packet) {
    peer_.incoming.push_back(std::move(packet));
    connection.OnEvents(POLLIN);
  }
  using Calls = std::vector<std::string>;

  FakePeer peer_;
  Handler handler_;
};

TEST(TransferOf, OnlyAnInterruptionIsTriedAgain) {
  EXPECT_EQ(Transfer::Of(1).kind, Transfer::Kind::kMoved);
  EXPECT_EQ(Transfer::Of(1).count, 1u);
  EXPECT_EQ(Transfer::Of(0).kind, Transfer::Kind::kEnded);
  for (const int error : {EAGAIN, EINTR}) {
    errno = error;
    EXPECT_EQ(Transfer::Of(-1).kind, Transfer::Kind::kLater) << error;
  }
  for (const int error : {ECONNRESET, EIO, EPIPE}) {
    errno = error;
    EXPECT_EQ(Transfer::Of(-1).kind, Transfer::Kind::kEnded) << error;
  }
}

TEST_F(ConnectionTest, AnAnswerLeavesInOneSend) {
  Connection connection = Connect();
  EXPECT_EQ(connection.Events(), POLLIN);
  Receive(connection, "a\n");
  Receive(connection, "raw\r\n");
  EXPECT_EQ(peer_.calls, (Calls{"send a|", "send raw"}));
  EXPECT_EQ(connection.Events(), POLLIN);
  EXPECT_FALSE(connection.Due());
}

TEST_F(ConnectionTest, AnswersToLinesOfOnePacketLeaveTogether) {
  Connection connection = Connect();
  Receive(connection, "a\nb\nnone\nc\nunfinished");
  EXPECT_EQ(peer_.calls, Calls{"send a|b|c|"});
  Receive(connection, " line\n");
  EXPECT_EQ(peer_.calls.back(), "send unfinished line|");
}

TEST_F(ConnectionTest, ExchangeAnswersAndReportsSilence) {
  Connection connection = Connect();
  peer_.incoming = {"a\n"};
  EXPECT_TRUE(connection.Exchange());
  EXPECT_FALSE(connection.Exchange());
  EXPECT_EQ(peer_.calls, Calls{"send a|"});
  handler_.transmission_.delay_ms = 10;
  peer_.incoming = {"b\n", "c\n"};
  EXPECT_TRUE(connection.Exchange());
  EXPECT_FALSE(connection.Exchange());
  EXPECT_EQ(peer_.incoming.size(), 1u);
}

TEST_F(ConnectionTest, OutputThatDoesNotFitWaitsForRoom) {
  Connection connection = Connect();
  peer_.room = 2;
  Receive(connection, "abcd\n");
  EXPECT_EQ(peer_.calls, Calls{"send ab"});
  EXPECT_EQ(connection.Events(), POLLOUT);
  peer_.room = 100;
  connection.OnEvents(POLLOUT);
  EXPECT_EQ(peer_.calls, (Calls{"send ab", "send cd|"}));
  EXPECT_EQ(connection.Events(), POLLIN);
}

TEST_F(ConnectionTest, ADelayedAnswerIsSentWhenItIsDue) {
  handler_.transmission_.delay_ms = 100;
  Connection connection = Connect();
  const auto before = Connection::Clock::now();
  Receive(connection, "a\nb\n");
  const auto after = Connection::Clock::now();
  ASSERT_TRUE(connection.Due());
  const auto due = *connection.Due();
  EXPECT_GE(due, before + 100ms);
  EXPECT_LE(due, after + 100ms);
  EXPECT_EQ(connection.Events(), 0);
  connection.OnTime(due - 1ns);
  EXPECT_EQ(peer_.calls, Calls{});
  connection.OnTime(due);
  EXPECT_EQ(peer_.calls, Calls{"send a|"});
  ASSERT_TRUE(connection.Due());
  connection.OnTime(*connection.Due());
  EXPECT_EQ(peer_.calls, (Calls{"send a|", "send b|"}));
  EXPECT_FALSE(connection.Due());
}

TEST_F(ConnectionTest, AWaitDoesNotDelayEarlierAnswers) {
  Connection connection = Connect();
  Receive(connection, "a\nwait\nb\n");
  EXPECT_EQ(peer_.calls, Calls{"send a|"});
  connection.OnTime(*connection.Due());
  EXPECT_EQ(peer_.calls, (Calls{"send a|", "send wait|", "send b|"}));
}

TEST_F(ConnectionTest, DripSendsByteByByte) {
  handler_.transmission_.drip_ms = 30;
  Connection connection = Connect();
  Receive(connection, "ab\n");
  auto now = *connection.Due();
  connection.OnTime(now);
  EXPECT_EQ(peer_.calls, Calls{"send a"});
  EXPECT_EQ(*connection.Due(), now + 30ms);
  connection.OnTime(now += 30ms);
  EXPECT_EQ(*connection.Due(), now + 30ms);
  connection.OnTime(now += 30ms);
  EXPECT_EQ(peer_.calls, (Calls{"send a", "send b", "send |"}));
  EXPECT_FALSE(connection.Due());
  EXPECT_EQ(connection.Events(), POLLIN);
}

TEST_F(ConnectionTest, DripSwitchedOffReleasesTheRest) {
  handler_.transmission_.drip_ms = 30;
  Connection connection = Connect();
  Receive(connection, "abc\n");
  connection.OnTime(*connection.Due());
  handler_.transmission_.drip_ms = 0;
  connection.OnTime(*connection.Due());
  EXPECT_EQ(peer_.calls, (Calls{"send a", "send bc|"}));
}

TEST_F(ConnectionTest, ClosesGracefullyAfterItsAnswers) {
  Connection connection = Connect({.close_after = 2});
  Receive(connection, "a\nnone\n");
  EXPECT_FALSE(connection.Ended());
  Receive(connection, "b\nc\n");
  EXPECT_EQ(peer_.calls, (Calls{"send a|", "send b|", "orderly"}));
  EXPECT_TRUE(connection.Ended());
}

TEST_F(ConnectionTest, ClosesInsteadOfTheFirstAnswer) {
  Connection connection = Connect({.close_after = 0});
  EXPECT_FALSE(connection.Ended());
  Receive(connection, "a\n");
  EXPECT_EQ(peer_.calls, Calls{"orderly"});
  EXPECT_TRUE(connection.Ended());
}

TEST_F(ConnectionTest, ResetsAfterItsAnswers) {
  Connection connection = Connect({.reset_after = 1});
  Receive(connection, "a\nb\n");
  EXPECT_EQ(peer_.calls, (Calls{"send a|", "reset"}));
  EXPECT_TRUE(connection.Ended());
}

TEST_F(ConnectionTest, TheFirstLimitWins) {
  Connection connection = Connect({.close_after = 1, .reset_after = 2});
  Receive(connection, "a\nb\n");
  EXPECT_EQ(peer_.calls, (Calls{"send a|", "orderly"}));
}

TEST_F(ConnectionTest, ClosesInTheMiddleOfAnAnswer) {
  Connection connection = Connect({.close_mid_answer = 2});
  Receive(connection, "abc\n");
  Receive(connection, "defgh\n");
  EXPECT_EQ(peer_.calls, (Calls{"send abc|", "send def", "orderly"}));
  EXPECT_TRUE(connection.Ended());
}

TEST_F(ConnectionTest, ClosesOnlyWhenTheDelayedAnswerIsOut) {
  handler_.transmission_.delay_ms = 10;
  Connection connection = Connect({.close_after = 1});
  Receive(connection, "a\n");
  EXPECT_FALSE(connection.Ended());
  connection.OnTime(*connection.Due());
  EXPECT_EQ(peer_.calls, (Calls{"send a|", "orderly"}));
}

TEST_F(ConnectionTest, ClosesOnlyWhenThePeerHasRead) {
  Connection connection = Connect({.close_after = 1});
  peer_.has_read = false;
  Receive(connection, "a\n");
  EXPECT_FALSE(connection.Ended());
  EXPECT_EQ(connection.Events(), 0);
  peer_.has_read = true;
  connection.OnTime(*connection.Due());
  EXPECT_EQ(peer_.calls, (Calls{"send a|", "orderly", "orderly"}));
  EXPECT_TRUE(connection.Ended());
}

TEST_F(ConnectionTest, FallsSilent) {
  Connection connection = Connect({.silent_after = 1});
  Receive(connection, "a\nb\n");
  Receive(connection, "c\n");
  EXPECT_EQ(peer_.calls, Calls{"send a|"});
  EXPECT_EQ(connection.Events(), POLLIN);
}

TEST_F(ConnectionTest, AnswersCommandsFromBeforeThePeersEnd) {
  handler_.transmission_.delay_ms = 10;
  Connection connection = Connect();
  Receive(connection, "a\n");
  connection.OnTime(*connection.Due());
  Receive(connection, "b\nc\n");
  peer_.end_of_stream = true;
  connection.OnTime(*connection.Due());
  connection.OnTime(*connection.Due());
  connection.OnEvents(POLLIN);
  EXPECT_EQ(peer_.calls, (Calls{"send a|", "send b|", "send c|"}));
  EXPECT_TRUE(connection.Ended());
}

TEST_F(ConnectionTest, EndsOnABrokenPeer) {
  Connection sending = Connect();
  peer_.broken = true;
  Receive(sending, "a\n");
  EXPECT_TRUE(sending.Ended());
  Connection waiting = Connect();
  waiting.OnEvents(POLLERR | POLLHUP);
  EXPECT_TRUE(waiting.Ended());
}

TEST(EchoInstrument, SendsEveryLineBack) {
  Echo echo({0, 0, "\n"});
  Reply reply;
  reply.wait_ms = 5;
  echo.Handle(Line{"DCL, RES"}, reply);
  EXPECT_EQ(reply.kind, Reply::Kind::kLine);
  EXPECT_EQ(reply.bytes, "DCL, RES");
  EXPECT_EQ(reply.wait_ms, 0u);
  echo.Handle(Line{}, reply);
  EXPECT_EQ(reply.bytes, "");
  echo.Handle(Line{{}, true}, reply);
  EXPECT_EQ(reply.bytes, "?");
  EXPECT_EQ(echo.transmission().terminator, "\n");
}

}  // namespace
}  // namespace kolvane::amplifier
