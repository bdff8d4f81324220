// A pseudo terminal does not support RS485: the driver's two requests are answered here, all others by the
// system.

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>
#include <cstring>
#include <optional>

#include "base/loopback.h"
#include "devlnk/serial_channel.h"

namespace {

// The settings of the line in the RS485 driver; none while there is no such driver.
std::optional<serial_rs485> driver;

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
