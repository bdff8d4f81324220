#include <gtest/gtest.h>

#include <filesystem>

#include "base/temp_folder.h"
#include "device/connection_form.h"

namespace kolvane::device {
namespace {

ConnectionParameters Stored(std::int16_t option) {
  ConnectionParameters parameters;
  parameters.port_option = option;
  parameters.baud_index = 1;
  parameters.timeout_entries = {
      .rs232_seconds = 2, .tcpip_seconds = 3, .usb_seconds = 9, .gpib_index = 0, .lpt_index = 1};
  return parameters;
}

TEST(CompleteConnection, DerivesTheValuesForOpening) {
  ConnectionParameters serial = Stored(0);
  EXPECT_TRUE(CompleteConnection(serial, ""));
  EXPECT_EQ(serial.port_code, port_code::kCom1);
  EXPECT_EQ(serial.baud, 19200);
  EXPECT_EQ(serial.timeout_ms, 2000);
  EXPECT_EQ(serial.data_bits, 8);
  EXPECT_EQ(serial.modem_script, "");
  ConnectionParameters tcp = Stored(8);
  tcp.ip_port = -1;
  tcp.receive_buffer = 1;
  EXPECT_TRUE(CompleteConnection(tcp, ""));
  EXPECT_EQ(tcp.port_code, port_code::kTcpIp);
  EXPECT_EQ(tcp.timeout_ms, 3000);
  EXPECT_EQ(tcp.ip_port, -1);
  EXPECT_EQ(tcp.data_bits, 1);
  EXPECT_EQ(tcp.receive_buffer, 1);
}

TEST(CompleteConnection, ReadsTheModemScriptAndWritesNothing) {
  const base::TempFolder folder;
  base::WriteBytes(folder.Path("MODEM.INI"), "ATZ\r\n\r\nATDT42\r\n");
  ConnectionParameters parameters = Stored(0);
  EXPECT_TRUE(CompleteConnection(parameters, folder.Path(".")));
  EXPECT_EQ(parameters.modem_script, "ATZ\r\nATDT42");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"MODEM.INI"});
  EXPECT_EQ(base::ReadBytes(folder.Path("MODEM.INI")), "ATZ\r\n\r\nATDT42\r\n");
}

TEST(CompleteConnection, ReadsNoScriptFromTheCurrentFolder) {
  const base::TempFolder started_in;
  started_in.Write("MODEM.INI", "ATDT42\r\n");
  std::filesystem::current_path(started_in.path());
  ConnectionParameters parameters = Stored(0);
  EXPECT_TRUE(CompleteConnection(parameters, ""));
  std::filesystem::current_path("/");
  EXPECT_EQ(parameters.modem_script, "");
}

TEST(CompleteConnection, RefusesAnAddressPast31) {
  ConnectionParameters parameters = Stored(0);
  parameters.address = 31;
  EXPECT_TRUE(CompleteConnection(parameters, ""));
  parameters.address = 32;
  EXPECT_FALSE(CompleteConnection(parameters, ""));
}

}  // namespace
}  // namespace kolvane::device
