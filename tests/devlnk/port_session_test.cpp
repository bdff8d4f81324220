#include "devlnk/port_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <new>
#include <string>
#include <vector>

namespace kolvane::devlnk {
namespace {

/// What the next channel that is opened returns and records.
struct Script {
  std::deque<Received> reads;  ///< in turn; then `talks` decides
  bool talks = false;          ///< fills all room with 'x', for ever
  bool drips = false;          ///< one 'x' at each read, for ever
  Status write = Status::kOk;
  std::vector<std::string> calls;
};
Script script;

class FakeChannel final : public Channel {
 public:
  ~FakeChannel() override { script.calls.push_back("close"); }

  Received Read(std::span<char> room, Deadline& deadline) override {
    script.calls.push_back("read");
    deadline.Start();
    Received received{script.talks ? room.size() : script.drips ? 1u : 0u};
    if (!script.reads.empty()) {
      received = script.reads.front();
      script.reads.pop_front();
    }
    std::fill_n(room.begin(), received.bytes, 'x');
    return received;
  }
  Status Write(std::string_view bytes, Deadline&) override {
    script.calls.push_back("write " + std::string(bytes));
    return script.write;
  }
  void DiscardInput(Deadline&) override { script.calls.push_back("discard"); }
};

Opened OpenFake(const PortRequest& request, Deadline& deadline) {
  script.calls.push_back("open " + std::string(request.name) + " " + std::to_string(deadline.total_ms()));
  return {Status::kOk, std::make_unique<FakeChannel>()};
}

Opened FailToOpen(const PortRequest&, Deadline&) { return {Status::kBusy, nullptr}; }

Status Available() { return Status::kOk; }

Status Missing() { return Status::kNotAvailable; }

constexpr PortKind kFake{7, "FAKE", OpenFake, Available};

class PortSessionTest : public testing::Test {
 protected:
  void SetUp() override {
    script = Script{};
    ASSERT_EQ(session_.Open(kFake, {}), Status::kOk);
    script.calls.clear();
  }
  Status Read(std::size_t count, unsigned char terminator) {
    buffer_.assign(count, '#');
    return session_.Read(buffer_, terminator, delivered_);
  }

  PortSession session_;
  std::string buffer_;
  std::size_t delivered_ = 0;
};

TEST_F(PortSessionTest, AnUnknownPortClosesTheOpenOne) {
  EXPECT_EQ(session_.OpenPort(7, {}), Status::kInvalidArgument);
  EXPECT_EQ(script.calls, std::vector<std::string>{"close"});
  EXPECT_FALSE(session_.is_open());
}

TEST_F(PortSessionTest, OpensByRowWithTheTimeoutSetBefore) {
  session_.SetTimeout(123);
  EXPECT_EQ(session_.Open(kFake, {}), Status::kOk);
  EXPECT_EQ(script.calls, (std::vector<std::string>{"close", "open FAKE 123"}));
}

TEST_F(PortSessionTest, IsClosedAfterAFailedOpening) {
  EXPECT_EQ(session_.Open(PortKind{8, "FAIL", FailToOpen, Available}, {}), Status::kBusy);
  EXPECT_FALSE(session_.is_open());
  EXPECT_EQ(session_.Open(PortKind{9, "NONE", OpenFake, Missing}, {}), Status::kNotAvailable);
  EXPECT_EQ(script.calls, (std::vector<std::string>{"close"}));
}

TEST_F(PortSessionTest, ServesSingleBytesFromOneRead) {
  script.reads = {{100}};
  for (int count = 0; count < 100; ++count) ASSERT_EQ(Read(1, 0), Status::kOk);
  EXPECT_EQ(script.calls, (std::vector<std::string>{"read"}));
}

TEST_F(PortSessionTest, DeliversAtMostTheQueuesLimit) {
  script.talks = true;
  EXPECT_EQ(Read(InputQueue::kLimit, '\n'), Status::kOk);
  EXPECT_EQ(delivered_, InputQueue::kLimit);
  EXPECT_EQ(session_.queued(), 0u);
}

TEST_F(PortSessionTest, StopsFlushingAnEndlessSender) {
  script.talks = true;
  ASSERT_EQ(Read(1, 0), Status::kOk);
  EXPECT_EQ(session_.Flush(), InputQueue::kChunk - 1 + InputQueue::kLimit);
  EXPECT_EQ(session_.queued(), 0u);
  EXPECT_EQ(script.calls.back(), "discard");
}

TEST_F(PortSessionTest, GivesUpAPartnerThatDripsPastTheTimeout) {
  session_.SetTimeout(0);
  script.drips = true;
  EXPECT_EQ(Read(1000, '\n'), Status::kReadTimeout);
  EXPECT_EQ(session_.queued(), 1u);
  EXPECT_EQ(buffer_, std::string(1000, '#'));
}

TEST_F(PortSessionTest, TakesAllReceivedBytesWithoutWaiting) {
  session_.SetTimeout(0);
  script.reads = {{InputQueue::kChunk}, {InputQueue::kChunk}, {5}};
  EXPECT_EQ(Read(2 * InputQueue::kChunk + 5, 0), Status::kOk);
}

TEST_F(PortSessionTest, ReportsATemporaryFailure) {
  script.reads = {{0, Status::kOutOfResources}, {1}};
  EXPECT_EQ(Read(1, 0), Status::kOutOfResources);
  EXPECT_EQ(Read(1, 0), Status::kOk);
  script.write = Status::kWriteTimeout;
  EXPECT_EQ(session_.Write("a"), Status::kWriteTimeout);
  script.write = Status::kOk;
  EXPECT_EQ(session_.Write("b"), Status::kOk);
}

TEST_F(PortSessionTest, KeepsTheFirstReasonOfALoss) {
  script.write = Status::kConnectionLost;
  script.reads = {{2}, {0, Status::kClosedByPeer}};
  EXPECT_EQ(session_.Write("a"), Status::kConnectionLost);
  EXPECT_EQ(session_.Write("b"), Status::kConnectionLost);
  EXPECT_EQ(Read(2, 0), Status::kOk);
  EXPECT_EQ(Read(2, 0), Status::kConnectionLost);
  EXPECT_EQ(Read(2, 0), Status::kConnectionLost);
  EXPECT_EQ(script.calls, (std::vector<std::string>{"write a", "read", "read"}));
}

TEST_F(PortSessionTest, RefusesNegativeTimeouts) {
  EXPECT_EQ(session_.SetTimeout(-1), Status::kInvalidArgument);
  EXPECT_EQ(session_.SetTimeout(INT32_MAX), Status::kOk);
}

TEST_F(PortSessionTest, OnlySilenceAndALossEndAMessageAtAGap) {
  const MessageRule rule{.max_bytes = 100, .terminator = {}, .gap_ms = 50};
  std::string message;
  MessageEnd end{};
  script.reads = {{3}, {0, Status::kIoError}};
  EXPECT_EQ(session_.ReadMessage(rule, message, end), Status::kIoError);
  EXPECT_EQ(message, "");
  EXPECT_EQ(session_.queued(), 3u);
  script.reads = {{0, Status::kConnectionLost}};
  EXPECT_EQ(session_.ReadMessage(rule, message, end), Status::kOk);
  EXPECT_EQ(message, "xxx");
  EXPECT_EQ(end, MessageEnd::kGap);
}

}  // namespace
}  // namespace kolvane::devlnk
