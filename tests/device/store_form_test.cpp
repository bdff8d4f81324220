#include <gtest/gtest.h>

#include "base/fake_prompt.h"
#include "base/temp_folder.h"
#include "device/connection_form.h"
#include "device/connection_texts.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

class StoreFormTest : public testing::Test {
 protected:
  bool Store(std::int16_t option) {
    form_.ClickPort(option, p_);
    return StoreForm(form_, p_);
  }

  ConnectionParameters p_;
  ConnectionForm form_ = LoadForm(p_, "/nowhere");
};

TEST_F(StoreFormTest, StoresTheCodeOfEachOption) {
  const std::int16_t codes[] = {1, 2, 10, 20, 90, 91, 488, -1, 100, 200};
  for (std::int16_t option = 0; option < 10; ++option) {
    EXPECT_TRUE(Store(option));
    EXPECT_EQ(p_.port_option, option);
    EXPECT_EQ(p_.port_code, codes[option]);
  }
}

TEST_F(StoreFormTest, ReadsTheRs232Page) {
  for (const std::int16_t option : std::initializer_list<std::int16_t>{0, 1, 2, 3, 7, 9}) {
    p_ = {};
    form_.serial = {.baud = 1,
                    .parity = 2,
                    .data_bits = 0,
                    .stop_bits = 1,
                    .timeout = "2,5",
                    .receive_buffer = "100",
                    .rs485_address = "9",
                    .dial_timeout = "5",
                    .modem_script = "ATZ"};
    EXPECT_TRUE(Store(option));
    EXPECT_EQ(p_.baud, 19200);
    EXPECT_EQ(p_.baud_index, 1);
    EXPECT_EQ(p_.parity, 2);
    EXPECT_EQ(p_.data_bits, 7);
    EXPECT_EQ(p_.stop_bits, 2);
    EXPECT_EQ(p_.timeout_ms, 2500);
    EXPECT_EQ(p_.receive_buffer, 512);
    EXPECT_EQ(p_.dial_timeout_s, 60);
    EXPECT_EQ(p_.modem_script, "ATZ");
    EXPECT_EQ(p_.address, option == 2 || option == 3 ? 9 : 4);
  }
}

TEST_F(StoreFormTest, OtherKindsKeepTheRs232Values) {
  form_.serial.baud = 2;
  form_.serial.parity = 2;
  for (const std::int16_t option : std::initializer_list<std::int16_t>{4, 5, 6, 8})
    EXPECT_TRUE(Store(option));
  EXPECT_EQ(p_.baud_index, 0);
  EXPECT_EQ(p_.parity, 1);
  EXPECT_EQ(p_.data_bits, 1);
}

TEST_F(StoreFormTest, ReadsTheGpibPageAndShowsItAgain) {
  form_.ClickPort(6, p_);
  form_.gpib = {"12", "250 msec", "&H0A", true, false, true, true};
  EXPECT_TRUE(StoreForm(form_, p_));
  EXPECT_EQ(p_.address, 12);
  EXPECT_EQ(p_.timeout_ms, 250);
  EXPECT_EQ(p_.gpib.eos_char, 10);
  EXPECT_EQ(p_.gpib.send_eoi_on_write, 1);
  EXPECT_EQ(p_.gpib.send_eoi_with_eos, 0);
  EXPECT_EQ(p_.gpib.stop_read_on_eos, 1);
  EXPECT_EQ(p_.gpib.repeat_addressing, 1);
  EXPECT_EQ(p_.timeout_entries.gpib_index, -1);
  const GpibFields shown = LoadForm(p_, "/nowhere").gpib;
  EXPECT_EQ(shown.address, "12");
  EXPECT_EQ(shown.timeout, "250 msec");
  EXPECT_EQ(shown.eos_char, "10");
  EXPECT_TRUE(shown.send_eoi_on_write);
  EXPECT_FALSE(shown.send_eoi_with_eos);
  EXPECT_TRUE(shown.stop_read_on_eos);
  EXPECT_TRUE(shown.repeat_addressing);
}

TEST_F(StoreFormTest, TakesSecondsFromTheGpibListRegardlessOfUnit) {
  form_.ClickPort(6, p_);
  form_.gpib.timeout = "100 ms";
  EXPECT_TRUE(StoreForm(form_, p_));
  EXPECT_EQ(p_.timeout_ms, 100000);
  EXPECT_EQ(p_.timeout_entries.gpib_index, 0);
  form_.gpib.timeout = "3 s";
  EXPECT_TRUE(StoreForm(form_, p_));
  EXPECT_EQ(p_.timeout_ms, 3000);
}

