#include "component/settings.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "component/memory_store.h"

namespace kolvane::component {
namespace {

class SettingsTest : public testing::Test {
 protected:
  void Load(bool with_connection = true) { LoadSettings(store_, Target(), with_connection); }
  void Save() { EXPECT_FALSE(SaveSettings(store_, Target())); }

  std::string LoadError() {
    try {
      Load();
    } catch (const base::RuntimeError& error) {
      return error.what();
    }
    return "";
  }

  SettingsTarget Target() { return {connection_, terminal_, window_}; }

  MemoryStore store_;
  device::ConnectionParameters connection_;
  terminal::TerminalState terminal_;
  terminal::WindowSettings window_;
};

TEST_F(SettingsTest, AnEmptyStoreGivesTheDefaults) {
  connection_.port_option = 9;
  terminal_.options.show_commands = false;
  Load();
  EXPECT_EQ(connection_.port_option, 4);
  EXPECT_EQ(connection_.address, 4);
  EXPECT_EQ(connection_.ip_port, 7);
  EXPECT_EQ(connection_.timeout_entries.rs232_seconds, 5);
  EXPECT_EQ(connection_.timeout_entries.gpib_index, 4);
  EXPECT_EQ(connection_.parity, 1);
  EXPECT_EQ(terminal_.receive.mode, 0);
  EXPECT_EQ(terminal_.receive.send_terminator, "\n");
  EXPECT_EQ(terminal_.receive.receive_terminator, "\r\n");
  EXPECT_EQ(terminal_.shown.timeout, "3000");
  EXPECT_EQ(window_.pane.font_name, "Courier New");
  EXPECT_EQ(window_.pane.font_size, 10);
  EXPECT_EQ(window_.pane.back_color, 16777215);
  EXPECT_TRUE(terminal_.options.show_commands);
  EXPECT_FALSE(terminal_.options.show_response_times);
  EXPECT_FALSE(terminal_.options.line_breaks);
}

TEST_F(SettingsTest, ReadsInTheTablesOrder) {
  Load();
  ASSERT_EQ(store_.reads.size(), 34u);
  EXPECT_EQ(store_.reads.front(), "PORT/PORT");
  EXPECT_EQ(store_.reads[14], "PORT/STOPBITS");
  EXPECT_EQ(store_.reads[20], "PORT/COMLOG");
  EXPECT_EQ(store_.reads[27], "SHOWRESPONSETIME/SHOWCOMMANDS");
  EXPECT_EQ(store_.reads[28], "LINEBREAKS/SHOWCOMMANDS");
  EXPECT_EQ(store_.reads.back(), "COMMANDLIST/BACKCOLOR");
}

TEST_F(SettingsTest, DoesNotChangeAHostsConnection) {
  store_.values["PORT/ADDRESS"] = "9";
  store_.values["PORT/COMLOG"] = "3";
  Load(false);
  EXPECT_EQ(connection_.address, 4);
  EXPECT_EQ(window_.com_log, 3);
  EXPECT_EQ(store_.reads.front(), "TERMINAL/RCVMODE");
}

TEST_F(SettingsTest, ReadsAndWritesTwoOptionsUnderDifferentKeys) {
  terminal_.options.show_response_times = true;
  terminal_.options.line_breaks = true;
  Save();
  EXPECT_EQ(store_.values["TERMINAL/SHOWRESPONSETIME"], "-1");
  EXPECT_EQ(store_.values["TERMINAL/LINEBREAKS"], "-1");
  Load();
  EXPECT_FALSE(terminal_.options.show_response_times);
  EXPECT_FALSE(terminal_.options.line_breaks);
}

TEST_F(SettingsTest, NeverWritesThreeKeysOfTheConnection) {
  Save();
  for (const char* key : {"PORT/RCVBUF", "PORT/DATABITS", "PORT/STOPBITS"})
    EXPECT_EQ(store_.values.count(key), 0u) << key;
  EXPECT_EQ(store_.writes.size(), 31u);
}

TEST_F(SettingsTest, KeepsHighIpPortsAsTyped) {
  store_.values["PORT/IPPORT"] = "65535";
  Load();
  EXPECT_EQ(connection_.ip_port, -1);
  Save();
  EXPECT_EQ(store_.values["PORT/IPPORT"], "65535");
  store_.values["PORT/IPPORT"] = "65536";
  EXPECT_EQ(LoadError(),
            "Die gespeicherte Einstellung [PORT] IPPORT=65536 kann nicht gelesen werden: Überlauf");
}

TEST_F(SettingsTest, NamesSectionKeyAndValueOfAnUnreadableSetting) {
  store_.values["TERMINAL/FONTSIZE"] = "groß";
  EXPECT_EQ(
      LoadError(),
      "Die gespeicherte Einstellung [TERMINAL] FONTSIZE=groß kann nicht gelesen werden: Typen unverträglich");
  EXPECT_TRUE(store_.writes.empty());
}

TEST_F(SettingsTest, NamesTheFileOfAnUnreadableSetting) {
  store_.file = "/etc/a.ini";
  store_.values["PORT/PORT"] = "10";
  EXPECT_EQ(LoadError(),
            "Die gespeicherte Einstellung [PORT] PORT=10 kann nicht gelesen werden: "
            "Index außerhalb des gültigen Bereichs (Datei „/etc/a.ini“)");
}

TEST_F(SettingsTest, KeepsTheValuesOfAHostsConnection) {
  store_.values = {{"PORT/PORT", "x"}, {"PORT/ADDRESS", "y"}, {"PORT/BAUD", "2"}, {"PORT/RSTIMO", "9"}};
  const auto before = store_.values;
  connection_.ip_address = "10.0.0.9";
  connection_.parity = 2;
  HostParts parts;
  EXPECT_FALSE(SaveSettings(store_, Target(), &parts));
  for (const auto& [key, value] : before) EXPECT_EQ(store_.values[key], value) << key;
  EXPECT_EQ(store_.values["PORT/PARITY"], "1") << "the default if nothing is stored";
  EXPECT_EQ(store_.values["PORT/IPADDRESS"], "");
  EXPECT_EQ(store_.values.size(), 31u);
  parts = {
      .kind = true, .baud = true, .parity = true, .address = true, .ip_address = true, .usb_address = true};
  EXPECT_FALSE(SaveSettings(store_, Target(), &parts));
  EXPECT_EQ(store_.values["PORT/PORT"], "4");
  EXPECT_EQ(store_.values["PORT/ADDRESS"], "4");
  EXPECT_EQ(store_.values["PORT/BAUD"], "0");
  EXPECT_EQ(store_.values["PORT/PARITY"], "2");
  EXPECT_EQ(store_.values["PORT/IPADDRESS"], "10.0.0.9");
  EXPECT_EQ(store_.values["PORT/RSTIMO"], "9");
}

TEST_F(SettingsTest, RefusesListIndexesPastTheList) {
  store_.values["TERMINAL/RCVMODE"] = "2";
  store_.values["TERMINAL/RCVFORMAT"] = "1";
  Load();
  store_.values["TERMINAL/RCVMODE"] = "3";
  EXPECT_NE(LoadError(), "");
  store_.values["TERMINAL/RCVMODE"] = "-1";
  EXPECT_NE(LoadError(), "");
}

TEST_F(SettingsTest, RefusesATimeoutThatIsNotANumberAndNeverWritesOne) {
  store_.values["TERMINAL/RCVTIMO"] = "abc";
  EXPECT_NE(LoadError(), "");
  terminal_.shown.timeout = "abc";
  Save();
  EXPECT_EQ(store_.values["TERMINAL/RCVTIMO"], "3000");
  terminal_.shown.timeout = "500";
  Save();
  EXPECT_EQ(store_.values["TERMINAL/RCVTIMO"], "500");
}

TEST_F(SettingsTest, RoundTripsTheRest) {
  connection_.ip_address = "messplatz-3, Halle 2";
  terminal_.receive.receive_terminator = ";";
  window_.command_list.font_color = 255;
  terminal_.options.show_commands = false;
  Save();
  connection_ = {};
  terminal_ = {};
  window_ = {};
  Load();
  EXPECT_EQ(connection_.ip_address, "messplatz-3, Halle 2");
  EXPECT_EQ(terminal_.receive.receive_terminator, ";");
  EXPECT_EQ(window_.command_list.font_color, 255);
  EXPECT_FALSE(terminal_.options.show_commands);
}

}  // namespace
}  // namespace kolvane::component
