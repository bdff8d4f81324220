#include "terminal/block_reader.h"

#include <gtest/gtest.h>

#include "terminal/session_bench.h"

using namespace std::string_literals;

namespace kolvane::terminal {
namespace {

using Result = BlockReader::Result;

class BlockReaderTest : public testing::Test, protected SessionBench {
 protected:
  /// Reads `incoming` with that terminator.
  Result Read(const std::string& incoming, std::string_view terminator = "\r\n") {
    device.incoming = incoming;
    return BlockReader(device, device_state, terminator).Read(block_);
  }

  std::string block_;
};

TEST_F(BlockReaderTest, ReadsAsManyBytesAsTheHeaderSaysWithAnyValues) {
  EXPECT_EQ(Read("#14\r\n\0#\r\nnext"s), Result::kBlock);
  EXPECT_EQ(block_, "#14\r\n\0#"s);
  EXPECT_EQ(device.incoming, "next");
  EXPECT_EQ(Read("#10\r\n"), Result::kBlock);
  EXPECT_EQ(block_, "#10");
}

TEST_F(BlockReaderTest, ReadsWaitingBytesAtOnce) {
  device.waiting = [this] { return static_cast<std::int32_t>(device.incoming.size()); };
  EXPECT_EQ(Read("#6100000" + std::string(100000, 'x') + "\r\n"), Result::kBlock);
  EXPECT_EQ(block_.size(), 100008u);
  EXPECT_LT(device.CountCalls("ReadBinary"), 20u);
}

TEST_F(BlockReaderTest, ABlockWithoutALengthEndsAtTheTerminator) {
  EXPECT_EQ(Read("#0a\nb\r\nrest"), Result::kBlock);
  EXPECT_EQ(block_, "#0a\nb");
  EXPECT_EQ(device.incoming, "rest");
  EXPECT_EQ(Read("#0abc", ""), Result::kBlock) << "without a terminator, up to the gap";
  EXPECT_EQ(block_, "#0abc");
}

TEST_F(BlockReaderTest, ATerminatorBeyondAsciiIsOneByte) {
  EXPECT_EQ(Read("#0abc\xA4rest", "\u00A4"), Result::kBlock);
  EXPECT_EQ(block_, "#0abc");
  EXPECT_EQ(device.incoming, "rest");
  EXPECT_EQ(Read("#12ab\xA4xy", "\u00A4"), Result::kBlock);
  EXPECT_EQ(device_state.put_back + device.incoming, "xy");
}

TEST_F(BlockReaderTest, OnlyATerminatorIsStrippedAfterIt) {
  EXPECT_EQ(Read("#12abxy"), Result::kBlock);
  EXPECT_EQ(block_, "#12ab");
  EXPECT_EQ(device_state.put_back + device.incoming, "xy");
  device_state.put_back.clear();
  EXPECT_EQ(Read("#12ab\nxy"), Result::kBlock) << "LF instead of CR LF";
  EXPECT_EQ(device_state.put_back + device.incoming, "xy");
  device_state.put_back.clear();
  EXPECT_EQ(Read("#12abx\r\n"), Result::kBlock);
  EXPECT_EQ(device_state.put_back + device.incoming, "x\r\n")
      << "a terminator later on is that of another answer";
}

TEST_F(BlockReaderTest, AGapAfterItIsNoFailure) {
  device_state.last_result = -30;
  EXPECT_EQ(Read("#12ab"), Result::kBlock);
  EXPECT_EQ(device_state.last_result, 0);
}

TEST_F(BlockReaderTest, WhatIsNotABlockIsPutBack) {
  for (const std::string& answer : {"12.5\r\n"s, "#\r\n"s, "#x\r\n"s, "#2a7\r\n"s, "#3 12\r\n"s}) {
    EXPECT_EQ(Read(answer), Result::kNoBlock) << answer;
    EXPECT_EQ(device_state.put_back + device.incoming, answer);
    device_state.put_back.clear();
  }
}

TEST_F(BlockReaderTest, WhatWasPutBackIsReadFirst) {
  device_state.put_back = "#1";
  EXPECT_EQ(Read("3abc\r\n"), Result::kBlock);
  EXPECT_EQ(block_, "#13abc");
}

TEST_F(BlockReaderTest, ABlockThatBreaksOffFails) {
  EXPECT_EQ(Read(""), Result::kNothing);
  for (const char* incomplete : {"#", "#3", "#312", "#14abc"})
    EXPECT_EQ(Read(incomplete), Result::kFailed) << incomplete;
  EXPECT_EQ(Read("#0abc"), Result::kFailed);
}

TEST_F(BlockReaderTest, ATooLargeLengthIsRefused) {
  EXPECT_EQ(Read("#8671088651"), Result::kTooLong);
  EXPECT_EQ(Read("#9999999999"), Result::kTooLong);
  device_state.put_back = "#0" + std::string(base::kBlockLimit - 1, 'x');
  EXPECT_EQ(Read("yz"), Result::kTooLong) << "a block without a length is too long, too";
}

TEST_F(BlockReaderTest, TheLimitOfABlockWithoutALengthIsThatOfAnyOther) {
  device.waiting = [this] { return static_cast<std::int32_t>(device.incoming.size()); };
  const std::string rest = "#0" + std::string(base::kBlockLimit - 1, 'x');
  device_state.put_back = rest;
  EXPECT_EQ(Read("y\r\n"), Result::kBlock);
  EXPECT_EQ(block_.size(), 2 + base::kBlockLimit);
  device_state.put_back = rest;
  EXPECT_EQ(Read("yz\r\n"), Result::kTooLong);
  device_state.put_back = rest;
  EXPECT_EQ(Read("y", ""), Result::kBlock);
  device_state.put_back = rest;
  EXPECT_EQ(Read("yz", ""), Result::kTooLong);
}

class SessionBlocksTest : public testing::Test, protected SessionBench {
 protected:
  SessionBlocksTest() { state.extras.blocks = true; }
};

TEST_F(SessionBlocksTest, ABlockIsShownAsReceived) {
  device.incoming = "#15a\r\nbc\r\n";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "#15a\r\nbc");
  EXPECT_EQ(pane.lines, Lines{"#15a\r\nbc"});
}

struct RecordedBlocks final : StateView {
  void ShowState(StateKind kind, std::string_view text) override {
    if (kind == StateKind::kBlock) texts.emplace_back(text);
  }
  Lines texts;
};

TEST_F(SessionBlocksTest, TheProgressOfALongBlockIsReported) {
  RecordedBlocks blocks;
  output.SetStateView(&blocks);
  device.incoming = "#520480" + std::string(20480, 'x');
  device.waiting = [] { return 5120; };
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(blocks.texts, (Lines{"Block: 25 % von 20 KB", "Block: 50 % von 20 KB", "Block: 75 % von 20 KB",
                                 "Block: 100 % von 20 KB", ""}));
  blocks.texts.clear();
  device.incoming = "#13abc";
  session.GetAnswer();
  EXPECT_EQ(blocks.texts, Lines{""});
  output.SetStateView(nullptr);
}

TEST_F(SessionBlocksTest, BytesPutBackCountForAnAnswerOfACount) {
  state.receive = {.mode = receive_mode::kCount, .receive_terminator = ""};
  state.shown.count = "4";
  device_state.put_back = "ab";
  device.incoming = "cdef";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "abcd");
  EXPECT_EQ(device_state.put_back, "");
  device_state.put_back = "123456";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "1234");
  EXPECT_EQ(device_state.put_back, "56");
}

