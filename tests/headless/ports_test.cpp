#include "headless/ports.h"

#include <gtest/gtest.h>

#include "device/connection_parameters.h"

namespace kolvane::headless {
namespace {

namespace port_code = device::port_code;

using device::AttachedPort;
using Kind = AttachedPort::Kind;

std::string Entry(const AttachedPort& port) {
  const Port entry = PortEntry(port);
  return entry.Resource + "|" + entry.Node + "|" + entry.Description;
}

TEST(PortEntry, NamesSerialPorts) {
  EXPECT_EQ(Entry({Kind::kSerial, port_code::kCom1, "/dev/ttyS0", 0, "", "serial port"}),
            "ASRL1::INSTR|/dev/ttyS0|serial port");
  EXPECT_EQ(Entry({Kind::kSerial, port_code::kCom2, "/dev/ttyS1", 0, "", "serial port"}),
            "ASRL2::INSTR|/dev/ttyS1|serial port");
  EXPECT_EQ(Entry({Kind::kSerial, {}, "/dev/ttyUSB0", 0, "", "UART"}),
            "ASRL/dev/ttyUSB0::INSTR|/dev/ttyUSB0|UART");
}

TEST(PortEntry, NamesUsbDevicesBySerialNumber) {
  EXPECT_EQ(Entry({Kind::kUsb, port_code::kUsb, "/dev/usbtmc0", 0, "MY 1", "Bridge"}),
            "USB::MY 1::INSTR|/dev/usbtmc0|Bridge");
}

TEST(PortEntry, NamesTheConfiguredBoard) {
  EXPECT_EQ(Entry({Kind::kGpib, port_code::kGpib, "/dev/gpib0", 0, "", "GPIB board"}),
            "GPIB0::ADDRESS::INSTR|/dev/gpib0|GPIB board 0");
  EXPECT_EQ(Entry({Kind::kGpib, {}, "/dev/gpib3", 3, "", "GPIB board"}),
            "|/dev/gpib3|GPIB board 3, KOLVANE_GPIB=3 chooses it");
}

TEST(PortEntry, NamesParallelPorts) {
  EXPECT_EQ(Entry({Kind::kParallel, port_code::kLpt1, "/dev/parport0", 0, "", "parallel port"}),
            "LPT1|/dev/parport0|parallel port");
  EXPECT_EQ(Entry({Kind::kParallel, port_code::kLpt2, "/dev/parport1", 0, "", "parallel port"}),
            "LPT2|/dev/parport1|parallel port");
  EXPECT_EQ(Entry({Kind::kParallel, {}, "/dev/parport2", 0, "", "parallel port"}),
            "|/dev/parport2|parallel port, KOLVANE_LPT1=/dev/parport2 makes it LPT1");
}

TEST(PortEntry, HasNoNameThatMeansAnotherPort) {
  EXPECT_EQ(Entry({Kind::kUsb, port_code::kUsb, "/dev/usbtmc0", 0, "A::B", "Bridge"}),
            "|/dev/usbtmc0|Bridge");
  EXPECT_EQ(Entry({Kind::kUsb, port_code::kUsb, "/dev/usbtmc0", 0, "0x1::0x2::B", "Bridge"}),
            "|/dev/usbtmc0|Bridge");
  EXPECT_EQ(Entry({Kind::kSerial, {}, "/dev/a::INSTR", 0, "", "line"}), "|/dev/a::INSTR|line");
}

}  // namespace
}  // namespace kolvane::headless
