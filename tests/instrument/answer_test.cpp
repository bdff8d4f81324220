#include <gtest/gtest.h>

#include <thread>

#include "instrument/partner.h"

namespace kolvane::instrument {
namespace {

InstrumentOptions WithTermination(const std::string& termination) {
  InstrumentOptions options;
  options.ReadTermination = termination;
  return options;
}

struct Answer : testing::Test {
  Partner partner;
};

TEST_F(Answer, EndsWithCrLfOrALoneLf) {
  Instrument instrument = partner.Connect();
  partner.Send("1.5\r\n2\n\r\n\n3\rx\r\n");
  EXPECT_EQ(instrument.Read(), "1.5");
  EXPECT_EQ(instrument.Read(), "2");
  EXPECT_EQ(instrument.Read(), "");
  EXPECT_EQ(instrument.Read(), "");
  EXPECT_EQ(instrument.Read(), "3\rx");
}

TEST_F(Answer, EndsWithAnyTermination) {
  Instrument instrument = partner.Connect(WithTermination("\r"));
  partner.Send("a\nb\rOK;K>OK> rest>\nO>");
  EXPECT_EQ(instrument.Read(), "a\nb");
  instrument.SetReadTermination("OK>");
  EXPECT_EQ(instrument.Read(), "OK;K>");
  instrument.SetReadTermination(std::string("\0", 1));
  partner.Send(std::string_view("\0", 1));
  EXPECT_EQ(instrument.Read(), " rest>\nO>");
}

TEST_F(Answer, WithoutTerminationEndsAtTheFirstGap) {
  Instrument instrument = partner.Connect(WithTermination(""));
  partner.Send("a\r\nb");
  EXPECT_EQ(instrument.Read(), "a\r\nb");
}

TEST_F(Answer, WithoutTerminationAlsoEndsAtALoss) {
  Instrument instrument = partner.Connect(WithTermination(""));
  partner.Send("last");
  partner.HangUp();
  EXPECT_EQ(instrument.Read(), "last");
  EXPECT_EQ(StatusOf([&] { instrument.Read(); }), -40);
}

TEST_F(Answer, StaysQueuedUntilItIsComplete) {
  Instrument instrument = partner.Connect();
  instrument.SetTimeoutMs(60);
  partner.Send("12");
  EXPECT_EQ(StatusOf([&] { instrument.Read(); }), InstrumentError::kReadTimeout);
  partner.Send("34\r\n");
  EXPECT_EQ(instrument.Read(), "1234");
}

TEST_F(Answer, MayBeLongerThanTheQueue) {
  Instrument instrument = partner.Connect();
  const std::string text(std::size_t{17} << 20, 'x');
  std::thread sender([&] { partner.SendAll(text + "\r\n"); });
  EXPECT_EQ(instrument.Read(), text);
  sender.join();
}

TEST_F(Answer, WithAByteCountKeepsEveryByte) {
  Instrument instrument = partner.Connect();
  partner.Send(std::string("a\r\n\0b", 5) + "tail\n");
  EXPECT_EQ(instrument.ReadBytes(0), "");
  EXPECT_EQ(instrument.ReadBytes(5), std::string("a\r\n\0b", 5));
  EXPECT_EQ(instrument.Read(), "tail");
}

TEST_F(Answer, CanBeABlock) {
  Instrument instrument = partner.Connect();
  partner.Send("#15a\nb\nc\r\n#213hello, \r\nyou\n#10\r\nafter\r\n");
  EXPECT_EQ(instrument.QueryBlock("A"), "a\nb\nc");
  EXPECT_EQ(instrument.QueryBlock("B"), "hello, \r\nyou\n");
  // The bytes after the block are not its termination.
  EXPECT_EQ(instrument.Flush(), 12u);
  EXPECT_EQ(partner.Receive(4), "A\nB\n");
}

TEST_F(Answer, CanBeABlockWithoutTermination) {
  Instrument instrument = partner.Connect();
  partner.Send("#13abc");
  EXPECT_EQ(instrument.QueryBlock("A"), "abc");
  partner.Send("#13def\n#0to the end\r\nx\n");
  EXPECT_EQ(instrument.QueryBlock("A"), "def");
  EXPECT_EQ(instrument.QueryBlock("A"), "to the end");
  EXPECT_EQ(instrument.Read(), "x");
}

TEST_F(Answer, ThatIsNotABlockCanStillBeRead) {
  Instrument instrument = partner.Connect();
  partner.Send("ERROR 5\r\n#xy\r\n#2a1\r\n");
  for (const char* answer : {"ERROR 5", "#xy", "#2a1"}) {
    EXPECT_EQ(StatusOf([&] { instrument.QueryBlock("A"); }), InstrumentError::kNoBlock);
    EXPECT_EQ(instrument.Read(), answer);
  }
}

TEST_F(Answer, WithABlockAbove64MiBIsRefused) {
  Instrument instrument = partner.Connect();
  partner.Send("#867108865");
  EXPECT_EQ(StatusOf([&] { instrument.QueryBlock("A"); }), InstrumentError::kBlockTooLong);
}

TEST_F(Answer, IsConvertedToValues) {
  Instrument instrument = partner.Connect();
  partner.Send("1.5, -2e3;+3\t 4\r\n\r\n1,two\r\n");
  EXPECT_EQ(instrument.QueryValues("MSV?"), (std::vector<double>{1.5, -2000, 3, 4}));
  EXPECT_EQ(instrument.QueryValues("MSV?"), std::vector<double>{});
  EXPECT_THROW(instrument.QueryValues("MSV?"), std::invalid_argument);
}

TEST_F(Answer, AsAMessageEndsAtTheFirstLimit) {
  Instrument instrument = partner.Connect();
  partner.Send("abc;def");
  const auto text = [](const InstrumentMessage& message) {
    return message.Bytes + " " + std::to_string(static_cast<int>(message.End));
  };
  EXPECT_EQ(text(instrument.ReadMessage({2, ";"})), "ab 0");
  EXPECT_EQ(text(instrument.ReadMessage({20, ";"})), "c; 1");
  EXPECT_EQ(text(instrument.ReadMessage({20, ";", true, 50})), "def 3");
  EXPECT_THROW(instrument.ReadMessage({0}), std::invalid_argument);
}

}  // namespace
}  // namespace kolvane::instrument
