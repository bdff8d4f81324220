#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "devlnk/fake_sysfs.h"
#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

constexpr std::size_t kField = 255;

std::string Padded(std::string text) {
  text.resize(kField, ' ');
  return text;
}

class Usb : public testing::Test {
 protected:
  void SetUp() override { setenv("KOLVANE_SYSFS", system_.root().c_str(), 1); }
  void TearDown() override { QDX_ClosePort(); }
  std::int32_t Open(const char* serial) { return QDX_OpenPort(200, 1, serial, 8, 1, 512); }

  FakeSysfs system_;
};

TEST_F(Usb, AScanFillsItsRecordsAndLeavesSpacesAfterThem) {
  system_.AddDevice("1-1",
                    {"idVendor=1", "serial=" + std::string(300, 'S'), "product=" + std::string(300, 'P')});
  system_.AddNode("tty", "ttyUSB0", "1-1", "ttyUSB0");
  system_.AddDevice("1-2", {"idVendor=1", "serial=B", "product=Bridge"});
  system_.AddNode("usbmisc", "usbtmc0", "1-2", "usbtmc0");
  std::string buffer(3 * 2 * kField + 10, '#');
  EXPECT_EQ(USB_ScanUsbDevice(3, buffer.data()), 0);
  EXPECT_EQ(buffer, Padded("B") + Padded("Bridge") + std::string(kField, 'S') + std::string(kField, 'P') +
                        std::string(2 * kField, ' ') + std::string(10, '#'));
  buffer.assign(2 * kField + 10, '#');
  EXPECT_EQ(USB_ScanUsbDevice(1, buffer.data()), 0);
  EXPECT_EQ(buffer, Padded("B") + Padded("Bridge") + std::string(10, '#'));
}

TEST_F(Usb, TextsBeyondAsciiAreOneBytePerCharacter) {
  system_.AddDevice("1-1", {"idVendor=1",
                            "serial=\xC3\x9C"
                            "7",
                            "product=Pr\xC3\xBC"
                            "fger\xC3\xA4t"});
  system_.AddNode("usbmisc", "usbtmc0", "1-1", "zero");
  std::string buffer(2 * kField, '#');
  EXPECT_EQ(USB_ScanUsbDevice(1, buffer.data()), 0);
  EXPECT_EQ(buffer, Padded("\xDC"
                           "7") +
                        Padded("Pr\xFC"
                               "fger\xE4t"));
  EXPECT_EQ(Open("\xDC"
                 "7"),
            Code(Status::kWrongNode))
      << "found, but /dev/zero is not an instrument";
}

TEST_F(Usb, ScanArgumentsHaveTheirLimits) {
  char byte = '#';
  EXPECT_EQ(USB_GetMaxUsbDevice(), 64);
  EXPECT_EQ(USB_ScanUsbDevice(0, nullptr), 0);
  EXPECT_EQ(USB_ScanUsbDevice(1, nullptr), Code(Status::kInvalidArgument));
  EXPECT_EQ(USB_ScanUsbDevice(-1, &byte), Code(Status::kInvalidArgument));
  EXPECT_EQ(byte, '#');
}

TEST_F(Usb, OpensNoMissingInstrument) {
  EXPECT_EQ(Open(""), Code(Status::kInvalidArgument));
  EXPECT_EQ(Open("A"), Code(Status::kNoSuchNode));
  system_.AddDevice("1-1", {"idVendor=1", "serial=A"});
  system_.AddNode("usbmisc", "usbtmc0", "1-1", "nowhere");
  EXPECT_EQ(Open("a"), Code(Status::kNoSuchNode)) << "case counts";
  EXPECT_EQ(Open("A"), Code(Status::kNoSuchNode));
}

TEST_F(Usb, RefusesNodesOfAnotherKind) {
  system_.AddDevice("1-1", {"idVendor=1", "serial=A"});
  system_.AddNode("usbmisc", "usbtmc0", "1-1", "zero");
  system_.AddDevice("1-2", {"idVendor=1", "serial=B"});
  system_.AddNode("tty", "ttyUSB0", "1-2", "zero");
  EXPECT_EQ(Open("A"), Code(Status::kWrongNode));
  EXPECT_EQ(Open("B"), Code(Status::kWrongNode));
}

}  // namespace
}  // namespace kolvane::devlnk
