#include "headless/records.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "base/captured_output.h"
#include "base/pattern.h"

namespace kolvane::headless {
namespace {

class StoppedClock final : public base::Clock {
 public:
  double Seconds() const override { return 1; }
};

class RecordsTest : public testing::Test {
 protected:
  struct Exchange {
    std::string command;
    std::string answer;
    std::int32_t status = 0;
    std::string bytes = {};
  };

  /// The records of these exchanges; a "T" replaces each time of the right form.
  std::string Records(AnswerFormat format, std::optional<std::int32_t> fields,
                      const std::vector<Exchange>& exchanges) {
    options.Format = format;
    options.Fields = fields;
    RecordWriter writer(options, device, answer, clock, pane);
    writer.Start();
    for (const Exchange& each : exchanges) {
      answer.text = each.answer;
      answer.bytes = each.bytes;
      device.last_result = each.status;
      writer.ExchangeEnded(each.command, {.answered = each.status == 0});
    }
    const base::Pattern local("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}");
    const base::Pattern utc("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z");
    return (format == AnswerFormat::kJson ? utc : local).Replaced(out.text(), "T");
  }

  base::CapturedOutput out;
  base::CapturedOutput err;
  Messages messages{err.fd(), false};
  LinePane pane{out.fd(), messages, {.shown = false}};
  CommandRunOptions options;
  device::DeviceState device;
  terminal::LastAnswer answer;
  StoppedClock clock;
};

TEST_F(RecordsTest, CsvHasALineForEachExchange) {
  EXPECT_EQ(Records(AnswerFormat::kCsv, {},
                    {{"*IDN?", "A,\"B\",1"}, {"MSV?", "-30", -30}, {"MSV?", "12.5"}, {" X", "zwei\nZeilen"}}),
            "time,command,status,answer\n"
            "T,*IDN?,0,\"A,\"\"B\"\",1\"\n"
            "T,MSV?,-30,-30\n"
            "T,MSV?,0,12.5\n"
            "T,\" X\",0,\"zwei\nZeilen\"\n");
}

TEST_F(RecordsTest, FailedExchangesCanBeLeftOut) {
  options.ErrorLines = false;
  EXPECT_EQ(Records(AnswerFormat::kCsv, {}, {{"MSV?", "-30", -30}, {"MSV?", "12.5"}}),
            "time,command,status,answer\n"
            "T,MSV?,0,12.5\n");
}

TEST_F(RecordsTest, WithFieldsCsvHasOnlyNumericAnswers) {
  EXPECT_EQ(Records(AnswerFormat::kCsv, 2,
                    {{"A?", "1"}, {"*IDN?", "A,B"}, {"A?", "-30", -30}, {"B? 1,2", "1.50, -2e3,7"}}),
            "time,command,field1,field2\n"
            "T,A?,1,\n"
            "T,\"B? 1,2\",1.5,-2000\n");
}

TEST_F(RecordsTest, JsonHasAnObjectForEachExchange) {
  EXPECT_EQ(Records(AnswerFormat::kJson, {},
                    {{"MSV? 1,2", "0.125,-2.5"}, {"*IDN?", "A,\"B\",1"}, {"MSV?", "-30", -30}, {"CLR", ""}}),
            R"({"time":"T","command":"MSV? 1,2","status":0,"answer":"0.125,-2.5","fields":[0.125,-2.5]})"
            "\n"
            R"({"time":"T","command":"*IDN?","status":0,"answer":"A,\"B\",1","fields":["A","\"B\"","1"]})"
            "\n"
            R"({"time":"T","command":"MSV?","status":-30,"answer":"-30","fields":[]})"
            "\n"
            R"({"time":"T","command":"CLR","status":0,"answer":"","fields":[]})"
            "\n");
}

TEST_F(RecordsTest, JsonHasTheBytesOfABinaryAnswer) {
  EXPECT_EQ(Records(AnswerFormat::kJson, {}, {{"B?", "<00><FF><2C>", 0, std::string("\0\xFF,", 3)}}),
            R"({"time":"T","command":"B?","status":0,"answer":"<00><FF><2C>","fields":[],"bytes":"AP8s"})"
            "\n");
}

TEST_F(RecordsTest, JsonStaysWellFormedForAnyCommand) {
  const std::string record = Records(AnswerFormat::kJson, {}, {{"\xFF\n\"", "1"}});
  const auto read = nlohmann::json::parse(record);
  EXPECT_EQ(read["command"], "\xEF\xBF\xBD\n\"");
}

TEST_F(RecordsTest, AFailureWithoutAStatusIsMinusOne) {
  options.Format = AnswerFormat::kCsv;
  RecordWriter(options, device, answer, clock, pane).ExchangeEnded("A?", {.answered = false});
  EXPECT_NE(out.text().find(",A?,-1,"), std::string::npos);
}

TEST_F(RecordsTest, AFailedWriteKeepsItsStatusWhenTheWordDisconnects) {
  options.Format = AnswerFormat::kCsv;
  RecordWriter(options, device, answer, clock, pane)
      .ExchangeEnded("DCL", {.sent = terminal::Sent::kWriteFailed,
                             .write_status = -40,
                             .ended_by_word = true,
                             .answer_due = false});
  EXPECT_NE(out.text().find(",DCL,-40,"), std::string::npos) << out.text();
}

TEST_F(RecordsTest, AnExchangeEndedByAWordHasNoAnswer) {
  options.Format = AnswerFormat::kJson;
  answer.text = "of the command before";
  RecordWriter(options, device, answer, clock, pane)
      .ExchangeEnded("STP", {.ended_by_word = true, .answer_due = false});
  const auto read = nlohmann::json::parse(out.text());
  EXPECT_EQ(read["status"], 0);
  EXPECT_EQ(read["answer"], "");
}

TEST_F(RecordsTest, LinesOfThePaneDoNotComeBetween) {
  pane.AppendLine(LineKind::kCommand, "A?");
  pane.AppendLine(LineKind::kAnswer, "1");
  pane.EndLine();
  EXPECT_EQ(out.text(), "");
  pane.AppendText(LineKind::kError, "Schreibfehler", 0);
  EXPECT_EQ(err.text(), "kolvane: Schreibfehler\n");
}

}  // namespace
}  // namespace kolvane::headless