TEST_F(StoreFormTest, ReadsTheParallelPage) {
  p_.lpt_mode = 2;
  EXPECT_TRUE(Store(4));
  EXPECT_EQ(p_.baud, 3);
  EXPECT_EQ(p_.timeout_ms, 10000);
  EXPECT_EQ(p_.timeout_entries.lpt_index, 1);
  form_.parallel = {4, "0,5 s"};
  EXPECT_TRUE(StoreForm(form_, p_));
  EXPECT_EQ(p_.baud, 95);
  EXPECT_EQ(p_.timeout_ms, 500);
  EXPECT_EQ(p_.timeout_entries.lpt_index, -1);
  EXPECT_EQ(p_.lpt_mode, 2);
}

TEST_F(StoreFormTest, ReadsTheTcpIpPageAndRemembersTheAddress) {
  form_.tcpip = {"10.0.0.5", "65535", "1.5"};
  EXPECT_TRUE(Store(8));
  EXPECT_TRUE(Store(8));
  EXPECT_EQ(p_.ip_address, "10.0.0.5");
  EXPECT_EQ(static_cast<std::uint16_t>(p_.ip_port), 65535);
  EXPECT_EQ(p_.timeout_ms, 1500);
  EXPECT_EQ(form_.ip_history, AddressHistory{"10.0.0.5"});
  EXPECT_TRUE(form_.usb_history.empty());
}

TEST_F(StoreFormTest, ReadsTheUsbAddressAndTakesTheTimeoutOfTheRs232Page) {
  form_.usb = {"SN 7", "9"};
  form_.serial.timeout = "2";
  EXPECT_TRUE(Store(9));
  EXPECT_EQ(p_.usb_address, "SN 7");
  EXPECT_EQ(p_.timeout_ms, 2000);
  EXPECT_EQ(p_.timeout_entries.usb_seconds, 9);
  EXPECT_EQ(form_.usb_history, AddressHistory{"SN 7"});
  EXPECT_TRUE(form_.ip_history.empty());
}

TEST_F(StoreFormTest, KeepsTheEntriesOfAllTimeouts) {
  form_.serial.timeout = "7 Sekunden";
  form_.tcpip.timeout = "bald";
  form_.usb.timeout = "2.6";
  form_.gpib.timeout = "300 s";
  form_.parallel.timeout = "3 s";
  EXPECT_TRUE(Store(0));
  EXPECT_EQ(p_.timeout_entries.rs232_seconds, 7);
  EXPECT_EQ(p_.timeout_entries.tcpip_seconds, 0);
  EXPECT_EQ(p_.timeout_entries.usb_seconds, 3);
  EXPECT_EQ(p_.timeout_entries.gpib_index, 7);
  EXPECT_EQ(p_.timeout_entries.lpt_index, 0);
}

TEST_F(StoreFormTest, ANegativeTimeoutIsZeroOnTheRs232PageOnly) {
  form_.serial.timeout = "-1";
  form_.tcpip.timeout = "-1";
  EXPECT_TRUE(Store(0));
  EXPECT_EQ(p_.timeout_ms, 0);
  EXPECT_TRUE(Store(8));
  EXPECT_EQ(p_.timeout_ms, -1000);
}

TEST_F(StoreFormTest, ReadsTheExtendedPageAndShowsItAgain) {
  form_.extended = {.xon_limit = "100",
                    .xoff_limit = "99999",
                    .xon_char = "256",
                    .xoff_char = "x",
                    .dtr_control = 2,
                    .rts_control = 3,
                    .checks = {true, false, false, false, true, true, false, true, true}};
  EXPECT_TRUE(Store(0));
  const ExtendedRs232& record = p_.extended_rs232;
  EXPECT_EQ(record.xon_limit, 100);
  EXPECT_EQ(record.xoff_limit, 32767);
  EXPECT_EQ(record.xon_char, 255);
  EXPECT_EQ(record.xoff_char, 0);
  EXPECT_EQ(record.dtr_control, 2);
  EXPECT_EQ(record.rts_control, 3);
  EXPECT_EQ(record.cts_output_flow, 1);
  EXPECT_EQ(record.dsr_output_flow, 0);
  EXPECT_EQ(record.dsr_sensitivity, 1);
  EXPECT_EQ(record.abort_on_error, 1);
  EXPECT_EQ(record.transmission_xon_xoff, 0);
  EXPECT_EQ(record.reception_xon_xoff, 1);
  EXPECT_EQ(record.continue_after_xoff, 1);
  const ExtendedFields shown = LoadForm(p_, "/nowhere").extended;
  EXPECT_EQ(shown.xon_limit, "100");
  EXPECT_EQ(shown.xoff_limit, "32767");
  EXPECT_EQ(shown.xon_char, "255");
  EXPECT_EQ(shown.xoff_char, "0");
  EXPECT_EQ(shown.dtr_control, 2);
  EXPECT_EQ(shown.rts_control, 3);
  EXPECT_EQ(shown.checks, form_.extended.checks);
}

