#include "amplifier/replay.h"

#include <gtest/gtest.h>

namespace kolvane::amplifier {
namespace {

using std::chrono::milliseconds;
using Time = Replay::Clock::time_point;

const Time kStart{std::chrono::hours(1)};

Time After(int ms) { return kStart + milliseconds(ms); }

const Conversation kConversation{
    0.0, {{true, "A\n", 1.0, 2}, {false, "a\r\n", 1.25, 3}, {false, "b\r\n", 2.0, 4}, {true, "C\n", 2.5, 5}}};

TEST(Replay, AnswersAtOnceAsRecorded) {
  Replay replay(kConversation, false, kStart);
  EXPECT_FALSE(replay.Due());
  EXPECT_EQ(replay.TakeDue(After(5)), "");
  replay.Take("A", After(10));
  EXPECT_EQ(replay.TakeDue(After(10)), "");
  replay.Take("\n", After(20));
  EXPECT_EQ(replay.Due(), After(20));
  EXPECT_EQ(replay.TakeDue(After(20)), "a\r\nb\r\n");
  EXPECT_FALSE(replay.finished());
  replay.Take("C\n", After(30));
  EXPECT_TRUE(replay.finished());
  replay.End();
  EXPECT_EQ(replay.difference(), "");
}

TEST(Replay, AnswersAfterTheRecordedTimes) {
  Replay replay(kConversation, true, kStart);
  replay.Take("A\n", After(50));
  EXPECT_EQ(replay.Due(), After(300));
  EXPECT_EQ(replay.TakeDue(After(299)), "");
  EXPECT_EQ(replay.TakeDue(After(310)), "a\r\n");
  EXPECT_EQ(replay.Due(), After(1050)) << "a late answer does not delay others";
  EXPECT_EQ(replay.TakeDue(After(1050)), "b\r\n");
  EXPECT_FALSE(replay.Due());
}

TEST(Replay, WithoutTimesNothingWaits) {
  const Conversation conversation{{}, {{true, "A", {}, 1}, {false, "a", {}, 2}, {false, "b", 7.0, 3}}};
  Replay replay(conversation, true, kStart);
  replay.Take("A", After(1));
  EXPECT_EQ(replay.TakeDue(After(1)), "ab");
}

TEST(Replay, TimesThatRunBackwardsAreIgnored) {
  const Conversation conversation{5.0, {{false, "a", 4.0, 1}}};
  Replay replay(conversation, true, kStart);
  EXPECT_EQ(replay.Due(), kStart);
}

TEST(Replay, TheInstrumentMaySendFirst) {
  const Conversation conversation{0.0, {{false, "hello\r\n", 0.5, 2}}};
  Replay replay(conversation, true, kStart);
  EXPECT_EQ(replay.Due(), After(500));
  EXPECT_EQ(replay.TakeDue(After(500)), "hello\r\n");
  EXPECT_TRUE(replay.finished());
  EXPECT_FALSE(replay.started());
}

TEST(Replay, ACommandThatComesEarlyIsComparedInItsTurn) {
  Replay replay(kConversation, true, kStart);
  replay.Take("A\nC\n", After(0));
  EXPECT_FALSE(replay.finished());
  EXPECT_EQ(replay.TakeDue(After(1000)), "a\r\nb\r\n");
  EXPECT_TRUE(replay.finished());
  EXPECT_EQ(replay.difference(), "");
}

TEST(Replay, NamesTheFirstCommandThatDiffers) {
  Replay replay(kConversation, false, kStart);
  replay.Take("A\nX\xFF\x01\nY\n", kStart);
  EXPECT_EQ(replay.difference(), "") << "its turn has not come";
  EXPECT_EQ(replay.TakeDue(kStart), "a\r\nb\r\n");
  EXPECT_EQ(replay.difference(), R"(5: expected "C\n", got "X\xFF\x01\n")");
  EXPECT_FALSE(replay.Due());
}

TEST(Replay, ADifferenceIsFoundAtItsByte) {
  Replay replay(kConversation, false, kStart);
  replay.Take("A\r", kStart);
  EXPECT_EQ(replay.difference(), R"(2: expected "A\n", got "A\r")");
}

TEST(Replay, AnExtraCommandDiffers) {
  const Conversation conversation{0.0, {{true, "A\n", 1.0, 2}}};
  Replay replay(conversation, false, kStart);
  replay.Take("A\nB\n", kStart);
  EXPECT_EQ(replay.difference(), R"(2: expected nothing, got "B\n")");
}

TEST(Replay, AMissingCommandDiffers) {
  Replay replay(kConversation, true, kStart);
  replay.Take("A\n", kStart);
  replay.End();
  EXPECT_EQ(replay.difference(), R"(5: expected "C\n", got nothing)");
  Replay half(kConversation, true, kStart);
  half.Take("A", kStart);
  half.End();
  EXPECT_EQ(half.difference(), R"(2: expected "A\n", got "A")");
}

TEST(Replay, AnswersThatNobodyAwaitsMayBeLeftOut) {
  const Conversation conversation{0.0, {{true, "A\n", 1.0, 2}, {false, "a", 9.0, 3}}};
  Replay replay(conversation, true, kStart);
  replay.Take("A\n", kStart);
  replay.End();
  EXPECT_EQ(replay.difference(), "");
}

const Conversation kHungUp{0.0, {{true, "A\n", 1.0, 2}, {false, "a", 1.5, 3}}, HangUp{3.0}};

TEST(Replay, HangsUpWhenTheInstrumentDid) {
  Replay replay(kHungUp, true, kStart);
  replay.Take("A\n", After(0));
  EXPECT_EQ(replay.TakeDue(After(500)), "a");
  EXPECT_EQ(replay.Due(), After(2000));
  EXPECT_EQ(replay.TakeDue(After(1999)), "");
  EXPECT_FALSE(replay.hung_up());
  EXPECT_EQ(replay.TakeDue(After(2000)), "");
  EXPECT_TRUE(replay.hung_up());
  EXPECT_FALSE(replay.Due());
  EXPECT_EQ(replay.difference(), "");
}

TEST(Replay, ACommandDuringTheHangUpIsNotADifference) {
  Replay replay(kHungUp, true, kStart);
  replay.Take("A\nB\n", kStart);
  EXPECT_EQ(replay.TakeDue(After(5000)), "a");
  EXPECT_TRUE(replay.hung_up());
  replay.End();
  EXPECT_EQ(replay.difference(), "");
}

TEST(Replay, AfterAMissedTurnThereIsNoHangUp) {
  Replay replay(kHungUp, false, kStart);
  EXPECT_EQ(replay.TakeDue(After(5000)), "");
  EXPECT_FALSE(replay.hung_up());
  EXPECT_FALSE(replay.Due());
}

TEST(Quoted, CutsLongTexts) {
  EXPECT_EQ(Quoted("a\"\\\t"), R"("a\"\\\t")");
  EXPECT_EQ(Quoted(std::string(200, 'x')), '"' + std::string(200, 'x') + '"');
  EXPECT_EQ(Quoted(std::string(201, 'x')), '"' + std::string(200, 'x') + "\"...");
}

}  // namespace
}  // namespace kolvane::amplifier
