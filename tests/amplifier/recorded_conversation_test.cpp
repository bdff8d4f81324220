#include "amplifier/replay.h"

#include <gtest/gtest.h>

namespace kolvane::amplifier {
namespace {

std::vector<Conversation> Read(std::string_view text) {
  auto read = ReadTranscript(text);
  if (const auto* problem = std::get_if<TranscriptProblem>(&read)) {
    ADD_FAILURE() << problem->line << ": " << problem->text;
    return {};
  }
  return std::move(std::get<std::vector<Conversation>>(read));
}

// "LINE: TEXT"
std::string Problem(std::string_view text) {
  const auto read = ReadTranscript(text);
  const auto* problem = std::get_if<TranscriptProblem>(&read);
  return problem == nullptr ? "" : std::to_string(problem->line) + ": " + problem->text;
}

TEST(ReadTranscript, AConversationBeginsWithItsConnection) {
  const auto read = Read(R"({"t":0.5,"time":"x","way":"open","bytes":""}
{"t":0.75,"time":"x","way":"out","bytes":"QQo="}
{"t":1,"time":"x","way":"in","bytes":"AP8="}
{"t":2,"time":"x","way":"close","bytes":""}

{"way":"open"}
{"way":"in","bytes":"QUI="})");
  ASSERT_EQ(read.size(), 2u);
  EXPECT_EQ(read[0].seconds, 0.5);
  EXPECT_EQ(read[0].messages,
            (std::vector<Message>{{true, "A\n", 0.75, 2}, {false, std::string("\0\xFF", 2), 1.0, 3}}));
  EXPECT_EQ(read[1].seconds, std::nullopt);
  EXPECT_EQ(read[1].messages, (std::vector<Message>{{false, "AB", std::nullopt, 7}}));
}

TEST(ReadTranscript, TheInstrumentMayEndAConnection) {
  const auto read = Read(R"({"way":"open"}
{"way":"in","bytes":"QUI="}
{"t":2.5,"way":"close","bytes":"","status":-40}
{"way":"open"}
{"way":"close","status":-41}
{"way":"open"}
{"way":"close","status":0})");
  ASSERT_EQ(read.size(), 2u);
  ASSERT_TRUE(read[0].hang_up && read[1].hang_up);
  EXPECT_EQ(read[0].hang_up->seconds, 2.5);
  EXPECT_EQ(read[1].hang_up->seconds, std::nullopt);
  EXPECT_TRUE(read[1].messages.empty());
}

TEST(ReadTranscript, ConnectionsWithoutTransfersAreLeftOut) {
  EXPECT_TRUE(Read("").empty());
  EXPECT_TRUE(Read("{\"way\":\"open\"}\n{\"way\":\"out\",\"bytes\":\"\"}\n{\"way\":\"close\"}\n").empty());
}

TEST(ReadTranscript, ALineThatIsInvalidIsNamed) {
  EXPECT_EQ(Problem("{\"way\":\"open\"}\nA\n"), "2: not JSON");
  EXPECT_EQ(Problem("[]"), "1: not a JSON object");
  EXPECT_EQ(Problem("{}"), "1: no \"way\"");
  EXPECT_EQ(Problem("{\"way\":7}"), "1: no \"way\"");
  EXPECT_EQ(Problem("{\"way\":\"up\"}"), "1: \"way\" is not open, out, in or close");
  EXPECT_EQ(Problem("{\"way\":\"in\"}"), "1: \"bytes\" is not Base64");
  EXPECT_EQ(Problem("{\"way\":\"in\",\"bytes\":\"Q\"}"), "1: \"bytes\" is not Base64");
  EXPECT_EQ(Problem("{\"way\":\"close\",\"status\":\"-40\"}"), "1: \"status\" is not a whole number");
  for (const char* seconds : {"\"1\"", "null", "[1]"})
    EXPECT_EQ(Problem(std::string("{\"t\":") + seconds + ",\"way\":\"open\"}"),
              "1: \"t\" is not a number of seconds")
        << seconds;
}

}  // namespace
}  // namespace kolvane::amplifier