TEST_F(StoreFormTest, AcceptsAddressesFrom0To31) {
  for (const char* address : {"0", "31", "", "-0,4", "31,4"}) {
    form_.serial.rs485_address = address;
    EXPECT_TRUE(Store(2)) << address;
  }
  for (const char* address : {"-1", "32", "40", "31,6", "99999999999"}) {
    form_.serial.rs485_address = address;
    EXPECT_FALSE(Store(2)) << address;
  }
}

TEST_F(StoreFormTest, AnInvalidAddressChangesOnlyTheKind) {
  form_.serial.rs485_address = "40";
  form_.serial.baud = 2;
  form_.serial.modem_script = "ATZ";
  EXPECT_FALSE(Store(3));
  EXPECT_EQ(p_.port_code, port_code::kCom2Rs485);
  EXPECT_EQ(p_.port_option, 3);
  EXPECT_EQ(p_.address, 4);
  EXPECT_EQ(p_.baud_index, 0);
  EXPECT_EQ(p_.timeout_ms, 0);
  EXPECT_EQ(p_.modem_script, "");
}

TEST_F(StoreFormTest, TheNextConnectionKeepsTheRateOfAnInvalidAddress) {
  form_.serial.rs485_address = "40";
  for (const std::int32_t index : {-1, 0, 3, 100000}) {
    p_ = {};
    p_.baud_index = index;
    EXPECT_TRUE(Store(4));
    EXPECT_FALSE(Store(2));
    TakeConfiguredRate(p_);
    EXPECT_EQ(p_.baud, 1) << "the mode of the parallel port";
  }
}

TEST_F(StoreFormTest, AStoredAddressOutOfRangeIsRefusedIfItWouldBeSelected) {
  p_.address = 32;
  form_.serial.baud = 2;
  for (const std::int16_t option : std::initializer_list<std::int16_t>{0, 1, 4, 5}) {
    EXPECT_FALSE(Store(option)) << option;
    EXPECT_EQ(p_.port_option, option);
  }
  EXPECT_EQ(p_.baud_index, 0);
}

TEST_F(StoreFormTest, AStoredAddressOutOfRangeDoesNotMatterToKindsWithoutOne) {
  p_.address = 32;
  form_.tcpip = {"host", "5025", "2"};
  EXPECT_TRUE(Store(8));
  EXPECT_EQ(p_.ip_address, "host");
  EXPECT_EQ(p_.timeout_ms, 2000);
  form_.usb.address = "SN 7";
  EXPECT_TRUE(Store(9));
  EXPECT_EQ(p_.usb_address, "SN 7");
  EXPECT_TRUE(Store(7));
  EXPECT_EQ(p_.address, 32);
}

TEST_F(StoreFormTest, ShowsATimeoutAgainAsItWasTyped) {
  form_.serial.timeout = "0,5";
  form_.tcpip.timeout = "0.25";
  form_.usb.timeout = "1,5 s";
  EXPECT_TRUE(Store(0));
  EXPECT_EQ(p_.timeout_ms, 500);
  form_ = LoadForm(p_, "/nowhere");
  EXPECT_EQ(form_.serial.timeout, "0,5");
  EXPECT_EQ(form_.tcpip.timeout, "0.25");
  EXPECT_EQ(form_.usb.timeout, "1,5 s");
  EXPECT_TRUE(Store(8));
  EXPECT_EQ(p_.timeout_ms, 250);
  form_ = LoadForm(p_, "/nowhere");
  EXPECT_EQ(form_.serial.timeout, "0,5");
  EXPECT_EQ(form_.tcpip.timeout, "0.25");
  form_.gpib.timeout = "250 msec";
  form_.parallel.timeout = "2,5";
  EXPECT_TRUE(StoreForm(form_, p_));
  form_ = LoadForm(p_, "/nowhere");
  EXPECT_EQ(form_.gpib.timeout, "250 msec");
  EXPECT_EQ(form_.parallel.timeout, "2,5");
}

TEST_F(StoreFormTest, ShowsTheStoredSecondsOfATypedText) {
  form_.serial.timeout = "x";
  form_.tcpip.timeout = " 007 s";
  form_.usb.timeout = "-3,0";
  EXPECT_TRUE(Store(7));
  form_ = LoadForm(p_, "/nowhere");
  EXPECT_EQ(form_.serial.timeout, "0");
  EXPECT_EQ(form_.tcpip.timeout, "7");
  EXPECT_EQ(form_.usb.timeout, "-3");
}

