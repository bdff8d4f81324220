#include "device/connection_form.h"

#include <gtest/gtest.h>

#include "base/temp_folder.h"

namespace kolvane::device {
namespace {

ConnectionForm Loaded(const ConnectionParameters& stored) { return LoadForm(stored, "/nowhere"); }

ConnectionForm LoadedForm(std::int16_t option, std::int16_t address = 4) {
  ConnectionParameters stored;
  stored.port_option = option;
  stored.address = address;
  return Loaded(stored);
}

TEST(LoadForm, ShowsTheStoredConnection) {
  ConnectionParameters stored;
  stored.port_option = 8;
  stored.ip_address = "10.0.0.5";
  stored.ip_port = static_cast<std::int16_t>(65535);
  stored.usb_address = "SN 7";
  stored.baud_index = 2;
  stored.parity = 2;
  stored.timeout_entries = {
      .rs232_seconds = 2, .tcpip_seconds = 3, .usb_seconds = 9, .gpib_index = 7, .lpt_index = 4};
  const ConnectionForm form = Loaded(stored);
  EXPECT_EQ(form.port, 8);
  EXPECT_EQ(form.pages.front, form_page::kTcpIp);
  EXPECT_EQ(form.tcpip.address, "10.0.0.5");
  EXPECT_EQ(form.tcpip.port, "65535");
  EXPECT_EQ(form.tcpip.timeout, "3");
  EXPECT_EQ(form.usb.address, "SN 7");
  EXPECT_EQ(form.usb.timeout, "9");
  EXPECT_EQ(form.serial.baud, 2);
  EXPECT_EQ(form.serial.parity, 2);
  EXPECT_EQ(form.serial.timeout, "2");
  EXPECT_EQ(form.gpib.timeout, "300 s");
  EXPECT_EQ(form.parallel.timeout, "300 s");
}

TEST(LoadForm, ReadsHistoriesAndScript) {
  const base::TempFolder folder;
  folder.Write("IPADDR.INI", "0\r\nhost\r\n");
  folder.Write("USBADDR.INI", "0\r\n");
  folder.Write("MODEM.INI", "ATZ\r\n\r\nATDT\r\n");
  const ConnectionForm form = LoadForm({}, folder.path());
  EXPECT_EQ(form.ip_history, AddressHistory{"host"});
  EXPECT_EQ(form.usb_history, AddressHistory{"0"});
  EXPECT_EQ(form.serial.modem_script, "ATZ\r\nATDT");
}

TEST(LoadForm, TakesTheNearestEntryForAnIndexOutsideItsList) {
  ConnectionParameters stored;
  stored.baud_index = 99;
  stored.parity = -3;
  stored.lpt_mode = 5;
  stored.extended_rs232.dtr_control = 9;
  stored.extended_rs232.rts_control = -1;
  const ConnectionForm form = Loaded(stored);
  EXPECT_EQ(form.serial.baud, 2);
  EXPECT_EQ(form.serial.parity, 0);
  EXPECT_EQ(form.parallel.mode, 4);
  EXPECT_EQ(form.extended.dtr_control, 2);
  EXPECT_EQ(form.extended.rts_control, 0);
}

TEST(LoadForm, StartsOnEightDataBitsAndOneStopBitIfTheStoredAreInvalid) {
  ConnectionParameters stored;
  stored.data_bits = 1;
  stored.stop_bits = 0;
  EXPECT_EQ(Loaded(stored).serial.data_bits, 1);
  EXPECT_EQ(Loaded(stored).serial.stop_bits, 0);
  stored.data_bits = 7;
  stored.stop_bits = 2;
  EXPECT_EQ(Loaded(stored).serial.data_bits, 0);
  EXPECT_EQ(Loaded(stored).serial.stop_bits, 1);
}

TEST(LoadForm, StartsTheExtendedPageOnUsualValues) {
  const ExtendedFields fields = Loaded({}).extended;
  EXPECT_EQ(fields.xon_char, "17");
  EXPECT_EQ(fields.xoff_char, "19");
  EXPECT_EQ(fields.xon_limit, "2048");
  EXPECT_EQ(fields.xoff_limit, "512");
  EXPECT_EQ(fields.dtr_control, 1);
  EXPECT_EQ(fields.rts_control, 1);
  EXPECT_EQ(fields.checks, (std::array<bool, 9>{}));
}

TEST(LoadForm, ShowsTheAddressOfTheKindThatHasOne) {
  EXPECT_EQ(LoadedForm(6, 16).gpib.address, "16");
  EXPECT_EQ(LoadedForm(6, 20).gpib.address, "20");
  EXPECT_EQ(LoadedForm(2, 31).serial.rs485_address, "31");
  EXPECT_EQ(LoadedForm(3, 40).serial.rs485_address, "40");
  EXPECT_EQ(LoadedForm(0, 16).gpib.address, "16");
  EXPECT_EQ(LoadedForm(0, 17).gpib.address, "1");
  EXPECT_EQ(LoadedForm(0, 0).gpib.address, "1");
  EXPECT_EQ(LoadedForm(0, 32).serial.rs485_address, "1");
}

TEST(LoadForm, SelectsNothingForAnInvalidOption) {
  EXPECT_EQ(LoadedForm(10).port, -1);
  EXPECT_EQ(LoadedForm(-1).port, -1);
}

TEST(LoadForm, ShowsATypedTimeoutAsItIsInForce) {
  ConnectionParameters stored;
  stored.timeout_entries.gpib_index = -1;
  stored.timeout_entries.lpt_index = -1;
  EXPECT_EQ(Loaded(stored).gpib.timeout, "1 s");
  EXPECT_EQ(Loaded(stored).parallel.timeout, "10 s");
  stored.timeout_ms = 250;
  stored.port_code = port_code::kGpib;
  EXPECT_EQ(Loaded(stored).gpib.timeout, "250 msec");
  EXPECT_EQ(Loaded(stored).parallel.timeout, "10 s");
  stored.port_code = port_code::kLpt2;
  EXPECT_EQ(Loaded(stored).parallel.timeout, "0,25 s");
  EXPECT_EQ(Loaded(stored).gpib.timeout, "1 s");
}

TEST(ClickPort, PresetsTheParallelPage) {
  ConnectionParameters stored;
  stored.lpt_mode = 3;
  ConnectionForm form = Loaded(stored);
  form.parallel = {0, "3 s"};
  form.ClickPort(5, stored);
  EXPECT_EQ(form.port, 5);
  EXPECT_EQ(form.parallel.mode, 3);
  EXPECT_EQ(form.parallel.timeout, "10 s");
}

TEST(ClickPort, PresetsTheGpibTimeout) {
  ConnectionForm form = Loaded({});
  EXPECT_EQ(form.gpib.timeout, "10 s");
  form.ClickPort(6, {});
  EXPECT_EQ(form.gpib.timeout, "1 s");
  form.ClickPort(10, {});
  EXPECT_EQ(form.port, 6);
}

TEST(ClickPort, ReportsWhichKindsHaveAnRs485Address) {
  ConnectionForm form;
  EXPECT_FALSE(form.UsesRs485Address());
  for (std::int16_t option = 0; option < 10; ++option) {
    form.ClickPort(option, {});
    EXPECT_EQ(form.UsesRs485Address(), option == 2 || option == 3) << option;
  }
}

TEST(CancelForm, MarksTheDialogAsCancelled) {
  DeviceState state;
  CancelForm(state);
  EXPECT_EQ(state.open_step_status, -1);
}

}  // namespace
}  // namespace kolvane::device
