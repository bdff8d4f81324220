#include <gtest/gtest.h>
#include <poll.h>

#include <cstring>
#include <functional>
#include <vector>

#include "base/loopback.h"
#include "devlnk/deadline.h"
#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

/// The library's wait handler while it lives; it records the calls and runs the test's code.
class Handler {
 public:
  explicit Handler(std::function<bool(int call)> keep_waiting) : keep_waiting_(std::move(keep_waiting)) {
    EXPECT_EQ(QDX_SetWaitHandler(&Handler::Called, this), 0);
  }
  ~Handler() { QDX_SetWaitHandler(nullptr, nullptr); }
  Handler(const Handler&) = delete;
  Handler& operator=(const Handler&) = delete;

  std::vector<std::int32_t> waited_ms;

 private:
  static std::int32_t Called(void* context, std::int32_t waited_ms) {
    auto& handler = *static_cast<Handler*>(context);
    handler.waited_ms.push_back(waited_ms);
    return handler.keep_waiting_(static_cast<int>(handler.waited_ms.size())) ? 0 : 1;
  }

  std::function<bool(int)> keep_waiting_;
};

bool KeepWaiting(int) { return true; }
bool StopWaiting(int) { return false; }

constexpr std::int32_t kGivenUp = Code(Status::kGivenUp);

using WaitHandlerTest = PortTest;
INSTANTIATE_TEST_SUITE_P(Ports, WaitHandlerTest, testing::ValuesIn(kKinds), NameOf);

TEST_P(WaitHandlerTest, IsCalledFromFiftyMillisecondsOnUntilTheAnswer) {
  const Handler handler([this](int call) {
    if (call == 3) partner_->Send("late\n");
    return true;
  });
  EXPECT_EQ(Answer(), "late");
  ASSERT_GE(handler.waited_ms.size(), 3u);
  EXPECT_GE(handler.waited_ms[0], 50);
  EXPECT_GE(handler.waited_ms[1], handler.waited_ms[0] + 50);
  EXPECT_GE(handler.waited_ms[2], handler.waited_ms[1] + 50);
}

// Otherwise the next command would read the answer to this one.
TEST_P(WaitHandlerTest, AnAnswerIsTakenThatCameWhileTheHandlerHeldUpTheWait) {
  QDX_SetTimeout(80);
  const Handler handler([this](int) {
    partner_->Send("in time\n");
    partner_->AwaitArrival();
    SleepMs(100);
    return true;
  });
  EXPECT_EQ(Answer(), "in time");
  EXPECT_EQ(handler.waited_ms.size(), 1u);
}

TEST_P(WaitHandlerTest, IsNotCalledIfTheAnswerHasArrived) {
  const Handler handler(StopWaiting);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(QDX_WritePort("A?\n"), 0);
    partner_->Send("1\n");
    partner_->AwaitArrival();
    EXPECT_EQ(Answer(), "1");
  }
  EXPECT_TRUE(handler.waited_ms.empty());
}

TEST_P(WaitHandlerTest, GivesUpAnAnswerAndKeepsReceivedBytes) {
  partner_->Send("12.");
  partner_->AwaitArrival();
  {
    const Handler handler(StopWaiting);
    const ReadResult cut = ReadPort(100, '\n');
    EXPECT_EQ(cut.status, kGivenUp);
    EXPECT_EQ(cut.queued, 3);
    EXPECT_EQ(handler.waited_ms.size(), 1u);
  }
  partner_->Send("5\n");
  EXPECT_EQ(Answer(), "12.5");
  EXPECT_EQ(QDX_WritePort("NEXT?\n"), 0);
  EXPECT_EQ(partner_->Receive(6), "NEXT?\n");
}

TEST_P(WaitHandlerTest, GivesUpAfterAQuickAnswerToo) {
  partner_->Send("1\n");
  EXPECT_EQ(Answer(), "1");
  const Handler handler(StopWaiting);
  EXPECT_EQ(AnswerStatus(), kGivenUp);
  EXPECT_EQ(AnswerStatus(1, 0), kGivenUp);
}

TEST_P(WaitHandlerTest, GivesUpAnAnswerThatDrips) {
  int calls = 0;
  {
    const Handler handler([&](int call) { return (calls = call) < 3; });
    const Drip drip(*partner_, std::string(400, 'x'), 2);
    EXPECT_EQ(AnswerStatus(), kGivenUp);
  }
  EXPECT_EQ(calls, 3);
  EXPECT_EQ(Answer(400, 0), std::string(400, 'x'));
}

TEST_P(WaitHandlerTest, GivesUpACommandThatNobodyReads) {
  const Handler handler(StopWaiting);
  EXPECT_EQ(QDX_WritePort(std::string(std::size_t{80} << 20, 'x').c_str()), kGivenUp);
  EXPECT_EQ(QDX_ClosePort(), 0);
}

TEST_P(WaitHandlerTest, LetsTheTimeOutEndTheWait) {
  const Handler handler(KeepWaiting);
  QDX_SetTimeout(120);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  EXPECT_FALSE(handler.waited_ms.empty());
}

