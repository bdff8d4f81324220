#include "device/attached_ports.h"

#include <gtest/gtest.h>

#include "device/connection_parameters.h"

namespace kolvane::device {
namespace {

using Kind = AttachedPort::Kind;

AttachedPort Usb(const std::string& node, const std::string& serial_number, const std::string& description) {
  return {Kind::kUsb, port_code::kUsb, node, 0, serial_number, description};
}

TEST(AttachedPorts, TakeTheirUsbInstrumentsFromTheScanOfALibrary) {
  const AttachedPort line{Kind::kSerial, port_code::kCom1, "/dev/ttyUSB0", 0, "", "UART"};
  const AttachedPort printer{Kind::kParallel, port_code::kLpt1, "/dev/parport0", 0, "", "parallel port"};
  EXPECT_EQ(
      WithUsbOf({{"B2", "Bridge"}, {"A5", ""}},
                {line, Usb("/dev/ttyUSB0", "A5", "UART"), Usb("/dev/usbtmc0", "C3", "C"), printer}),
      (std::vector<AttachedPort>{line, Usb("", "B2", "Bridge"), Usb("/dev/ttyUSB0", "A5", "UART"), printer}));
  EXPECT_EQ(WithUsbOf({}, {Usb("/dev/usbtmc0", "C3", "C")}), std::vector<AttachedPort>{});
  EXPECT_EQ(WithUsbOf({{"B2", "Bridge"}}, {line}),
            (std::vector<AttachedPort>{line, Usb("", "B2", "Bridge")}));
}

}  // namespace
}  // namespace kolvane::device
