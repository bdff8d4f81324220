#include <gtest/gtest.h>

#include <vector>

#include "device/connection_form.h"
#include "device/connection_texts.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

TEST(Rs232Timeout, IsSecondsTimesThousandRounded) {
  EXPECT_EQ(Rs232Timeout("10"), 10000);
  EXPECT_EQ(Rs232Timeout("2"), 2000);
  EXPECT_EQ(Rs232Timeout("0,5 s"), 500);
  EXPECT_EQ(Rs232Timeout("0.5"), 500);
  EXPECT_EQ(Rs232Timeout("0.0025"), 2);
  EXPECT_EQ(Rs232Timeout("0.0035"), 4);
}

TEST(Rs232Timeout, NeverGoesBelowZero) {
  EXPECT_EQ(Rs232Timeout("-3"), 0);
  EXPECT_EQ(Rs232Timeout("-0.001"), 0);
  EXPECT_EQ(Rs232Timeout("0"), 0);
  EXPECT_EQ(Rs232Timeout("0.001"), 1);
  EXPECT_EQ(Rs232Timeout("abc"), 0);
  EXPECT_EQ(Rs232Timeout(""), 0);
}

TEST(ParallelAndTcpIpTimeout, AreSecondsWithTheirSign) {
  for (const auto timeout : {ParallelTimeout, TcpIpTimeout}) {
    EXPECT_EQ(timeout("3 s"), 3000);
    EXPECT_EQ(timeout("300 s"), 300000);
    EXPECT_EQ(timeout("1,25"), 1250);
    EXPECT_EQ(timeout("-2"), -2000);
    EXPECT_EQ(timeout("text"), 0);
  }
}

TEST(GpibTimeout, IsMillisecondsOnlyIfItSaysMsec) {
  EXPECT_EQ(GpibTimeout("250 msec"), 250);
  EXPECT_EQ(GpibTimeout("2,5 msec"), 2);
  EXPECT_EQ(GpibTimeout("250 MSEC"), 250000);
  EXPECT_EQ(GpibTimeout("100 ms"), 100000);
  EXPECT_EQ(GpibTimeout("300 ms"), 300000);
  EXPECT_EQ(GpibTimeout("1 s"), 1000);
  EXPECT_EQ(GpibTimeout("3 s"), 3000);
  EXPECT_EQ(GpibTimeout("300 s"), 300000);
}

TEST(TimeoutEntry, StopsAtTheEndsOf32Bits) {
  EXPECT_EQ(TcpIpTimeout("2147483.647"), INT32_MAX);
  EXPECT_EQ(TcpIpTimeout("2147483.648"), INT32_MAX);
  EXPECT_EQ(TcpIpTimeout("1e300"), INT32_MAX);
  EXPECT_EQ(TcpIpTimeout("1e999"), INT32_MAX);
  EXPECT_EQ(TcpIpTimeout("-2147483.649"), INT32_MIN);
  EXPECT_EQ(Rs232Timeout("-1e999"), 0);
  EXPECT_EQ(GpibTimeout("2147483648 msec"), INT32_MAX);
}

TEST(TypedNumbers, AreLimitedToTheirRange) {
  EXPECT_EQ(TypedInt32("19200 Baud"), 19200);
  EXPECT_EQ(TypedInt32("2147483648"), INT32_MAX);
  EXPECT_EQ(TypedInt32("-2147483649"), INT32_MIN);
  EXPECT_EQ(TypedInt16("32767"), INT16_MAX);
  EXPECT_EQ(TypedInt16("32768"), INT16_MAX);
  EXPECT_EQ(TypedInt16("-32769"), INT16_MIN);
  EXPECT_EQ(TypedInt16("1,5"), 2);
  EXPECT_EQ(TypedByte("255"), 255);
  EXPECT_EQ(TypedByte("256"), 255);
  EXPECT_EQ(TypedByte("-1"), 0);
}