TEST_F(SessionBlocksTest, AnAnswerThatIsNotABlockIsComplete) {
  device.incoming = "1";
  device.text_answers = {"2.5\r\n"};
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "12.5");
  EXPECT_EQ(device_state.put_back, "");
  EXPECT_EQ(device.CountCalls("ReadText \\r\\n 15999"), 1u);
}

TEST_F(SessionBlocksTest, AUtf8CharacterThatWasPutBackInPartIsDecodedAsOne) {
  device_state.utf8 = true;
  device.incoming = "\xCE\xA9";
  device.text_answers = {"m\r\n", "V\r\n", "F\r\n"};
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "Ωm");
  device_state.put_back = "\xC2";
  device.incoming = "\xB5";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "µV");
  state.extras.blocks = false;
  device_state.put_back = "1\xE2\x82";
  device.incoming = "\xAC";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "1€F");
}

TEST_F(SessionBlocksTest, AnAnswerMayEndBeforeAUtf8CharacterIsComplete) {
  device_state.utf8 = true;
  state.receive.receive_terminator = "\n";
  device.incoming = "\xF0\n5\n";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "ð");
  EXPECT_EQ(device.incoming, "5\n");
}

TEST_F(SessionBlocksTest, WhatAReadPutsBackIsKeptForTheNextOne) {
  state.extras.blocks = false;
  device_state.put_back = "1";
  device.text_answers = {"2.5\r\n"};
  device.on_text = [this] { device_state.put_back = "3"; };
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "12.5");
  EXPECT_EQ(device_state.put_back, "3");
}

TEST_F(SessionBlocksTest, AnEmptyLineIsAnEmptyAnswer) {
  state.receive.receive_terminator = "\n";
  for (const char* line : {"\n", "\r\n"}) {
    device.incoming = line;
    EXPECT_TRUE(session.GetAnswer());
    EXPECT_EQ(state.last_answer.text, "");
  }
  EXPECT_EQ(device.CountCalls("ReadText"), 0u);
}

TEST_F(SessionBlocksTest, AnIncompleteAnswerIsKeptForTheNextRead) {
  device.incoming = "1";
  EXPECT_FALSE(session.GetAnswer());
  device.text_answers = {"2\r\n"};
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "12");
}

TEST_F(SessionBlocksTest, InModeAutoTheFormatDecides) {
  state.receive.mode = receive_mode::kAuto;
  state.receive.receive_terminator = "";
  state.receive.binary_display = 1;
  device.incoming = "#12\r\n";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "<23><31><32><0D><0A>");
  device.incoming = "ab";
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "<61><62>");
}

TEST_F(SessionBlocksTest, ABlockThatIsTooLongHasItsOwnStatus) {
  device.incoming = "#8671088651";
  EXPECT_FALSE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "-61");
  EXPECT_EQ(device_state.last_result, -61);
}

TEST_F(SessionBlocksTest, WhenSwitchedOffABlockIsReadAsBefore) {
  state.extras.blocks = false;
  device.text_answers = {"#15a\r\n"};
  EXPECT_TRUE(session.GetAnswer());
  EXPECT_EQ(state.last_answer.text, "#15a");
  EXPECT_EQ(device.CountCalls("ReadBinary"), 0u);
}

}  // namespace
}  // namespace kolvane::terminal