TEST_F(StoreFormTest, TheTimeoutInUseIsNotThatOfAnInvalidAddress) {
  form_.parallel.timeout = "30 s";
  EXPECT_TRUE(StoreForm(form_, p_));
  form_.serial.timeout = "2";
  form_.serial.rs485_address = "40";
  EXPECT_FALSE(Store(2));
  EXPECT_EQ(p_.timeout_ms, 30000);
  EXPECT_EQ(LoadForm(p_, "/nowhere").serial.timeout, "5");
}

TEST_F(StoreFormTest, ShowsTheTimeoutThatOpeningSetInsteadOfZero) {
  for (const std::int16_t option : std::initializer_list<std::int16_t>{0, 9, 8, 6, 4}) {
    form_.ClickPort(option, p_);
    form_.serial.timeout = form_.tcpip.timeout = form_.gpib.timeout = form_.parallel.timeout = "0";
    EXPECT_TRUE(StoreForm(form_, p_));
    EXPECT_EQ(p_.timeout_ms, 0);
    p_.timeout_ms = 5000;
    const ConnectionForm shown = LoadForm(p_, "/nowhere");
    const ParameterPage page = PageOfCode(p_.port_code);
    EXPECT_EQ(shown.serial.timeout, page == ParameterPage::kRs232 ? "5" : "0") << option;
    EXPECT_EQ(shown.tcpip.timeout, page == ParameterPage::kTcpIp ? "5" : "0") << option;
    EXPECT_EQ(shown.gpib.timeout, page == ParameterPage::kGpib ? "5000 msec" : "0") << option;
    EXPECT_EQ(shown.parallel.timeout, page == ParameterPage::kParallel ? "5 s" : "0") << option;
  }
}

class ConfirmTest : public StoreFormTest {
 protected:
  ConfirmTest() { setenv("XDG_DATA_HOME", folder_.path().c_str(), 1); }
  ~ConfirmTest() override { unsetenv("XDG_DATA_HOME"); }
  void ConfirmStored() { ConfirmStoredConnection(p_, folder_.path(), prompt_); }

  base::TempFolder folder_;
  base::FakePrompt prompt_;
};

TEST_F(ConfirmTest, WritesTheThreeFiles) {
  form_.ClickPort(8, p_);
  form_.tcpip.address = "host";
  form_.serial.modem_script = "ATZ\r\nATDT";
  form_.usb_history = {"SN 7"};
  ConfirmForm(form_, p_, folder_.path(), prompt_);
  EXPECT_EQ(folder_.Read("IPADDR.INI"), "host\r\n");
  EXPECT_EQ(folder_.Read("USBADDR.INI"), "SN 7\r\n");
  EXPECT_EQ(folder_.Read("MODEM.INI"), "ATZ\r\nATDT\r\n");
  EXPECT_TRUE(prompt_.errors.empty());
}

TEST_F(ConfirmTest, AnInvalidAddressIsReportedAndTheFilesAreStillWritten) {
  form_.ClickPort(2, p_);
  form_.serial.rs485_address = "40";
  ConfirmForm(form_, p_, folder_.path(), prompt_);
  EXPECT_EQ(prompt_.errors, std::vector<std::string>{"Ungültige Adresse"});
  EXPECT_EQ(folder_.Read("MODEM.INI"), "\r\n");
}

TEST_F(ConfirmTest, AtTheStartDerivesTheValuesForOpening) {
  p_.port_option = 0;
  p_.baud_index = 1;
  p_.data_bits = 1;
  p_.receive_buffer = 1;
  p_.timeout_entries.rs232_seconds = 2;
  ConfirmStored();
  EXPECT_EQ(p_.port_code, port_code::kCom1);
  EXPECT_EQ(p_.baud, 19200);
  EXPECT_EQ(p_.data_bits, 8);
  EXPECT_EQ(p_.stop_bits, 1);
  EXPECT_EQ(p_.receive_buffer, 4096);
  EXPECT_EQ(p_.dial_timeout_s, 60);
  EXPECT_EQ(p_.timeout_ms, 2000);
}

