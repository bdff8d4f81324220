// A line whose driver switches the direction of a bus.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "devlnk/port_test.h"
#include "emulation/emulated_system.h"

namespace kolvane::emulation {
namespace {

class Rs485Line : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(IsEmulated());
    system_.AddUsb("1-1", {"A5", "FTDI", "UART"}, "tty", "ttyUSB0");
    system_.AttachLine("ttyUSB0", &bus_);
    setenv("KOLVANE_COM2", "/dev/ttyUSB0", 1);
    QDX_SetTimeout(20'000);
  }
  void TearDown() override { QDX_ClosePort(); }

  serial_rs485 bus_{};
  EmulatedSystem system_;
};

TEST_F(Rs485Line, TheDriverSwitchesTheDirectionWhileThePortIsOpen) {
  bus_.flags = SER_RS485_RTS_AFTER_SEND;
  ASSERT_EQ(QDX_OpenPort(20, 9600, "n", 8, 1, 512), 0);
  ASSERT_EQ(QDX_SelectDevice(5), 0);
  EXPECT_EQ(bus_.flags, static_cast<std::uint32_t>(SER_RS485_ENABLED | SER_RS485_RTS_ON_SEND));
  ASSERT_EQ(write(system_.LineOf("ttyUSB0"), "1.5\n", 4), 4);
  EXPECT_EQ(devlnk::Answer(), "1.5");
  QDX_ClosePort();
  EXPECT_EQ(bus_.flags, static_cast<std::uint32_t>(SER_RS485_RTS_AFTER_SEND)) << "as it was";
}

TEST_F(Rs485Line, ThePlainLineDoesNotChangeTheBus) {
  bus_.flags = SER_RS485_RTS_AFTER_SEND;
  ASSERT_EQ(QDX_OpenPort(2, 9600, "n", 8, 1, 512), 0);
  EXPECT_EQ(bus_.flags, static_cast<std::uint32_t>(SER_RS485_RTS_AFTER_SEND));
}

}  // namespace
}  // namespace kolvane::emulation
