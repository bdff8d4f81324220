#include <gtest/gtest.h>
#include <signal.h>
#include <sys/time.h>

#include <atomic>

#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

using Timeout = PortTest;
INSTANTIATE_TEST_SUITE_P(Ports, Timeout, testing::ValuesIn(kKinds), NameOf);

/// Interrupts every wait of the process, once per millisecond.
class Interruptions {
 public:
  Interruptions() {
    struct sigaction action {};
    action.sa_handler = [](int) { ++count; };
    sigaction(SIGALRM, &action, &before_);
    const itimerval every{{0, 1000}, {0, 1000}};
    setitimer(ITIMER_REAL, &every, nullptr);
  }
  ~Interruptions() {
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before_, nullptr);
  }
  static inline std::atomic<int> count{0};

 private:
  struct sigaction before_ {};
};

TEST_P(Timeout, OfASilentPartnerIsAFailure) {
  for (const int milliseconds : {0, 1, 30, 120}) {
    ASSERT_EQ(QDX_SetTimeout(milliseconds), 0);
    EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout)) << milliseconds;
    EXPECT_EQ(AnswerStatus(1, 0), Code(Status::kReadTimeout)) << milliseconds;
  }
}

TEST_P(Timeout, KeepsReceivedBytes) {
  partner_->Send("12.5\r");
  partner_->AwaitArrival();
  QDX_SetTimeout(30);
  const ReadResult cut = ReadPort(100, '\n');
  EXPECT_EQ(cut.status, Code(Status::kReadTimeout));
  EXPECT_EQ(cut.queued, 5);
  QDX_SetTimeout(20'000);
  partner_->Send("\n");
  EXPECT_EQ(Answer(), "12.5\r\n");
}

TEST_P(Timeout, OfACountKeepsReceivedBytes) {
  partner_->Send("abc");
  partner_->AwaitArrival();
  QDX_SetTimeout(30);
  EXPECT_EQ(AnswerStatus(4, 0), Code(Status::kReadTimeout));
  EXPECT_EQ(Answer(3, 0), "abc");
}

TEST_P(Timeout, LeavesALateAnswerForTheNextRead) {
  QDX_SetTimeout(30);
  QDX_WritePort("A?\n");
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  partner_->Send("late\n");
  QDX_SetTimeout(20'000);
  QDX_WritePort("B?\n");
  partner_->Send("own\n");
  EXPECT_EQ(Answer(), "late");
  EXPECT_EQ(Answer(), "own");
}

TEST_P(Timeout, IsForTheWholeAnswerNotForEachByte) {
  QDX_SetTimeout(60);
  const Drip drip(*partner_, std::string(40, 'x'), 5);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
}

TEST_P(Timeout, OfAPartnerThatStopsReadingIsAFailure) {
  QDX_SetTimeout(50);
  const std::string endless(std::size_t{80} << 20, 'x');
  EXPECT_EQ(QDX_WritePort(endless.c_str()), Code(Status::kWriteTimeout));
  QDX_SetTimeout(0);
  EXPECT_EQ(QDX_WritePort(endless.c_str()), Code(Status::kWriteTimeout));
  EXPECT_EQ(QDX_ClosePort(), 0);
}

TEST_P(Timeout, IsNotChangedByInterruptions) {
  const Interruptions every_millisecond;
  QDX_SetTimeout(130);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  QDX_SetTimeout(20'000);
  const Drip drip(*partner_, "interrupted\n", 3);
  EXPECT_EQ(Answer(), "interrupted");
  EXPECT_GT(Interruptions::count, 0);
}

TEST_P(Timeout, OfAnInterruptedDelayIsKept) {
  const Interruptions every_millisecond;
  const int before = Interruptions::count;
  EXPECT_EQ(QDX_Delay(20), 0);
  EXPECT_GT(Interruptions::count, before);
}

TEST_P(Timeout, DoesNotCutALongCommandToASlowReader) {
  const std::string text(std::size_t{1} << 20, 'y');
  std::string received;
  std::thread reader([&] { received = partner_->Receive(text.size()); });
  const Interruptions every_millisecond;
  EXPECT_EQ(QDX_WritePort(text.c_str()), 0);
  reader.join();
  EXPECT_TRUE(received == text);
}

}  // namespace
}  // namespace kolvane::devlnk