TEST_P(WaitHandlerTest, CannotStartAnotherCall) {
  std::vector<std::int32_t> statuses;
  char byte = 0;
  const Handler handler([&](int) {
    statuses = {QDX_OpenPort(1, 9600, "n", 8, 1, 512),
                QDX_SelectDevice(1),
                QDX_SetTimeout(1),
                QDX_WritePort("X\n"),
                QDX_ReadPort(&byte, 1, nullptr, nullptr, 0),
                QDX_FlushInQueue(),
                QDX_ActivateInterpreter(200),
                QDX_CloseInterpreterEx(1, 1),
                QDX_ClosePort(),
                QDX_Delay(1),
                QDX_SetWaitHandler(nullptr, nullptr)};
    return false;
  });
  EXPECT_EQ(AnswerStatus(), kGivenUp);
  EXPECT_EQ(statuses, std::vector<std::int32_t>(11, Code(Status::kBusy)));
  EXPECT_EQ(QDX_WritePort("Y\n"), 0);
  EXPECT_EQ(partner_->Receive(2), "Y\n");
}

TEST_P(WaitHandlerTest, MayAskHowMuchHasArrived) {
  partner_->Send("abc");
  partner_->AwaitArrival();
  std::int32_t waiting = 0;
  const Handler handler([&](int) {
    waiting = QDX_BytesWaiting();
    return false;
  });
  EXPECT_EQ(AnswerStatus(), kGivenUp);
  EXPECT_EQ(waiting, 3);
}

TEST(WaitHandler, GivesUpADelay) {
  const Handler handler([](int call) { return call < 2; });
  EXPECT_EQ(QDX_Delay(INT32_MAX), kGivenUp);
  EXPECT_EQ(handler.waited_ms.size(), 2u);
}

TEST(WaitHandler, LetsADelayEnd) {
  const Handler handler(KeepWaiting);
  EXPECT_EQ(QDX_Delay(120), 0);
  EXPECT_FALSE(handler.waited_ms.empty());
  EXPECT_EQ(QDX_Delay(0), 0);
}

TEST(WaitHandler, GivesUpAnAttemptToConnect) {
  const base::FullListener full;
  QDX_SetTimeout(20'000);
  const Handler handler(StopWaiting);
  EXPECT_EQ(QDX_OpenPort(100, 1, "127.0.0.1", full.port(), 1, 512), kGivenUp);
  EXPECT_EQ(handler.waited_ms.size(), 1u) << "no second address is tried";
  EXPECT_EQ(QDX_WritePort("X\n"), Code(Status::kNotOpen));
}

using WaitingBytes = PortTest;
INSTANTIATE_TEST_SUITE_P(Ports, WaitingBytes, testing::ValuesIn(kKinds), NameOf);

TEST_P(WaitingBytes, AreThoseOfTheQueueAndOfTheSystem) {
  EXPECT_EQ(QDX_BytesWaiting(), 0);
  partner_->Send("one\ntwo\n");
  EXPECT_EQ(Answer(), "one");
  EXPECT_EQ(QDX_BytesWaiting(), 4);
  EXPECT_EQ(QDX_FlushInQueue(), 4);
  EXPECT_EQ(QDX_BytesWaiting(), 0);
  partner_->Send("three");
  partner_->AwaitArrival();
  EXPECT_EQ(QDX_BytesWaiting(), 5);
  QDX_ClosePort();
  EXPECT_EQ(QDX_BytesWaiting(), 0);
}

TEST_P(WaitingBytes, MakeTheDescriptorReadable) {
  Deadline long_enough(20'000);
  Deadline at_once(0);
  const int fd = QDX_WaitDescriptor();
  ASSERT_GE(fd, 0);
  EXPECT_FALSE(WaitFor(fd, POLLIN, at_once));
  partner_->Send("x");
  EXPECT_TRUE(WaitFor(fd, POLLIN, long_enough));
  QDX_ClosePort();
  EXPECT_LT(QDX_WaitDescriptor(), 0);
}

TEST_P(WaitingBytes, AreNotNeededToNoticeALoss) {
  Deadline deadline(20'000);
  partner_->HangUp();
  EXPECT_TRUE(WaitFor(QDX_WaitDescriptor(), POLLIN, deadline));
}

TEST(StatusTexts, AreGermanAndCutAtWholeCharacters) {
  char buffer[64];
  EXPECT_EQ(QDX_StatusText(Code(Status::kRefused), buffer, sizeof buffer), 20);
  EXPECT_STREQ(buffer, "Verbindung abgelehnt");
  EXPECT_EQ(QDX_StatusText(Code(Status::kNoSuchNode), buffer, 5), 3) << "never half an umlaut";
  EXPECT_STREQ(buffer, "Ger");
  EXPECT_EQ(QDX_StatusText(Code(Status::kNoSuchNode), buffer, 6), 5);
  EXPECT_STREQ(buffer, "Gerä");
  EXPECT_EQ(QDX_StatusText(Code(Status::kRefused), buffer, 1), 0);
  EXPECT_STREQ(buffer, "");
}

TEST(StatusTexts, OfUnknownStatusesAreEmpty) {
  char buffer[8];
  for (const std::int32_t status : {0, 1, -1, -999, INT32_MAX, INT32_MIN}) {
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(QDX_StatusText(status, buffer, sizeof buffer), 0) << status;
    EXPECT_STREQ(buffer, "");
  }
  EXPECT_EQ(QDX_StatusText(Code(Status::kRefused), nullptr, 10), 0);
  EXPECT_EQ(QDX_StatusText(Code(Status::kRefused), buffer, 0), 0);
}

}  // namespace
}  // namespace kolvane::devlnk
