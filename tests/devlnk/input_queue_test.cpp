#include "devlnk/input_queue.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>

namespace kolvane::devlnk {
namespace {

void Put(InputQueue& queue, std::string_view bytes) {
  const auto room = queue.Room();
  ASSERT_GE(room.size(), bytes.size());
  std::memcpy(room.data(), bytes.data(), bytes.size());
  queue.Commit(bytes.size());
}

std::string Held(const InputQueue& queue) { return {queue.data(), queue.size()}; }

/// "delivered/consumed", or "-" while there is no answer.
std::string Found(InputQueue& queue, std::size_t count, unsigned char terminator) {
  const auto answer = queue.FindAnswer(count, terminator);
  if (!answer) return "-";
  return std::to_string(answer->delivered) + "/" + std::to_string(answer->consumed);
}

TEST(InputQueue, IsEmptyAtFirst) {
  InputQueue queue;
  EXPECT_EQ(queue.size(), 0u);
  EXPECT_EQ(Found(queue, 1, '\n'), "-");
  EXPECT_EQ(Found(queue, 0, '\n'), "0/0");
  EXPECT_EQ(Found(queue, 0, 0), "0/0");
  queue.Clear();
  EXPECT_EQ(queue.size(), 0u);
}

TEST(InputQueue, FindsAnswersByTerminator) {
  InputQueue queue;
  Put(queue, "12\r\n3\n");
  EXPECT_EQ(Found(queue, 100, '\n'), "4/4");
  EXPECT_EQ(Found(queue, 4, '\n'), "4/4");
  EXPECT_EQ(Found(queue, 3, '\n'), "3/3");
  EXPECT_EQ(Found(queue, 100, '\r'), "2/3");
  EXPECT_EQ(Found(queue, 100, ';'), "-");
  queue.Consume(4);
  EXPECT_EQ(Found(queue, 100, '\n'), "1/2");
}

TEST(InputQueue, FindsATerminatorThatComesAfterManySearches) {
  InputQueue queue;
  for (const char* piece : {"1", "2", ".", "5"}) {
    Put(queue, piece);
    EXPECT_EQ(Found(queue, 100, '\n'), "-");
  }
  Put(queue, "\r");
  EXPECT_EQ(Found(queue, 100, '\n'), "-");
  Put(queue, "\n");
  EXPECT_EQ(Found(queue, 100, '\n'), "6/6");
}

TEST(InputQueue, SearchesAgainFromTheStartForAnotherTerminator) {
  InputQueue queue;
  Put(queue, "a;b");
  EXPECT_EQ(Found(queue, 100, '\n'), "-");
  EXPECT_EQ(Found(queue, 100, ';'), "1/2");
  EXPECT_EQ(Found(queue, 100, 0), "-");
  EXPECT_EQ(Found(queue, 3, 0), "3/3");
}

TEST(InputQueue, SearchesAtTheRightPositionAfterPartsWereTaken) {
  InputQueue queue;
  Put(queue, "abcdef");
  EXPECT_EQ(Found(queue, 100, '\n'), "-");
  queue.Consume(4);
  Put(queue, "\n");
  EXPECT_EQ(Found(queue, 100, '\n'), "2/3");
  queue.Consume(3);
  Put(queue, "\n");
  EXPECT_EQ(Found(queue, 100, '\n'), "0/1");
}

TEST(InputQueue, KeepsTheOrderWhileItGrowsAndIsRead) {
  InputQueue queue;
  std::string expected;
  for (int round = 0; round < 400; ++round) {
    const std::string piece(1000, static_cast<char>('a' + round % 26));
    Put(queue, piece);
    expected += piece;
    if (round % 3 == 0) continue;
    queue.Consume(700);
    expected.erase(0, 700);
  }
  EXPECT_TRUE(Held(queue) == expected);
}

TEST(InputQueue, KeepsTheOrderWhenTheRestMovesToTheFront) {
  InputQueue queue;
  Put(queue, std::string(InputQueue::kChunk, 'a'));
  Put(queue, std::string(InputQueue::kChunk - 3, 'b') + "1\n2");
  EXPECT_EQ(Found(queue, InputQueue::kLimit, ';'), "-");
  const void* const start = queue.data();
  queue.Consume(2 * InputQueue::kChunk - 5);
  Put(queue, "3\n;" + std::string(InputQueue::kChunk - 3, 'c'));
  EXPECT_EQ(static_cast<const void*>(queue.data()), start);
  EXPECT_TRUE(Held(queue) == "bb1\n23\n;" + std::string(InputQueue::kChunk - 3, 'c'));
  EXPECT_EQ(Found(queue, InputQueue::kLimit, ';'), "7/8");
}

TEST(InputQueue, OffersRoomUpToItsLimitAndNoMore) {
  InputQueue queue;
  while (queue.size() + InputQueue::kChunk <= InputQueue::kLimit) {
    ASSERT_EQ(queue.Room().size(), InputQueue::kChunk);
    queue.Commit(InputQueue::kChunk - (queue.size() == 0 ? 1 : 0));
  }
  ASSERT_EQ(queue.Room().size(), 1u);
  queue.Commit(1);
  EXPECT_EQ(queue.size(), InputQueue::kLimit);
  EXPECT_TRUE(queue.Room().empty());
  queue.Consume(10);
  EXPECT_EQ(queue.Room().size(), 10u);
}

/// "bytes end", or "-" while there is no message.
std::string Next(InputQueue& queue, const MessageRule& rule) {
  const auto message = queue.FindMessage(rule);
  if (!message) return "-";
  static constexpr const char* kEnds[] = {"most", "terminator", "own", "gap"};
  queue.Consume(message->bytes);
  return std::to_string(message->bytes) + " " + kEnds[static_cast<int>(message->end)];
}

TEST(InputQueue, EndsMessagesByTheirTerminator) {
  InputQueue queue;
  Put(queue, "ab\r");
  EXPECT_EQ(Next(queue, {100, "\n"}), "-");
  EXPECT_EQ(Next(queue, {100, "\r\n"}), "-");
  Put(queue, "\nc\nd\r\n");
  EXPECT_EQ(Next(queue, {100, "\r\n"}), "4 terminator");
  EXPECT_EQ(Next(queue, {1, "\n"}), "1 most");
  EXPECT_EQ(Next(queue, {100, "\n"}), "1 terminator");
  EXPECT_EQ(Next(queue, {100, {}}), "-");
  EXPECT_EQ(Next(queue, {3, {}}), "3 most");
}

TEST(InputQueue, FindsATerminatorThatOthersHavePassed) {
  InputQueue queue;
  Put(queue, "a\nb");
  EXPECT_EQ(Next(queue, {100, "X\n"}), "-");
  EXPECT_EQ(Next(queue, {100, "\n"}), "2 terminator");
  EXPECT_EQ(Found(queue, 100, 'b'), "0/1");
}

TEST(InputQueue, EndsMessagesWhereTheInstrumentDoes) {
  InputQueue queue;
  Put(queue, "one");
  queue.MarkEnd();
  queue.MarkEnd();
  Put(queue, "two\n");
  queue.MarkEnd();
  EXPECT_EQ(Next(queue, {2, "\n"}), "2 most");
  EXPECT_EQ(Next(queue, {100, "\n"}), "1 own");
  EXPECT_EQ(Next(queue, {100, "\n", false}), "4 terminator");
  EXPECT_EQ(Next(queue, {100, "\n"}), "-");
}

TEST(InputQueue, ForgetsMarksWithItsBytes) {
  InputQueue queue;
  Put(queue, "one");
  queue.MarkEnd();
  queue.Clear();
  Put(queue, "two");
  EXPECT_EQ(Next(queue, {100, {}}), "-");
}

}  // namespace
}  // namespace kolvane::devlnk
