#include "amplifier/block.h"
#include "instrument_fixture.h"

namespace kolvane::amplifier {
namespace {

class MeasuringCommandsTest : public InstrumentTest {
 protected:
  std::string AskBytes(std::string_view command) {
    std::string answer = Ask(command);
    EXPECT_EQ(reply_.kind, Reply::Kind::kBytes) << command;
    return answer;
  }
};

TEST_F(MeasuringCommandsTest, RateHasLimits) {
  EXPECT_EQ(Ask("RATE?"), "100");
  EXPECT_EQ(Ask("RATE 1"), "0");
  EXPECT_EQ(Ask("RATE 10000"), "0");
  EXPECT_EQ(Ask("RATE?"), "10000");
  EXPECT_TRUE(BadParameter("RATE 0"));
  EXPECT_TRUE(BadParameter("RATE 10001"));
  EXPECT_TRUE(BadParameter("RATE 1.5"));
  EXPECT_TRUE(WrongCount("RATE"));
  EXPECT_TRUE(WrongCount("RATE? 1"));
}

TEST_F(MeasuringCommandsTest, ValuesChangeWithTheSampleNumber) {
  const std::string first = Ask("MSV?");
  EXPECT_EQ(Ask("MSV?"), first);
  clock_.now += 0.005;
  EXPECT_EQ(Ask("MSV?"), first);
  clock_.now += 0.006;
  EXPECT_NE(Ask("MSV?"), first);
}

TEST_F(MeasuringCommandsTest, RecordingFillsWithTime) {
  EXPECT_EQ(Ask("BUF?"), "0,0,0");
  EXPECT_EQ(Ask("STA 50"), "0");
  EXPECT_EQ(Ask("BUF?"), "0,50,1");
  EXPECT_TRUE(Refuses("STA 10", Refusal::kNotNow));
  clock_.now += 0.2;
  EXPECT_EQ(Ask("BUF?"), "20,50,1");
  clock_.now += 10;
  EXPECT_EQ(Ask("BUF?"), "50,50,0");
  EXPECT_EQ(Ask("STA 10"), "0");
  EXPECT_EQ(Ask("BUF?"), "0,10,1");
}

TEST_F(MeasuringCommandsTest, StopKeepsTheSamples) {
  Ask("STA 50");
  clock_.now += 0.2;
  EXPECT_EQ(Ask("STP"), "(none)");
  clock_.now += 10;
  EXPECT_EQ(Ask("BUF?"), "20,50,0");
  EXPECT_EQ(Ask("STP"), "(none)");
  EXPECT_EQ(Ask("BUF?"), "20,50,0");
  EXPECT_EQ(Ask("STA 5"), "0");
  EXPECT_EQ(Ask("BUF?"), "0,5,1");
}

TEST_F(MeasuringCommandsTest, StopWithoutARecordingIsHarmless) {
  Ask("STP");
  EXPECT_EQ(Ask("BUF?"), "0,0,0");
  EXPECT_EQ(Ask("ERR?"), "0,no error");
}

TEST_F(MeasuringCommandsTest, StartHasLimits) {
  EXPECT_EQ(Ask("STA 100000,2-3"), "0");
  Ask("STP");
  EXPECT_TRUE(BadParameter("STA 100001"));
  EXPECT_TRUE(BadParameter("STA 0"));
  EXPECT_TRUE(BadParameter("STA 1,9"));
  EXPECT_TRUE(BadParameter("STA 1,"));
  EXPECT_TRUE(WrongCount("STA"));
  EXPECT_TRUE(WrongCount("STA 1,1,1"));
}

TEST_F(MeasuringCommandsTest, RecordedValuesStayAsTheyWere) {
  Ask("OPMODE 1");
  Ask("STA 3,2-3");
  clock_.now += 1;
  Ask("OPMODE 0");
  Ask("RANGE 2,1");
  EXPECT_EQ(Ask("BUFV? 2,1"), "250.000");
  EXPECT_EQ(Ask("BUFV? 3,1,3"), "5.0000,5.0000,5.0000");
}

TEST_F(MeasuringCommandsTest, RecordedValuesAreThoseOfTheRecording) {
  Ask("STA 10");
  clock_.now += 0.055;
  const std::string then = Ask("MSV? 7");
  clock_.now += 10;
  EXPECT_EQ(Ask("BUFV? 7,5"), then);
}

TEST_F(MeasuringCommandsTest, BufferAnswersOnlyRecordedSamples) {
  EXPECT_TRUE(BadParameter("BUFV? 1,1"));
  Ask("STA 1000,2-3");
  clock_.now += 6.005;
  EXPECT_EQ(Ask("BUF?"), "600,1000,1");
  EXPECT_NE(Ask("BUFV? 2,600"), "?");
  EXPECT_NE(Ask("BUFV? 2,101,500"), "?");
  for (const char* line : {"BUFV? 1,1", "BUFV? 4,1", "BUFV? 2,0", "BUFV? 2,601", "BUFV? 2,600,2",
                           "BUFV? 2,1,501", "BUFV? 2,1,0", "BUFV? 0,1", "BUFV? 2,x", "BUFV? 2,1,"})
    EXPECT_TRUE(BadParameter(line)) << line;
  EXPECT_TRUE(WrongCount("BUFV? 2"));
  EXPECT_TRUE(WrongCount("BUFV? 2,1,1,1"));
}

TEST_F(MeasuringCommandsTest, BufferBlockIsThePartAskedFor) {
  Ask("OPMODE 1");
  Ask("STA 100,2-3");
  clock_.now += 0.505;
  const std::string block = AskBytes("BUFB? 11,40,INT16,MOTOROLA");
  EXPECT_EQ(block.size(), kBlockHeaderSize + 40 * 2 * 2);
  EXPECT_EQ(block.substr(0, 12), std::string("KVAB\x01\x89\x02\x02\x00\x28\x00\x64", 12));
  // Sample 11 of a recording whose first sample has number 1, at 100 Hz: 0.11 s.
  EXPECT_EQ(block.substr(24, 8), "\x3F\xBC\x28\xF5\xC2\x8F\x5C\x29");
  EXPECT_TRUE(BadParameter("BUFB? 11,41"));
  EXPECT_TRUE(BadParameter("BUFB? 0,1"));
  EXPECT_TRUE(BadParameter("BUFB? 1,1,INT8"));
  EXPECT_TRUE(BadParameter("BUFB? 1,1,INT16,PDP"));
  EXPECT_TRUE(WrongCount("BUFB? 1"));
  EXPECT_TRUE(WrongCount("BUFB? 1,1,INT16,INTEL,1"));
}

TEST_F(MeasuringCommandsTest, BufferBlockHasALargestCount) {
  Ask("STA 5000,1");
  clock_.now += 100;
  EXPECT_EQ(AskBytes("BUFB? 1,4096").size(), kBlockHeaderSize + 4096 * 2);
  EXPECT_TRUE(BadParameter("BUFB? 1,4097"));
}

TEST_F(MeasuringCommandsTest, BlockSizesFollowCountAndType) {
  EXPECT_EQ(AskBytes("BIN? 1").size(), kBlockHeaderSize + 2);
  EXPECT_EQ(AskBytes("BIN? 1-8,10").size(), kBlockHeaderSize + 8 * 10 * 2);
  EXPECT_EQ(AskBytes("BIN? 0,10,int32").size(), kBlockHeaderSize + 8 * 10 * 4);
  EXPECT_EQ(AskBytes("BIN? 3,4096,FLOAT32,MOTOROLA").size(), kBlockHeaderSize + 4096 * 4);
  EXPECT_EQ(AskBytes("BIN? 3,1,,intel").size(), kBlockHeaderSize + 2);
}

TEST_F(MeasuringCommandsTest, BlocksAreCountedAndStamped) {
  clock_.now += 1.5;
  AskBytes("BIN? 1");
  const std::string second = AskBytes("BIN? 1");
  EXPECT_EQ(second.substr(12, 4), std::string("\xDC\x05\x00\x00", 4));
  EXPECT_EQ(second.substr(20, 4), std::string("\x02\x00\x00\x00", 4));
  EXPECT_EQ(second.substr(24, 8), std::string("\x00\x00\x00\x00\x00\x00\xF8\x3F", 8));
}

TEST_F(MeasuringCommandsTest, BlockRefusesWrongParameters) {
  for (const char* line :
       {"BIN? 9", "BIN? 1,0", "BIN? 1,4097", "BIN? 1,1,INT8", "BIN? 1,1,INT16,BIG", "BIN? x"})
    EXPECT_TRUE(BadParameter(line)) << line;
  EXPECT_TRUE(WrongCount("BIN?"));
  EXPECT_TRUE(WrongCount("BIN? 1,1,INT16,INTEL,1"));
}

}  // namespace
}  // namespace kolvane::amplifier
