#include "instrument_fixture.h"

namespace kolvane::amplifier {
namespace {

class ChannelCommandsTest : public InstrumentTest {};

TEST_F(ChannelCommandsTest, DefaultsFormEightChannels) {
  EXPECT_EQ(Ask("CHS?"), "1,2,3,4,5,6,7,8");
  EXPECT_EQ(Ask("NAME?"), "Force,Torque,Pressure,Temperature,Displacement,Strain,Voltage,Current");
  EXPECT_EQ(Ask("UNIT?"),
            "kN,Nm,bar,\xB0"
            "C,mm,\xB5m/m,V,mA");
  EXPECT_EQ(Ask("SENS?"), "FULL,FULL,FULL,PT100,LVDT,QUARTER,U10V,I20MA");
  EXPECT_EQ(Ask("RANGE?"), "20,500,10,200,50,2000,10,20");
  EXPECT_EQ(Ask("FILT?"), "100,100,50,1,50,20,1000,500");
  EXPECT_EQ(Ask("LIM? 1-2"), "-20,20,-500,500");
  EXPECT_EQ(Ask("ZERO? 1-2"), "0.0000,0.000");
  EXPECT_EQ(Ask("TARE? 8"), "0.0000");
}

TEST_F(ChannelCommandsTest, EveryQueryTakesOneARangeOrAll) {
  for (const char* word :
       {"NAME?", "UNIT?", "SENS?", "RANGE?", "FILT?", "ZERO?", "TARE?", "LIM?", "LIMS?", "MSV?", "GRO?"}) {
    const std::string query(word);
    EXPECT_EQ(Ask(query), Ask(query + " 0")) << word;
    EXPECT_EQ(Ask(query), Ask(query + " 1-8")) << word;
    EXPECT_EQ(Ask(query + " 2-3"), Ask(query + " 2") + "," + Ask(query + " 3")) << word;
    EXPECT_TRUE(BadParameter(query + " 9")) << word;
    EXPECT_TRUE(BadParameter(query + " -1")) << word;
    EXPECT_TRUE(BadParameter(query + " 3-2")) << word;
    EXPECT_TRUE(WrongCount(query + " 1,2")) << word;
  }
}

TEST_F(ChannelCommandsTest, EverySettingRefusesAWrongChannelOrCount) {
  for (const char* line : {"NAME 9,x", "UNIT 9,x", "SENS 9,FULL", "RANGE 9,1", "FILT 9,1", "ZERO 9", "TARE 9",
                           "LIM 9,1,2", "NAME x,y", "ZERO -1", "TARE ,1"})
    EXPECT_TRUE(BadParameter(line)) << line;
  for (const char* line : {"NAME 1", "NAME 1,a,b", "UNIT", "SENS 1", "RANGE 1", "FILT 1,1,1", "ZERO",
                           "ZERO 1,2,3", "TARE", "LIM 1,2", "LIM 1,2,3,4"})
    EXPECT_TRUE(WrongCount(line)) << line;
}

TEST_F(ChannelCommandsTest, NamesAndUnitsAreKeptToTheirLengths) {
  EXPECT_EQ(Ask("NAME 2,  My channel "), "0");
  EXPECT_EQ(Ask("NAME? 2"), "My channel");
  EXPECT_EQ(Ask("NAME 2,1234567890123456"), "0");
  EXPECT_TRUE(BadParameter("NAME 2,12345678901234567"));
  EXPECT_TRUE(BadParameter("NAME 2,"));
  EXPECT_TRUE(BadParameter("NAME 2,a\tb"));
  EXPECT_TRUE(BadParameter("NAME 2,a\x7F"));
  EXPECT_EQ(Ask("NAME? 2"), "1234567890123456");
  EXPECT_EQ(Ask("UNIT 2,12345678"), "0");
  EXPECT_TRUE(BadParameter("UNIT 2,123456789"));
  EXPECT_EQ(Ask("UNIT 3,\xB0"
                "F"),
            "0");
  EXPECT_EQ(Ask("UNIT? 2-3"),
            "12345678,\xB0"
            "F");
}

TEST_F(ChannelCommandsTest, SeveralChannelsAreSetAlike) {
  EXPECT_EQ(Ask("UNIT 0,V"), "0");
  EXPECT_EQ(Ask("UNIT?"), "V,V,V,V,V,V,V,V");
  EXPECT_EQ(Ask("UNIT 2-3,A"), "0");
  EXPECT_EQ(Ask("UNIT?"), "V,A,A,V,V,V,V,V");
}

TEST_F(ChannelCommandsTest, SensorIsAKnownWord) {
  EXPECT_EQ(Ask("SENS 1,tck"), "0");
  EXPECT_EQ(Ask("SENS? 1"), "TCK");
  EXPECT_TRUE(BadParameter("SENS 1,FULLX"));
  EXPECT_TRUE(BadParameter("SENS 1,"));
}

TEST_F(ChannelCommandsTest, RangeHasLimits) {
  EXPECT_EQ(Ask("RANGE 1,0.001"), "0");
  EXPECT_EQ(Ask("RANGE? 1"), "0.001");
  EXPECT_EQ(Ask("RANGE 1,1000000"), "0");
  EXPECT_EQ(Ask("RANGE? 1"), "1000000");
  for (const char* line : {"RANGE 1,0.00099", "RANGE 1,1000001", "RANGE 1,0", "RANGE 1,-5", "RANGE 1,x"})
    EXPECT_TRUE(BadParameter(line)) << line;
}

TEST_F(ChannelCommandsTest, FilterIsOneOfTheSteps) {
  for (const char* step :
       {"0", "0.1", "0.2", "0.5", "1", "2", "5", "10", "20", "50", "100", "200", "500", "1000"}) {
    EXPECT_EQ(Ask(std::string("FILT 1,") + step), "0") << step;
    EXPECT_EQ(Ask("FILT? 1"), step);
  }
  for (const char* line : {"FILT 1,3", "FILT 1,2000", "FILT 1,-1", "FILT 1,"})
    EXPECT_TRUE(BadParameter(line)) << line;
}

TEST_F(ChannelCommandsTest, LimitsMustBeInOrder) {
  EXPECT_EQ(Ask("LIM 1,-1.5,2.5"), "0");
  EXPECT_EQ(Ask("LIM? 1"), "-1.5,2.5");
  EXPECT_EQ(Ask("LIM 2,-1e9,1e-7"), "0");
  EXPECT_EQ(Ask("LIM? 2"), "-1000000000,1e-07");
  EXPECT_EQ(Ask("LIM 2,-0,0.000001"), "0");
  EXPECT_EQ(Ask("LIM? 2"), "0,0.000001");
  EXPECT_TRUE(BadParameter("LIM 1,2,2"));
  EXPECT_TRUE(BadParameter("LIM 1,3,2"));
  EXPECT_TRUE(BadParameter("LIM 1,x,2"));
  EXPECT_TRUE(BadParameter("LIM 1,-1,1e10"));
  EXPECT_EQ(Ask("LIM? 1"), "-1.5,2.5");
}

TEST_F(ChannelCommandsTest, LimitStatesFollowTheValues) {
  Ask("OPMODE 1");
  EXPECT_EQ(Ask("LIMS? 1-3"), "0,0,0");
  Ask("LIM 1,10.5,11");
  Ask("LIM 2,249,250");
  Ask("LIM 3,-2,4.9");
  EXPECT_EQ(Ask("LIMS? 1-3"), "-1,0,1");
}

TEST_F(ChannelCommandsTest, CalibrationSignalIsHalfTheRange) {
  Ask("OPMODE 1");
  EXPECT_EQ(Ask("MSV?"), "10.0000,250.000,5.0000,100.000,25.0000,1000.00,5.0000,10.0000");
  Ask("RANGE 1,0.001");
  Ask("RANGE 2,1000000");
  EXPECT_EQ(Ask("MSV? 1-2"), "0.00050000,500000");
}

TEST_F(ChannelCommandsTest, ZeroAndTareTakeThePresentValue) {
  Ask("OPMODE 1");
  EXPECT_EQ(Ask("ZERO 1"), "0");
  EXPECT_EQ(Ask("MSV? 1"), "0.0000");
  EXPECT_EQ(Ask("ZERO? 1"), "10.0000");
  EXPECT_EQ(Ask("ZERO 1"), "0");
  EXPECT_EQ(Ask("ZERO? 1"), "10.0000");
  EXPECT_EQ(Ask("ZERO 1,4"), "0");
  EXPECT_EQ(Ask("GRO? 1"), "6.0000");
  EXPECT_EQ(Ask("TARE 1"), "0");
  EXPECT_EQ(Ask("TARE? 1"), "6.0000");
  EXPECT_EQ(Ask("MSV? 1"), "0.0000");
  EXPECT_EQ(Ask("GRO? 1"), "6.0000");
  EXPECT_EQ(Ask("TARE 1,-0.5"), "0");
  EXPECT_EQ(Ask("MSV? 1"), "6.5000");
  EXPECT_TRUE(BadParameter("ZERO 1,x"));
  EXPECT_TRUE(BadParameter("TARE 1,1e10"));
  EXPECT_TRUE(BadParameter("TARE 1,"));
}

TEST_F(ChannelCommandsTest, TaringAllChannelsLeavesNoNegativeZero) {
  Ask("OPMODE 1");
  Ask("TARE 0,0.1");
  EXPECT_EQ(Ask("TARE 0"), "0");
  EXPECT_EQ(Ask("MSV?"), "0.0000,0.000,0.0000,0.000,0.0000,0.00,0.0000,0.0000");
}

}  // namespace
}  // namespace kolvane::amplifier