TEST(TypedNumbers, KeepIpPortsIn16Bits) {
  EXPECT_EQ(TypedIpPort("7"), 7);
  EXPECT_EQ(TypedIpPort("32767"), INT16_MAX);
  EXPECT_EQ(TypedIpPort("32768"), INT16_MIN);
  EXPECT_EQ(TypedIpPort("65535"), -1);
  EXPECT_EQ(TypedIpPort("65536"), -1);
  EXPECT_EQ(IpPortText(TypedIpPort("40000")), "40000");
}

TEST(TypedNumbers, KeepTheFloorsOfReceiveBufferAndDialTimeout) {
  EXPECT_EQ(TypedReceiveBuffer("100"), 512);
  EXPECT_EQ(TypedReceiveBuffer("511"), 512);
  EXPECT_EQ(TypedReceiveBuffer("512"), 512);
  EXPECT_EQ(TypedReceiveBuffer("513"), 513);
  EXPECT_EQ(TypedReceiveBuffer("4096"), 4096);
  EXPECT_EQ(TypedReceiveBuffer(""), 512);
  EXPECT_EQ(TypedDialTimeout("5"), 60);
  EXPECT_EQ(TypedDialTimeout("9"), 60);
  EXPECT_EQ(TypedDialTimeout("10"), 10);
  EXPECT_EQ(TypedDialTimeout("11"), 11);
  EXPECT_EQ(TypedDialTimeout("-1"), 60);
}

TEST(LptMode, TravelsAsBaud) {
  EXPECT_EQ(BaudOfLptMode(0), 1);
  EXPECT_EQ(BaudOfLptMode(3), 4);
  EXPECT_EQ(BaudOfLptMode(4), 95);
  EXPECT_EQ(BaudOfLptMode(-1), 0);
}

TEST(Parity, HasALetterForTheLibrary) {
  EXPECT_EQ(ParityLetter(0), "n");
  EXPECT_EQ(ParityLetter(1), "e");
  EXPECT_EQ(ParityLetter(2), "o");
  EXPECT_EQ(ParityLetter(3), "");
  EXPECT_EQ(ParityLetter(-1), "");
}

TEST(PortKinds, PairOptionCaptionAndCode) {
  const struct {
    const char* caption;
    std::int16_t code;
  } expected[] = {{"COM 1", 1},
                  {"COM 2", 2},
                  {"COM 1 (RS485)", 10},
                  {"COM 2 (RS485)", 20},
                  {"LPT1", 90},
                  {"LPT2", 91},
                  {"GPIB (IEEE488)", 488},
                  {"Offline", -1},
                  {"Ethernet TCP/IP", 100},
                  {"USB", 200}};
  for (std::int16_t option = 0; option < 10; ++option) {
    const PortKind* kind = PortKindOfOption(option);
    ASSERT_NE(kind, nullptr);
    EXPECT_EQ(kind->option, option);
    EXPECT_STREQ(kind->caption, expected[option].caption);
    EXPECT_EQ(kind->code, expected[option].code);
    EXPECT_EQ(PortKindOfCode(kind->code), kind);
  }
  EXPECT_EQ(PortKindOfOption(10), nullptr);
  EXPECT_EQ(PortKindOfOption(-1), nullptr);
  EXPECT_EQ(PortKindOfCode(0), nullptr);
}

TEST(PortKinds, ReadTheirPage) {
  EXPECT_EQ(PageOfCode(488), ParameterPage::kGpib);
  EXPECT_EQ(PageOfCode(90), ParameterPage::kParallel);
  EXPECT_EQ(PageOfCode(91), ParameterPage::kParallel);
  EXPECT_EQ(PageOfCode(100), ParameterPage::kTcpIp);
  for (const std::int16_t code : std::vector<std::int16_t>{1, 2, 10, 20, 200, -1, 77})
    EXPECT_EQ(PageOfCode(code), ParameterPage::kRs232) << code;
}

}  // namespace
}  // namespace kolvane::device
