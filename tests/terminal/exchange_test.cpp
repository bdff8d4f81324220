#include "terminal/exchange.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "terminal/session_bench.h"

namespace kolvane::terminal {
namespace {

class ExchangeTest : public testing::Test, protected SessionBench {
 protected:
  /// The time shown after an answer that takes the clock from `start` to `end`, seconds.
  std::string ShownTime(Sender sender, double start, double end) {
    state.options.show_response_times = true;
    clock.seconds = {start, end};
    clock.asked = 0;
    device.text_answers = {"1\r\n"};
    pane.text.clear();
    exchange.Run("A?", sender);
    return pane.text.substr(pane.text.find('('));
  }

  FakeClock clock;
  Exchange exchange{session, waits, state.options, output, clock, ","};
};

TEST_F(ExchangeTest, ShowsEachLineWithItsKind) {
  state.options.show_response_times = true;
  device.text_answers = {"1\r\n"};
  const ExchangeResult result = exchange.Run("A?", Sender::kList);
  EXPECT_FALSE(result.Failed());
  EXPECT_EQ(pane.kinds, (std::vector{LineKind::kCommand, LineKind::kAnswer}));
  EXPECT_EQ(pane.text_kinds, std::vector{LineKind::kTime});
}

TEST_F(ExchangeTest, AnAnswerThatDoesNotComeIsAnError) {
  const ExchangeResult result = exchange.Run("A?", Sender::kList);
  EXPECT_TRUE(result.Failed());
  EXPECT_EQ(result.sent, Sent::kWritten);
  EXPECT_EQ(pane.kinds, (std::vector{LineKind::kCommand, LineKind::kError}));
}

TEST_F(ExchangeTest, AWriteErrorIsShownAsText) {
  device.write_result = {-7, "Leitung tot"};
  device.text_answers = {"late\r\n"};
  const ExchangeResult result = exchange.Run("A?", Sender::kList);
  EXPECT_EQ(result.sent, Sent::kWriteFailed);
  EXPECT_TRUE(result.Failed());
  EXPECT_EQ(pane.text_kinds, std::vector{LineKind::kError});
}

TEST_F(ExchangeTest, WithoutAConnectionTheCommandIsDropped) {
  device_state.connected = false;
  device.open_result = {-22, "abgelehnt"};
  EXPECT_EQ(exchange.Run("A?", Sender::kList).sent, Sent::kNotConnected);
}

TEST_F(ExchangeTest, AWordThatEndsItIsANoticeAndNotAFailure) {
  const ExchangeResult result = exchange.Run("STP", Sender::kList);
  EXPECT_TRUE(result.ended_by_word);
  EXPECT_FALSE(result.Failed());
  EXPECT_EQ(pane.kinds, (std::vector{LineKind::kCommand, LineKind::kNotice}));
}

TEST_F(ExchangeTest, WithDeviceWordsOffNoWordEndsAnExchange) {
  state.extras.device_words = false;
  device.text_answers = {"1\r\n"};
  const ExchangeResult result = exchange.Run("PRES?", Sender::kList);
  EXPECT_TRUE(result.answered);
  EXPECT_FALSE(result.ended_by_word);
  EXPECT_TRUE(device_state.connected);
}

TEST_F(ExchangeTest, ReadsOnlyAfterQueriesIfOnlyQueriesAreAnswered) {
  state.extras.queries_only = true;
  state.last_answer.text = "earlier";
  const ExchangeResult result = exchange.Run("VOLT 5", Sender::kList);
  EXPECT_FALSE(result.Failed());
  EXPECT_EQ(std::ranges::count(device.calls, "ClearLastError"), 1) << "after the write";
  EXPECT_EQ(state.last_answer.text, "earlier");
  EXPECT_EQ(pane.lines, Lines{"VOLT 5"});
}

TEST_F(ExchangeTest, AFailedWriteIsExplainedWhereNoReadFollows) {
  device.write_result = {-41, "-41", "Verbindung unterbrochen"};
  exchange.Run("VOLT?", Sender::kList);
  EXPECT_EQ(pane.remarks.size(), 1u) << "of the read, which fails, too";
  pane.remarks.clear();
  state.extras.queries_only = true;
  exchange.Run("VOLT 5", Sender::kList);
  EXPECT_EQ(pane.remarks, Lines{"-41: Verbindung unterbrochen"});
  device.write_result = {};
  exchange.Run("VOLT 5", Sender::kList);
  EXPECT_EQ(pane.remarks.size(), 1u);
}

TEST_F(ExchangeTest, ReportsTheStatusOfAFailedWrite) {
  device.write_result = {-41, "-41", {}};
  EXPECT_EQ(exchange.Run("DCL", Sender::kList).write_status, -41);
  device.write_result = {};
  EXPECT_EQ(exchange.Run("VOLT?", Sender::kList).write_status, 0);
}

TEST_F(ExchangeTest, ADeviceWordStillEndsAnExchangeWithoutAQuery) {
  state.extras.queries_only = true;
  EXPECT_TRUE(exchange.Run("STP", Sender::kList).ended_by_word);
}

TEST_F(ExchangeTest, AQueryHasItsQuestionMarkOutsideQuotes) {
  for (const char* query : {"?", "*IDN?", "A 'b?' ?", R"(A "it's"; B?)", "A? 'x"})
    EXPECT_TRUE(base::IsQuery(query)) << query;
  for (const char* other : {"", "A", "DISP 'ready?'", R"(DISP "what?")", "A 'open?"})
    EXPECT_FALSE(base::IsQuery(other)) << other;
}

class Listener final : public ExchangeListener {
 public:
  explicit Listener(const TerminalState& state) : state_(state) {}
  void ExchangeEnded(std::string_view command, const ExchangeResult& result) override {
    reports.push_back(std::string(command) + (result.Failed() ? " failed " : " ") + state_.last_answer.text);
  }
  std::vector<std::string> reports;

 private:
  const TerminalState& state_;
};

TEST_F(ExchangeTest, ReportsEachEndWhateverIsShown) {
  Listener listener(state);
  exchange.Listen(&listener);
  state.output.SilentMode = true;
  device.text_answers = {"1,2\r\n"};
  exchange.Run("A?", Sender::kList);
  exchange.Run("B?", Sender::kUser);
  exchange.Listen(nullptr);
  exchange.Run("C?", Sender::kList);
  EXPECT_EQ(listener.reports, (std::vector<std::string>{"A? 1,2", "B? failed " + state.last_answer.text}));
}

TEST_F(ExchangeTest, ReportsAnAnswerThatIsReadWithoutACommand) {
  Listener listener(state);
  exchange.Listen(&listener);
  device.text_answers = {"1,2\r\n"};
  EXPECT_FALSE(exchange.Read(Sender::kList).Failed());
  device_state.connected = false;
  device.open_result = {-22, "abgelehnt"};
  const ExchangeResult dropped = exchange.Read(Sender::kList);
  EXPECT_EQ(dropped.sent, Sent::kNotConnected);
  EXPECT_FALSE(dropped.answer_due) << "the last answer is an earlier one";
  EXPECT_EQ(listener.reports, (std::vector<std::string>{" 1,2", " failed 1,2"}));
}

TEST_F(ExchangeTest, OnlyTheUserIsShownTheTimeOfAnAnswerThatIsReadWithoutACommand) {
  state.options.show_response_times = true;
  device.text_answers = {"1\r\n", "2\r\n"};
  exchange.Read(Sender::kList);
  EXPECT_EQ(pane.text_kinds.size(), 0u);
  exchange.Read(Sender::kUser);
  EXPECT_EQ(pane.text_kinds, std::vector{LineKind::kTime});
}

TEST_F(ExchangeTest, AnAnswerThatIsReadWithoutACommandIsOneOperation) {
  device_state.connected = false;
  bool is_under_way = false;
  device.on_open = [&] { is_under_way = waits.IsUnderWay(); };
  exchange.Read(Sender::kUser);
  EXPECT_TRUE(is_under_way);
}

TEST_F(ExchangeTest, TheUsersTimesAreOfSinglePrecision) {
  EXPECT_EQ(ShownTime(Sender::kUser, 0, 0.0035), "(dt = 3,5 ms)\r\n");
  EXPECT_EQ(ShownTime(Sender::kUser, 100000, 100000.001), "(dt = 0 ms)\r\n");
  EXPECT_EQ(ShownTime(Sender::kUser, 100000, 100000.005), "(dt = 8 ms)\r\n");
  EXPECT_EQ(pane.caret_back, 1);
}

TEST_F(ExchangeTest, TheListsTimesAreOfDoublePrecision) {
  EXPECT_EQ(ShownTime(Sender::kList, 100000, 100000.5), "(dt = 500 ms)\r\n");
  EXPECT_EQ(pane.caret_back, 0);
}

TEST_F(ExchangeTest, TheListNeedsOnlyTheOptionOfTheTimes) {
  state.options.show_commands = false;
  EXPECT_EQ(ShownTime(Sender::kList, 2, 2.25), "(dt = 250 ms)\r\n");
}

TEST_F(ExchangeTest, WithoutCommandsTheUserIsShownTheEndTime) {
  state.options.show_commands = false;
  EXPECT_EQ(ShownTime(Sender::kUser, 2, 2), "(dt = 2000 ms)\r\n");
}

}  // namespace
}  // namespace kolvane::terminal
