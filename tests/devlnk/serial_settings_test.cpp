#include "devlnk/serial_channel.h"

#include <gtest/gtest.h>

namespace kolvane::devlnk {
namespace {

PortRequest RequestOf(std::string_view parity, std::int32_t data_bits = 8, std::int16_t stop_bits = 1) {
  return {"COM1", 9600, parity, data_bits, stop_bits};
}

tcflag_t ControlFlags(const SerialParameters& parameters) { return SettingsFor(parameters, {}).c_cflag; }

TEST(SerialParameters, TakeTheParityFromItsLetter) {
  EXPECT_EQ(SerialParametersFrom(RequestOf("n"))->parity, Parity::kNone);
  EXPECT_EQ(SerialParametersFrom(RequestOf(""))->parity, Parity::kNone);
  EXPECT_EQ(SerialParametersFrom(RequestOf("e"))->parity, Parity::kEven);
  EXPECT_EQ(SerialParametersFrom(RequestOf("O"))->parity, Parity::kOdd);
  EXPECT_FALSE(SerialParametersFrom(RequestOf("m")));
}

TEST(SerialParameters, TakeOtherBitCountsForTheUsualOnes) {
  for (const int bits : {1, 0, -1, 5, 6, 8, 9})
    EXPECT_FALSE(SerialParametersFrom(RequestOf("n", bits))->seven_data_bits);
  EXPECT_TRUE(SerialParametersFrom(RequestOf("n", 7))->seven_data_bits);
  EXPECT_FALSE(SerialParametersFrom(RequestOf("n", 8, 1))->two_stop_bits);
  EXPECT_FALSE(SerialParametersFrom(RequestOf("n", 8, 0))->two_stop_bits);
  EXPECT_FALSE(SerialParametersFrom(RequestOf("n", 8, 3))->two_stop_bits);
  EXPECT_TRUE(SerialParametersFrom(RequestOf("n", 8, 2))->two_stop_bits);
}

TEST(SerialParameters, NeedARate) {
  EXPECT_EQ(SerialParametersFrom({"COM1", 1, "n", 8, 1})->baud, 1u);
  EXPECT_EQ(SerialParametersFrom({"COM1", INT32_MAX, "n", 8, 1})->baud, 2'147'483'647u);
  EXPECT_FALSE(SerialParametersFrom({"COM1", 0, "n", 8, 1}));
  EXPECT_FALSE(SerialParametersFrom({"COM1", -1, "n", 8, 1}));
}

TEST(SerialSettings, HaveTheRequestedFrame) {
  constexpr tcflag_t kAlways = CREAD | CLOCAL | B9600;
  EXPECT_EQ(ControlFlags({9600, Parity::kNone, false, false}), kAlways | CS8);
  EXPECT_EQ(ControlFlags({9600, Parity::kEven, true, false}), kAlways | CS7 | PARENB);
  EXPECT_EQ(ControlFlags({9600, Parity::kOdd, true, true}), kAlways | CS7 | PARENB | PARODD | CSTOPB);
  EXPECT_EQ(ControlFlags({9600, Parity::kNone, false, true}), kAlways | CS8 | CSTOPB);
}

TEST(SerialSettings, HaveTheRateAsNumberAndIfPossibleAsCode) {
  const struct {
    std::uint32_t baud;
    tcflag_t code;
  } cases[] = {{50, B50},
               {75, B75},
               {110, B110},
               {134, B134},
               {150, B150},
               {200, B200},
               {300, B300},
               {600, B600},
               {1200, B1200},
               {1800, B1800},
               {2400, B2400},
               {4800, B4800},
               {9600, B9600},
               {19'200, B19200},
               {38'400, B38400},
               {57'600, B57600},
               {115'200, B115200},
               {230'400, B230400},
               {460'800, B460800},
               {500'000, B500000},
               {576'000, B576000},
               {921'600, B921600},
               {1'000'000, B1000000},
               {1'152'000, B1152000},
               {1'500'000, B1500000},
               {2'000'000, B2000000},
               {2'500'000, B2500000},
               {3'000'000, B3000000},
               {3'500'000, B3500000},
               {4'000'000, B4000000},
               {14'400, BOTHER},
               {1, BOTHER},
               {12'000'000, BOTHER}};
  for (const auto& expected : cases) {
    const termios2 settings = SettingsFor({expected.baud, Parity::kNone, false, false}, {});
    EXPECT_EQ(settings.c_cflag & CBAUD, expected.code) << expected.baud;
    EXPECT_EQ((settings.c_cflag >> IBSHIFT) & CBAUD, 0u) << "the input rate is the output rate";
    EXPECT_EQ(settings.c_ispeed, expected.baud);
    EXPECT_EQ(settings.c_ospeed, expected.baud);
  }
}

TEST(SerialSettings, AreRawWithoutFlowControl) {
  const termios2 settings = SettingsFor({9600, Parity::kNone, false, false}, {});
  EXPECT_EQ(settings.c_iflag, static_cast<tcflag_t>(IGNBRK));
  EXPECT_EQ(settings.c_oflag, 0u);
  EXPECT_EQ(settings.c_lflag, 0u);
  EXPECT_EQ(settings.c_cflag & CRTSCTS, 0u);
  EXPECT_EQ(settings.c_cc[VMIN], 0);
  EXPECT_EQ(settings.c_cc[VTIME], 1);
}

TEST(SerialSettings, HaveFlowControlByCharactersOrLines) {
  SerialParameters parameters;
  parameters.flow = FlowControl::kXonXoff;
  const termios2 characters = SettingsFor(parameters, {});
  EXPECT_EQ(characters.c_iflag, static_cast<tcflag_t>(IGNBRK | IXON | IXOFF));
  EXPECT_EQ(characters.c_cc[VSTART], 0x11);
  EXPECT_EQ(characters.c_cc[VSTOP], 0x13);
  EXPECT_EQ(characters.c_cflag & CRTSCTS, 0u);
  parameters.flow = FlowControl::kRtsCts;
  const termios2 lines = SettingsFor(parameters, {});
  EXPECT_EQ(lines.c_iflag, static_cast<tcflag_t>(IGNBRK));
  EXPECT_NE(lines.c_cflag & CRTSCTS, 0u);
}

TEST(SerialSettings, CheckParityOnlyIfThereIsOne) {
  EXPECT_NE(SettingsFor({9600, Parity::kOdd, false, false}, {}).c_iflag & INPCK, 0u);
  EXPECT_EQ(SettingsFor({9600, Parity::kNone, false, false}, {}).c_iflag & INPCK, 0u);
}

TEST(SerialSettings, KeepOnlyHangUpOnCloseOfTheOldOnes) {
  termios2 before{};
  before.c_cflag = HUPCL | CRTSCTS | PARENB | CSTOPB | CS5 | B50;
  before.c_iflag = IXON | ICRNL;
  before.c_lflag = ECHO | ICANON;
  before.c_line = 3;
  const termios2 settings = SettingsFor({9600, Parity::kNone, false, false}, before);
  EXPECT_EQ(settings.c_cflag, static_cast<tcflag_t>(HUPCL | CREAD | CLOCAL | CS8 | B9600));
  EXPECT_EQ(settings.c_iflag, static_cast<tcflag_t>(IGNBRK));
  EXPECT_EQ(settings.c_lflag, 0u);
  EXPECT_EQ(settings.c_line, 3);
}

TEST(Rs485Settings, DriveTheBusWithRtsOnlyWhileSending) {
  serial_rs485 before{};
  before.flags = SER_RS485_RTS_AFTER_SEND | SER_RS485_RX_DURING_TX | SER_RS485_TERMINATE_BUS;
  before.delay_rts_before_send = 3;
  before.delay_rts_after_send = 4;
  const serial_rs485 bus = Rs485SettingsFor(before);
  EXPECT_EQ(bus.flags,
            static_cast<std::uint32_t>(SER_RS485_ENABLED | SER_RS485_RTS_ON_SEND | SER_RS485_TERMINATE_BUS));
  EXPECT_EQ(bus.delay_rts_before_send, 3u);
  EXPECT_EQ(bus.delay_rts_after_send, 4u);
}

TEST(SerialRates, MatchWithinThreePercent) {
  EXPECT_TRUE(RateMatches(9600, 9600));
  EXPECT_TRUE(RateMatches(10'000, 10'300));
  EXPECT_FALSE(RateMatches(10'000, 10'301));
  EXPECT_TRUE(RateMatches(10'000, 9'700));
  EXPECT_FALSE(RateMatches(10'000, 9'699));
  EXPECT_FALSE(RateMatches(9600, 0));
}

}  // namespace
}  // namespace kolvane::devlnk
