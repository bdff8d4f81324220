#include "instrument_fixture.h"

namespace kolvane::amplifier {
namespace {

class SystemCommandsTest : public InstrumentTest {};

TEST_F(SystemCommandsTest, IdentifiesItself) {
  EXPECT_EQ(Ask("*IDN?"), "KOLVANE,KVA-8 SIMULATED AMPLIFIER,00104711,1.0");
  EXPECT_TRUE(WrongCount("*IDN? 1"));
}

TEST_F(SystemCommandsTest, MostTakeNoParameter) {
  for (const std::string command :
       {"*IDN?", "*RST", "RES", "DCL", "CMD?", "ERR?", "STAT?", "TIME?", "OPMODE?", "PRES?"}) {
    EXPECT_TRUE(WrongCount(command + " 1")) << command;
    EXPECT_FALSE(WrongCount(command)) << command;
  }
}

struct ParameterCount {
  const char* word;
  int least;
  int most;
};

constexpr ParameterCount kParameterCounts[] = {
    {"OPMODE", 1, 1}, {"SAVE", 1, 1},   {"LOAD", 1, 1},   {"CHS?", 0, 0},  {"NAME", 2, 2},
    {"NAME?", 0, 1},  {"UNIT", 2, 2},   {"UNIT?", 0, 1},  {"SENS", 2, 2},  {"SENS?", 0, 1},
    {"RANGE", 2, 2},  {"RANGE?", 0, 1}, {"FILT", 2, 2},   {"FILT?", 0, 1}, {"ZERO", 1, 2},
    {"ZERO?", 0, 1},  {"TARE", 1, 2},   {"TARE?", 0, 1},  {"LIM", 3, 3},   {"LIM?", 0, 1},
    {"LIMS?", 0, 1},  {"MSV?", 0, 1},   {"GRO?", 0, 1},   {"LONG?", 1, 1}, {"RAMP?", 1, 1},
    {"HEX?", 1, 1},   {"WAIT?", 1, 1},  {"FILES?", 0, 0}, {"FILE?", 1, 1}, {"FILESIZE?", 1, 1},
    {"DELAY", 1, 1},  {"DELAY?", 0, 0}, {"DRIP", 1, 1},   {"DRIP?", 0, 0}, {"TERM", 1, 1},
    {"TERM?", 0, 0},  {"MUTE", 1, 1},   {"RATE", 1, 1},   {"RATE?", 0, 0}, {"STA", 1, 2},
    {"STP", 0, 0},    {"BUF?", 0, 0},   {"BUFV?", 2, 3},  {"BUFB?", 2, 4}, {"BIN?", 1, 4},
};

TEST_F(SystemCommandsTest, EachHasItsNumbersOfParameters) {
  for (const auto& [word, least, most] : kParameterCounts) {
    std::string line(word);
    for (int count = 0; count <= most + 1; ++count) {
      const bool takes = count >= least && count <= most;
      EXPECT_EQ(bool{WrongCount(line)}, !takes) << line;
      line += count == 0 ? " x" : ",x";
    }
  }
}

TEST_F(SystemCommandsTest, WordsAreFoundInAnyCaseAndAfterSpaces) {
  EXPECT_EQ(Ask("chs?"), "1,2,3,4,5,6,7,8");
  EXPECT_EQ(Ask("  Chs?  "), "1,2,3,4,5,6,7,8");
}

TEST_F(SystemCommandsTest, UnknownWordsAreRefused) {
  for (const char* line : {"X", "MSV", "MSV?1", "*IDN", "?", "DCLX", "xSTPy", ",", "\t", "\xFF\xFE"})
    EXPECT_TRUE(Refuses(line, Refusal::kUnknownCommand)) << line;
  EXPECT_TRUE(Refuses(std::string_view("MSV?\0", 5), Refusal::kUnknownCommand));
}

TEST_F(SystemCommandsTest, EveryByteIsSurvived) {
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (c != ' ') {
      EXPECT_EQ(Ask(std::string_view(&c, 1)), "?") << byte;
    }
    EXPECT_EQ(Ask(std::string("ECHO ") + c), std::string(1, c)) << byte;
    EXPECT_NE(Ask(std::string("MSV? ") + c), "(none)") << byte;
  }
}

TEST_F(SystemCommandsTest, EmptyLinesAreIgnored) {
  EXPECT_EQ(Ask(""), "(none)");
  EXPECT_EQ(Ask("   "), "(none)");
  EXPECT_EQ(Ask("ERR?"), "0,no error");
}

TEST_F(SystemCommandsTest, AnOverlongLineIsRefused) {
  instrument_.Handle(Line{{}, true}, reply_);
  EXPECT_EQ(reply_.kind, Reply::Kind::kLine);
  EXPECT_EQ(reply_.bytes, "?");
  EXPECT_EQ(Ask("ERR?"), "4,line too long");
}

TEST_F(SystemCommandsTest, ErrorIsReportedOnceWithItsText) {
  EXPECT_EQ(Ask("ERR?"), "0,no error");
  Ask("nonsense");
  EXPECT_EQ(Ask("CHS?"), "1,2,3,4,5,6,7,8");
  EXPECT_EQ(Ask("ERR?"), "1,unknown command");
  EXPECT_EQ(Ask("ERR?"), "0,no error");
  Ask("LOAD");
  EXPECT_EQ(Ask("ERR?"), "2,wrong number of parameters");
  Ask("LOAD 5");
  EXPECT_EQ(Ask("ERR?"), "3,parameter not allowed");
  Ask("LOAD 1");
  EXPECT_EQ(Ask("ERR?"), "5,not possible now");
}

TEST_F(SystemCommandsTest, ListsEveryCommandOnce) {
  const std::string all = Ask("CMD?");
  EXPECT_EQ(all,
            "*IDN?,*RST,RES,DCL,CMD?,ERR?,STAT?,TIME?,OPMODE,OPMODE?,SAVE,LOAD,PRES?,"
            "CHS?,NAME,NAME?,UNIT,UNIT?,SENS,SENS?,RANGE,RANGE?,FILT,FILT?,ZERO,ZERO?,TARE,TARE?,LIM,LIM?,"
            "LIMS?,MSV?,GRO?,"
            "RATE,RATE?,STA,STP,BUF?,BUFV?,BUFB?,BIN?,"
            "ECHO,LONG?,RAMP?,HEX?,WAIT?,FILES?,FILE?,FILESIZE?,DELAY,DELAY?,DRIP,DRIP?,TERM,TERM?,MUTE");
}

// A terminal searches its commands for these letters, so no other command may contain them.
TEST_F(SystemCommandsTest, OnlyFourWordsContainTheLettersThatEndAnExchange) {
  std::string found;
  for (const auto rows : {SystemCommands(), ChannelCommands(), MeasuringCommands(), LineCommands()}) {
    for (const Command& row : rows) {
      for (const std::string_view letters : {"DCL", "RES", "STP"}) {
        if (row.word.find(letters) != std::string_view::npos) found += std::string(row.word) + ' ';
      }
    }
  }
  EXPECT_EQ(found, "RES DCL PRES? STP ");
}

TEST_F(SystemCommandsTest, CommandsThatEndTheDialogueSendNoAnswer) {
  for (const char* command : {"DCL", "RES", "STP", "*RST", "dcl", "res", "stp", "*rst"})
    EXPECT_EQ(Ask(command), "(none)") << command;
  EXPECT_TRUE(WrongCount("RES 1"));
}

TEST_F(SystemCommandsTest, StatusReportsLocalOnce) {
  EXPECT_EQ(Ask("STAT?"), "1,0,0,0,0");
  Ask("DCL");
  EXPECT_EQ(Ask("STAT?"), "0,0,0,0,0");
  EXPECT_EQ(Ask("STAT?"), "1,0,0,0,0");
}

TEST_F(SystemCommandsTest, StatusShowsOverrangeLimitsAndRecording) {
  Ask("OPMODE 1");
  Ask("LIM 8,-1,1");
  Ask("LIM 1,11,12");
  Ask("STA 5");
  clock_.now += 0.035;
  EXPECT_EQ(Ask("STAT?"), "1,1,0,129,3");
  Ask("OPMODE 0");
  Ask("RANGE 2,1");
  EXPECT_EQ(Ask("STAT?").substr(0, 6), "1,1,2,");
}

TEST_F(SystemCommandsTest, TimeCountsFromTheStart) {
  EXPECT_EQ(Ask("TIME?"), "0.000");
  clock_.now += 12.5;
  EXPECT_EQ(Ask("TIME?"), "12.500");
  Ask("*RST");
  EXPECT_EQ(Ask("TIME?"), "12.500");
  Ask("RES");
  EXPECT_EQ(Ask("TIME?"), "0.000");
}

TEST_F(SystemCommandsTest, OperatingModeIsKept) {
  EXPECT_EQ(Ask("OPMODE?"), "0");
  EXPECT_EQ(Ask("OPMODE 2"), "0");
  EXPECT_EQ(Ask("OPMODE?"), "2");
  EXPECT_TRUE(BadParameter("OPMODE 3"));
  EXPECT_TRUE(BadParameter("OPMODE -1"));
  EXPECT_TRUE(WrongCount("OPMODE"));
  EXPECT_TRUE(WrongCount("OPMODE 1,2"));
  EXPECT_EQ(Ask("OPMODE?"), "2");
}

TEST_F(SystemCommandsTest, MemoriesKeepTheSettings) {
  EXPECT_EQ(Ask("PRES?"), "0");
  Ask("RATE 50");
  EXPECT_EQ(Ask("SAVE 1"), "0");
  Ask("RATE 60");
  EXPECT_EQ(Ask("SAVE 4"), "0");
  EXPECT_EQ(Ask("PRES?"), "4");
  EXPECT_EQ(Ask("LOAD 1"), "0");
  EXPECT_EQ(Ask("PRES?"), "1");
  EXPECT_EQ(Ask("RATE?"), "50");
  Ask("RES");
  EXPECT_EQ(Ask("PRES?"), "0");
  EXPECT_EQ(Ask("RATE?"), "100");
  EXPECT_EQ(Ask("LOAD 4"), "0");
  EXPECT_EQ(Ask("RATE?"), "60");
  EXPECT_TRUE(Refuses("LOAD 2", Refusal::kNotNow));
  for (const char* line : {"SAVE 0", "SAVE 5", "LOAD 0", "LOAD 5", "SAVE x"})
    EXPECT_TRUE(BadParameter(line)) << line;
}

TEST_F(SystemCommandsTest, ResetChangesOnlySettings) {
  Ask("NAME 1,Other");
  Ask("OPMODE 1");
  Ask("STA 5");
  Ask("DELAY 7");
  clock_.now += 1;
  Ask("*RST");
  EXPECT_EQ(Ask("NAME? 1"), "Force");
  EXPECT_EQ(Ask("OPMODE?"), "0");
  EXPECT_EQ(Ask("BUF?"), "5,5,0");
  EXPECT_EQ(Ask("DELAY?"), "7");
}

TEST_F(SystemCommandsTest, RestartForgetsAllButTheMemories) {
  Ask("NAME 1,Other");
  Ask("STA 5");
  Ask("DELAY 7");
  Ask("TERM LF");
  Ask("nonsense");
  Ask("DCL");
  Ask("RES");
  EXPECT_EQ(Ask("NAME? 1"), "Force");
  EXPECT_EQ(Ask("BUF?"), "0,0,0");
  EXPECT_EQ(Ask("DELAY?"), "0");
  EXPECT_EQ(Ask("TERM?"), "CRLF");
  EXPECT_EQ(Ask("ERR?"), "0,no error");
  EXPECT_EQ(Ask("STAT?"), "1,0,0,0,0");
}

}  // namespace
}  // namespace kolvane::amplifier
