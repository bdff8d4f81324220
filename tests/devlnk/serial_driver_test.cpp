// A pseudo terminal supports neither RS485 nor modem lines: their requests are answered here, all others by
// the system.

#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <optional>

#include "base/loopback.h"
#include "devlnk/serial_channel.h"

namespace {

// The settings of the line in the RS485 driver; none while there is no such driver.
std::optional<serial_rs485> driver;

// The modem lines that were raised.
int raised = 0;

// The errno with which the driver refuses all settings of a line; 0: it takes them.
int refusal = 0;

}  // namespace

extern "C" int ioctl(int fd, unsigned long request, ...) noexcept {
  va_list arguments;
  va_start(arguments, request);
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  if (driver && request == TIOCGRS485) return std::memcpy(argument, &*driver, sizeof *driver), 0;
  if (driver && request == TIOCSRS485) return std::memcpy(&*driver, argument, sizeof *driver), 0;
  if (request == TIOCMBIS) return raised = *static_cast<const int*>(argument), 0;
  if (refusal != 0 && request == TCSETS2) return errno = refusal, -1;
  return static_cast<int>(syscall(SYS_ioctl, fd, request, argument));
}

namespace kolvane::devlnk {
namespace {

TEST(Rs485Line, HasTheBusSettingsWhileItIsOpen) {
  const base::Pty pty;
  driver.emplace();
  driver->flags = SER_RS485_RTS_AFTER_SEND;
  driver->delay_rts_after_send = 4;
  {
    std::unique_ptr<SerialLine> line;
    ASSERT_EQ(SerialLine::Open(pty.node(), line), Status::kOk);
    EXPECT_EQ(driver->flags, std::uint32_t{SER_RS485_RTS_AFTER_SEND}) << "a line is a bus only on request";
    line->UseRs485();
    EXPECT_EQ(driver->flags, std::uint32_t{SER_RS485_ENABLED | SER_RS485_RTS_ON_SEND});
    EXPECT_EQ(driver->delay_rts_after_send, 4u);
  }
  EXPECT_EQ(driver->flags, std::uint32_t{SER_RS485_RTS_AFTER_SEND}) << "as before";
  driver.reset();
}

TEST(SerialLine, RaisesTheModemLinesUnlessItIsABus) {
  const base::Pty pty;
  const PortRequest request{.name = "COM1", .baud = 9600, .text = "", .node = pty.node()};
  Deadline deadline(0);
  raised = 0;
  EXPECT_EQ(OpenRs485(request, deadline).status, Status::kOk);
  EXPECT_EQ(raised, 0) << "RTS would switch the bus driver on";
  EXPECT_EQ(OpenSerial(request, deadline).status, Status::kOk);
  EXPECT_EQ(raised, TIOCM_DTR | TIOCM_RTS);
}

TEST(SerialLine, SettingsThatTheDriverRefusesAreInvalidArguments) {
  const base::Pty pty;
  std::unique_ptr<SerialLine> line;
  ASSERT_EQ(SerialLine::Open(pty.node(), line), Status::kOk);
  refusal = EINVAL;
  EXPECT_EQ(line->Apply({}), Status::kInvalidArgument);
  refusal = EIO;
  const Status failed = line->Apply({});
  refusal = 0;
  EXPECT_NE(failed, Status::kOk);
  EXPECT_NE(failed, Status::kInvalidArgument);
  EXPECT_EQ(line->Apply({}), Status::kOk);
}

}  // namespace
}  // namespace kolvane::devlnk
