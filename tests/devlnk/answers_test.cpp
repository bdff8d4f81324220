#include <gtest/gtest.h>

#include <thread>

#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

using Answers = PortTest;
INSTANTIATE_TEST_SUITE_P(Ports, Answers, testing::ValuesIn(kKinds), NameOf);

TEST_P(Answers, CommandsArriveUnchanged) {
  EXPECT_EQ(QDX_WritePort("MSV?\x80\xFF\r\n"), 0);
  EXPECT_EQ(QDX_WritePort(""), 0);
  EXPECT_EQ(QDX_WritePort("\n"), 0);
  EXPECT_EQ(partner_->Receive(9), "MSV?\x80\xFF\r\n\n");
}

TEST_P(Answers, OnlyATerminatorIsStripped) {
  partner_->Send("12.5\n");
  EXPECT_EQ(Answer(), "12.5");
  partner_->Send("7\r8\r\xFF");
  EXPECT_EQ(Answer(100, '\r'), "7");
  EXPECT_EQ(Answer(100, '\r'), "8");
  EXPECT_EQ(Answer(100, 255), "");
}

TEST_P(Answers, ALineFeedIsDeliveredWithItsCarriageReturn) {
  partner_->Send("12.5\r\n\r\n\n");
  EXPECT_EQ(Answer(), "12.5\r\n");
  EXPECT_EQ(Answer(), "\r\n");
  EXPECT_EQ(Answer(), "");
}

TEST_P(Answers, ALineFeedIsAByteLikeAnyOtherToAnotherTerminator) {
  partner_->Send("1\r\n2\r\n;");
  EXPECT_EQ(Answer(100, ';'), "1\r\n2\r\n");
}

TEST_P(Answers, AreDeliveredOneByOne) {
  partner_->Send("one\ntwo\nthr");
  EXPECT_EQ(Answer(), "one");
  const ReadResult second = ReadPort(100, '\n');
  EXPECT_EQ(second.bytes, "two");
  EXPECT_EQ(second.queued, 3);
  partner_->Send("ee\n");
  EXPECT_EQ(Answer(), "three");
}

TEST_P(Answers, LongerThanTheBufferAreDeliveredInParts) {
  partner_->Send("abcdefgh\n");
  EXPECT_EQ(Answer(4), "abcd");
  EXPECT_EQ(Answer(3), "efg");
  EXPECT_EQ(Answer(2), "h");
  partner_->Send("12.5\r\n");
  EXPECT_EQ(Answer(5), "12.5\r");
  EXPECT_EQ(Answer(5), "");
}

TEST_P(Answers, OfNoBytesAreDeliveredAtOnce) {
  EXPECT_EQ(Answer(0), "");
  EXPECT_EQ(Answer(0, 0), "");
}

TEST_P(Answers, ByCountContainEveryByte) {
  const std::string block("\0\n\r\xFF\x11\x13\x03\x7F", 8);
  partner_->Send(block + block);
  EXPECT_EQ(Answer(8, 0), block);
  EXPECT_EQ(Answer(1, 0), std::string(1, '\0'));
  EXPECT_EQ(Answer(7, 0), block.substr(1));
}

TEST_P(Answers, ByCountMayBeFarLongerThanTheSystemsBuffers) {
  std::string block(300'000, '\0');
  for (std::size_t at = 0; at < block.size(); ++at) block[at] = static_cast<char>(at % 251);
  std::thread sender([&] { partner_->Send(block); });
  EXPECT_TRUE(Answer(300'000, 0) == block);
  sender.join();
}

TEST_P(Answers, InPiecesAreWaitedFor) {
  const Drip drip(*partner_, "+1.234E-3,OK\r\n", 2);
  EXPECT_EQ(Answer(), "+1.234E-3,OK\r\n");
}

TEST_P(Answers, WithTimeoutZeroAreTakenFromReceivedBytes) {
  ASSERT_EQ(QDX_SetTimeout(0), 0);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  partner_->Send("1\n2");
  partner_->AwaitArrival();
  EXPECT_EQ(Answer(), "1");
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  EXPECT_EQ(Answer(1), "2");
}

TEST_P(Answers, ThatNeverEndFillTheBuffer) {
  partner_->Send(std::string(1500, 'x'));
  EXPECT_EQ(Answer(1000), std::string(1000, 'x'));
}

}  // namespace
}  // namespace kolvane::devlnk
