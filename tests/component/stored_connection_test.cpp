#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "base/temp_folder.h"
#include "component/settings.h"
#include "device/connection_form.h"

namespace kolvane::component {
namespace {

TEST(StoredConnection, StoredSettingsAreReadAndNotWritten) {
  const base::TempFolder folder;
  device::ConnectionParameters connection;
  terminal::TerminalState terminal;
  const std::string text =
      "[PORT]\nPORT=0\nBAUD=2\nPARITY=0\n[TERMINAL]\nRCVTIMO=77\nSENDTERM=\\r\nSHOWCOMMANDS=-1\n";
  base::WriteBytes(folder.Path("a.ini"), text);
  LoadStoredConnection(folder.Path("a.ini"), connection, terminal);
  EXPECT_TRUE(device::CompleteConnection(connection, folder.Path(".")));
  EXPECT_EQ(connection.port_code, device::port_code::kCom1);
  EXPECT_EQ(connection.baud, 38400);
  EXPECT_EQ(connection.parity, 0);
  EXPECT_EQ(terminal.shown.timeout, "77");
  EXPECT_EQ(terminal.receive.send_terminator, "\r");
  EXPECT_EQ(base::ReadBytes(folder.Path("a.ini")), text);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.ini"});
}

TEST(StoredConnection, StoredLineValuesAreUsedIfNoPageIsReadForThem) {
  const base::TempFolder folder;
  device::ConnectionParameters connection;
  terminal::TerminalState terminal;
  base::WriteBytes(folder.Path("a.ini"), "[PORT]\nPORT=8\nADDRESS=40\nRCVBUF=2048\nDATABITS=7\nSTOPBITS=2\n");
  LoadStoredConnection(folder.Path("a.ini"), connection, terminal);
  EXPECT_TRUE(device::CompleteConnection(connection, folder.Path(".")));
  EXPECT_EQ(connection.port_code, device::port_code::kTcpIp);
  EXPECT_EQ(connection.receive_buffer, 2048);
  EXPECT_EQ(connection.data_bits, 7);
  EXPECT_EQ(connection.stop_bits, 2);
}

TEST(StoredConnection, AStoredSettingThatCannotBeReadIsAnError) {
  const base::TempFolder folder;
  device::ConnectionParameters connection;
  terminal::TerminalState terminal;
  base::WriteBytes(folder.Path("a.ini"), "[PORT]\nPORT=four\n");
  EXPECT_THROW(LoadStoredConnection(folder.Path("a.ini"), connection, terminal), base::RuntimeError);
}

}  // namespace
}  // namespace kolvane::component
