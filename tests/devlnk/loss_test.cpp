#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

using Loss = PortTest;
INSTANTIATE_TEST_SUITE_P(Ports, Loss, testing::ValuesIn(kKinds), NameOf);

TEST_P(Loss, DeliversCompleteAnswersFirst) {
  partner_->Send("1\n2\n3");
  EXPECT_EQ(Answer(), "1");
  partner_->HangUp();
  EXPECT_EQ(Answer(), "2");
  EXPECT_EQ(AnswerStatus(), Code(partner_->loss()));
  EXPECT_EQ(AnswerStatus(), Code(partner_->loss()));
  EXPECT_EQ(Answer(1, 0), "3");
  EXPECT_EQ(AnswerStatus(1, 0), Code(partner_->loss()));
}

TEST_P(Loss, EndsAWaitingRead) {
  std::thread hang_up([this] {
    partner_->Receive(3);
    partner_->HangUp();
  });
  EXPECT_EQ(QDX_WritePort("A?\n"), 0);
  EXPECT_EQ(AnswerStatus(), Code(partner_->loss()));
  hang_up.join();
}

TEST_P(Loss, FailsTheSameForReadsAndWrites) {
  partner_->HangUp();
  EXPECT_EQ(AnswerStatus(), Code(partner_->loss()));
  EXPECT_EQ(QDX_WritePort("A?\n"), Code(partner_->loss()));
  EXPECT_EQ(QDX_WritePort("A?\n"), Code(partner_->loss()));
  EXPECT_EQ(QDX_FlushInQueue(), 0);
  EXPECT_EQ(QDX_ClosePort(), 0);
}

TEST_P(Loss, IsFoundByWritingOnly) {
  partner_->HangUp();
  std::int32_t status = 0;
  // The system may accept the first commands before it notices the loss.
  for (int tries = 0; tries < 10'000 && status == 0; ++tries) status = QDX_WritePort("A?\n");
  EXPECT_EQ(status, Code(Status::kConnectionLost));
  EXPECT_LT(AnswerStatus(), 0);
}

TEST_P(Loss, IsOverWhenThePortIsOpenedAgain) {
  partner_->HangUp();
  EXPECT_EQ(AnswerStatus(), Code(partner_->loss()));
  partner_ = GetParam().make();
  ASSERT_EQ(partner_->Open(), 0);
  partner_->Send("back\n");
  EXPECT_EQ(Answer(), "back");
}

TEST_P(Loss, OpeningAgainDiscardsBytesOfTheEarlierPort) {
  partner_->Send("1\n2\n");
  EXPECT_EQ(Answer(), "1");
  ASSERT_EQ(partner_->Open(), 0);
  partner_->Send("new\n");
  EXPECT_EQ(Answer(), "new");
}

using Flush = PortTest;
INSTANTIATE_TEST_SUITE_P(Ports, Flush, testing::ValuesIn(kKinds), NameOf);

TEST_P(Flush, CountsQueuedBytesAndThoseOfTheSystem) {
  EXPECT_EQ(QDX_FlushInQueue(), 0);
  partner_->Send("abc\ndef");
  EXPECT_EQ(Answer(), "abc");
  partner_->Send("ghi\n");
  partner_->AwaitArrival();
  EXPECT_EQ(QDX_FlushInQueue(), 7);
  QDX_SetTimeout(0);
  EXPECT_EQ(AnswerStatus(1, 0), Code(Status::kReadTimeout));
}

TEST_P(Flush, EndsWhileThePartnerKeepsSending) {
  std::atomic<bool> enough = false;
  std::thread talker([&] {
    while (!enough) partner_->Send("unsolicited line\r\n");
  });
  EXPECT_EQ(Answer(3, 0), "uns");
  EXPECT_GT(QDX_FlushInQueue(), 0);
  enough = true;
  // Makes room for the line whose Send may still block.
  QDX_SetTimeout(10);
  while (AnswerStatus(1, 0) == 0) QDX_FlushInQueue();
  talker.join();
  QDX_SetTimeout(20'000);
  QDX_FlushInQueue();
  partner_->Send("\nquiet again\n");
  while (Answer() != "quiet again") {
  }
}

}  // namespace
}  // namespace kolvane::devlnk
