#include "device/connection_texts.h"

#include <gtest/gtest.h>

#include <vector>

namespace kolvane::device {
namespace {

ConnectionParameters Serial(std::int16_t code) {
  ConnectionParameters parameters;
  parameters.port_code = code;
  parameters.baud = 19200;
  parameters.baud_index = 2;
  parameters.parity = 0;
  parameters.data_bits = 8;
  parameters.stop_bits = 1;
  return parameters;
}

TEST(ConnectionDescription, Com1ShowsTheRate) {
  EXPECT_EQ(ConnectionDescription(Serial(1)), "COM1 19200 Baud, Parity: Keine, Data: 8, Stop: 1");
}

TEST(ConnectionDescription, Com2ShowsTheIndexOfTheRate) {
  EXPECT_EQ(ConnectionDescription(Serial(2)), "COM2 2 Baud, Parity: Keine, Data: 8, Stop: 1");
}

TEST(ConnectionDescription, NamesEachParity) {
  auto parameters = Serial(1);
  parameters.parity = 1;
  EXPECT_EQ(ConnectionDescription(parameters), "COM1 19200 Baud, Parity: Gerade, Data: 8, Stop: 1");
  parameters.parity = 2;
  EXPECT_EQ(ConnectionDescription(parameters), "COM1 19200 Baud, Parity: Ungerade, Data: 8, Stop: 1");
  parameters.parity = 3;
  EXPECT_EQ(ConnectionDescription(parameters), "COM1 19200 Baud, Parity: , Data: 8, Stop: 1");
}

TEST(ConnectionDescription, NamesEachParallelMode) {
  const char* words[] = {"Nibble Mode", "Bit8 Mode", "Byte Mode", "EPP Mode", "Interlink Mode", ""};
  ConnectionParameters parameters;
  for (std::int16_t mode = 0; mode < 6; ++mode) {
    parameters.lpt_mode = mode;
    parameters.port_code = port_code::kLpt1;
    EXPECT_EQ(ConnectionDescription(parameters), std::string("LPT1: ") + words[mode]);
    parameters.port_code = port_code::kLpt2;
    EXPECT_EQ(ConnectionDescription(parameters), std::string("LPT2: ") + words[mode]);
  }
  parameters.lpt_mode = -1;
  EXPECT_EQ(ConnectionDescription(parameters), "LPT2: ");
}

TEST(ConnectionDescription, ShowsTheIpPortAsItWasTyped) {
  ConnectionParameters parameters;
  parameters.port_code = port_code::kTcpIp;
  parameters.ip_address = "192.168.0.7";
  parameters.ip_port = 7;
  EXPECT_EQ(ConnectionDescription(parameters), "TCP/IP: 192.168.0.7, Port 7");
  parameters.ip_port = INT16_MAX;
  EXPECT_EQ(ConnectionDescription(parameters), "TCP/IP: 192.168.0.7, Port 32767");
  parameters.ip_port = INT16_MIN;
  EXPECT_EQ(ConnectionDescription(parameters), "TCP/IP: 192.168.0.7, Port 32768");
  parameters.ip_port = -1;
  EXPECT_EQ(ConnectionDescription(parameters), "TCP/IP: 192.168.0.7, Port 65535");
}

TEST(ConnectionDescription, UsbHasTwoSpaces) {
  ConnectionParameters parameters;
  parameters.port_code = port_code::kUsb;
  parameters.usb_address = "A1234";
  EXPECT_EQ(ConnectionDescription(parameters), "USB:  A1234");
}

TEST(ConnectionDescription, GpibShowsTheAddress) {
  ConnectionParameters parameters;
  parameters.port_code = port_code::kGpib;
  parameters.address = 16;
  EXPECT_EQ(ConnectionDescription(parameters), "GPIB: Addresse 16");
}

TEST(ConnectionDescription, IsEmptyForAllOtherCodes) {
  for (const std::int16_t code : std::vector<std::int16_t>{10, 20, -1, 0, 3, 99, 487, 32767})
    EXPECT_EQ(ConnectionDescription(Serial(code)), "") << code;
}

}  // namespace
}  // namespace kolvane::device