TEST_F(ConfirmTest, AtTheStartTheStoredLineValuesCountUnlessTheRs232PageIsRead) {
  const auto start = [this](std::int16_t option) {
    p_.port_option = option;
    p_.data_bits = 7;
    p_.stop_bits = 2;
    p_.receive_buffer = 2048;
    ConfirmStored();
  };
  for (const std::int16_t option : std::initializer_list<std::int16_t>{4, 5, 6, 8}) {
    start(option);
    EXPECT_EQ(p_.data_bits, 7) << option;
    EXPECT_EQ(p_.stop_bits, 2) << option;
    EXPECT_EQ(p_.receive_buffer, 2048) << option;
  }
  for (const std::int16_t option : std::initializer_list<std::int16_t>{0, 1, 2, 3, 7, 9}) {
    start(option);
    EXPECT_EQ(p_.data_bits, 8) << option;
    EXPECT_EQ(p_.stop_bits, 1) << option;
    EXPECT_EQ(p_.receive_buffer, 4096) << option;
  }
}

TEST_F(ConfirmTest, AfterTheStartTheDialogShowsUsualValuesForOthers) {
  p_.port_option = 8;
  p_.data_bits = p_.stop_bits = 1;
  p_.receive_buffer = 1;
  ConfirmStored();
  EXPECT_EQ(p_.receive_buffer, 1);
  const SerialFields shown = LoadForm(p_, folder_.path()).serial;
  EXPECT_EQ(shown.data_bits, 1);
  EXPECT_EQ(shown.stop_bits, 0);
  EXPECT_EQ(shown.receive_buffer, "4096");
  EXPECT_EQ(shown.dial_timeout, "60");
}

TEST_F(ConfirmTest, AtTheStartEarlierSessionsDoNotCount) {
  form_.serial.timeout = "0,5";
  form_.serial.dial_timeout = "90";
  form_.gpib.timeout = "250 msec";
  EXPECT_TRUE(Store(6));
  EXPECT_TRUE(Store(0));
  p_.timeout_entries.rs232_seconds = 7;
  ConfirmStored();
  EXPECT_EQ(p_.timeout_ms, 7000);
  EXPECT_EQ(p_.dial_timeout_s, 60);
  EXPECT_EQ(LoadForm(p_, folder_.path()).serial.timeout, "7");
  EXPECT_EQ(LoadForm(p_, folder_.path()).gpib.timeout, "1 s");
}

TEST_F(ConfirmTest, AtTheStartAnAddressOutOfRangeIsNotReportedIfTheKindHasNone) {
  p_.port_option = 8;
  p_.address = 40;
  p_.timeout_entries.tcpip_seconds = 3;
  ConfirmStored();
  EXPECT_TRUE(prompt_.errors.empty());
  EXPECT_EQ(p_.port_code, port_code::kTcpIp);
  EXPECT_EQ(p_.timeout_ms, 3000);
}

TEST_F(ConfirmTest, AtTheStartTheStoredListEntriesOverrideThePresets) {
  p_.port_option = 6;
  p_.timeout_entries.gpib_index = 3;
  ConfirmStored();
  EXPECT_EQ(p_.timeout_ms, 3000);
  p_.port_option = 4;
  p_.timeout_entries.lpt_index = 0;
  ConfirmStored();
  EXPECT_EQ(p_.timeout_ms, 3000);
  EXPECT_EQ(p_.timeout_entries.gpib_index, 3);
}

TEST_F(ConfirmTest, AtTheStartReadsAndRewritesTheFiles) {
  folder_.Write("IPADDR.INI", "0\n1\n10.0.0.5");
  folder_.Write("MODEM.INI", "ATZ\n\nATDT");
  p_.port_option = 8;
  p_.ip_address = "10.0.0.6";
  ConfirmStored();
  EXPECT_EQ(folder_.Read("IPADDR.INI"), "10.0.0.5\r\n10.0.0.6\r\n");
  EXPECT_EQ(folder_.Read("USBADDR.INI"), "");
  EXPECT_EQ(folder_.Read("MODEM.INI"), "ATZ\r\nATDT\r\n");
  EXPECT_EQ(p_.modem_script, "ATZ\r\nATDT");
}

TEST_F(ConfirmTest, AtTheStartAnInvalidOptionKeepsTheKind) {
  p_.port_option = 77;
  ConfirmStored();
  EXPECT_EQ(p_.port_option, 77);
  EXPECT_EQ(p_.port_code, port_code::kLpt1);
  EXPECT_TRUE(prompt_.errors.empty());
}

TEST_F(ConfirmTest, AtTheStartAnInvalidAddressIsReported) {
  p_.port_option = 6;
  p_.address = 32;
  ConfirmStored();
  EXPECT_EQ(prompt_.errors, std::vector<std::string>{"Ungültige Adresse"});
  EXPECT_EQ(p_.port_code, port_code::kGpib);
}

}  // namespace
}  // namespace kolvane::device
