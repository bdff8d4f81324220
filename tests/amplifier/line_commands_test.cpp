#include "instrument_fixture.h"

namespace kolvane::amplifier {
namespace {

Instrument::Setup SetupWithFiles() {
  Instrument::Setup setup;
  setup.transmission.delay_ms = 3;
  setup.files = {std::string("\x00\xFF\r\n", 4), ""};
  return setup;
}

class LineCommandsTest : public InstrumentTest {
 protected:
  LineCommandsTest() : InstrumentTest(SetupWithFiles()) {}
};

TEST_F(LineCommandsTest, EchoSendsTheTextAsItIs) {
  EXPECT_EQ(Ask("ECHO hello, world"), "hello, world");
  EXPECT_EQ(Ask("echo  a,b,c,d,e,f,g,h,i,j,k "), " a,b,c,d,e,f,g,h,i,j,k ");
  EXPECT_EQ(Ask("ECHO"), "");
  EXPECT_EQ(reply_.kind, Reply::Kind::kLine);
}

TEST_F(LineCommandsTest, LongLinesCountTheirDigits) {
  EXPECT_EQ(Ask("LONG? 1"), "0");
  EXPECT_EQ(Ask("LONG? 12"), "012345678901");
  EXPECT_EQ(reply_.kind, Reply::Kind::kLine);
  EXPECT_EQ(Ask("LONG? 1000000").size(), 1'000'000u);
  EXPECT_TRUE(BadParameter("LONG? 1000001"));
  EXPECT_TRUE(BadParameter("LONG? 0"));
  EXPECT_TRUE(WrongCount("LONG?"));
}

TEST_F(LineCommandsTest, RampCountsThroughAllBytes) {
  const std::string ramp = Ask("RAMP? 258");
  EXPECT_EQ(reply_.kind, Reply::Kind::kBytes);
  ASSERT_EQ(ramp.size(), 258u);
  for (std::size_t i = 0; i < ramp.size(); ++i) EXPECT_EQ(static_cast<unsigned char>(ramp[i]), i % 256);
  EXPECT_EQ(Ask("RAMP? 1"), std::string(1, '\0'));
  EXPECT_EQ(Ask("RAMP? 1000000").size(), 1'000'000u);
  EXPECT_TRUE(BadParameter("RAMP? 1000001"));
  EXPECT_TRUE(BadParameter("RAMP? 0"));
}

TEST_F(LineCommandsTest, HexAnswersTheBytes) {
  EXPECT_EQ(Ask("HEX? 0d0A41fF00"), std::string("\r\nA\xFF\0", 5));
  EXPECT_EQ(reply_.kind, Reply::Kind::kBytes);
  EXPECT_EQ(Ask("HEX? " + std::string(2048, '4')), std::string(1024, 'D'));
  EXPECT_TRUE(BadParameter("HEX? " + std::string(2050, '4')));
  for (const char* line : {"HEX? 4", "HEX? 4G", "HEX? G4", "HEX? 4 1"})
    EXPECT_TRUE(BadParameter(line)) << line;
  EXPECT_TRUE(WrongCount("HEX?"));
  EXPECT_EQ(reply_.kind, Reply::Kind::kLine);
}

TEST_F(LineCommandsTest, WaitDelaysItsOwnAnswer) {
  EXPECT_EQ(Ask("WAIT? 600000"), "0");
  EXPECT_EQ(reply_.wait_ms, 600'000u);
  EXPECT_EQ(Ask("WAIT? 0"), "0");
  EXPECT_EQ(reply_.wait_ms, 0u);
  EXPECT_TRUE(BadParameter("WAIT? 600001"));
  EXPECT_TRUE(BadParameter("WAIT? -1"));
  EXPECT_TRUE(WrongCount("WAIT?"));
}

TEST_F(LineCommandsTest, FilesAreServedByNumber) {
  EXPECT_EQ(Ask("FILES?"), "2");
  EXPECT_EQ(Ask("FILESIZE? 1"), "4");
  EXPECT_EQ(Ask("FILESIZE? 2"), "0");
  EXPECT_EQ(Ask("FILE? 1"), std::string("\x00\xFF\r\n", 4));
  EXPECT_EQ(reply_.kind, Reply::Kind::kBytes);
  EXPECT_EQ(Ask("FILE? 2"), "");
  for (const char* line : {"FILE? 0", "FILE? 3", "FILE? x", "FILESIZE? 0", "FILESIZE? 3"})
    EXPECT_TRUE(BadParameter(line)) << line;
}

TEST_F(LineCommandsTest, PausesAreSetAndAsked) {
  EXPECT_EQ(Ask("DELAY?"), "3");
  EXPECT_EQ(Ask("DELAY 600000"), "0");
  EXPECT_EQ(instrument_.transmission().delay_ms, 600'000u);
  EXPECT_EQ(Ask("DRIP?"), "0");
  EXPECT_EQ(Ask("DRIP 600000"), "0");
  EXPECT_EQ(Ask("DRIP?"), "600000");
  EXPECT_EQ(instrument_.transmission().drip_ms, 600'000u);
  for (const char* line : {"DELAY 600001", "DRIP 600001", "DELAY -1", "DRIP x"})
    EXPECT_TRUE(BadParameter(line)) << line;
  Ask("RES");
  EXPECT_EQ(Ask("DELAY?"), "3");
  EXPECT_EQ(Ask("DRIP?"), "0");
}

TEST_F(LineCommandsTest, TerminatorIsOneOfFour) {
  EXPECT_EQ(Ask("TERM?"), "CRLF");
  EXPECT_EQ(Ask("TERM lf"), "0");
  EXPECT_EQ(instrument_.transmission().terminator, "\n");
  EXPECT_EQ(Ask("TERM?"), "LF");
  EXPECT_EQ(Ask("TERM CR"), "0");
  EXPECT_EQ(instrument_.transmission().terminator, "\r");
  EXPECT_EQ(Ask("TERM none"), "0");
  EXPECT_EQ(instrument_.transmission().terminator, "");
  EXPECT_EQ(Ask("TERM?"), "NONE");
  EXPECT_EQ(Ask("TERM CRLF"), "0");
  EXPECT_EQ(instrument_.transmission().terminator, "\r\n");
  EXPECT_TRUE(BadParameter("TERM 13"));
}

TEST_F(LineCommandsTest, MuteSuppressesTheNextAnswers) {
  EXPECT_EQ(Ask("MUTE 3"), "0");
  EXPECT_EQ(Ask("NAME 1,Quiet"), "(none)");
  EXPECT_EQ(Ask(""), "(none)");
  EXPECT_EQ(Ask("nonsense"), "(none)");
  EXPECT_EQ(Ask("CHS?"), "(none)");
  EXPECT_EQ(Ask("NAME? 1"), "Quiet");
  EXPECT_EQ(Ask("ERR?"), "1,unknown command");
}

TEST_F(LineCommandsTest, MuteCanBeEnded) {
  EXPECT_EQ(Ask("MUTE 1000000"), "0");
  EXPECT_EQ(Ask("MUTE 0"), "(none)");
  EXPECT_EQ(Ask("RATE?"), "100");
  EXPECT_TRUE(BadParameter("MUTE 1000001"));
  EXPECT_TRUE(BadParameter("MUTE -1"));
}

}  // namespace
}  // namespace kolvane::amplifier
