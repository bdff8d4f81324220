#include "devlnk/port_kinds.h"

#include "devlnk/gpib_channel.h"
#include "devlnk/gpib_library.h"
#include "devlnk/parallel_port.h"
#include "devlnk/serial_channel.h"
#include "devlnk/tcp_channel.h"
#include "devlnk/usb_channel.h"

namespace kolvane::devlnk {
namespace {

Status Always() { return Status::kOk; }

constexpr PortKind kPortKinds[] = {
    {1, "COM1", OpenSerial, Always},           {2, "COM2", OpenSerial, Always},
    {10, "COM1", OpenRs485, Always},           {20, "COM2", OpenRs485, Always},
    {90, "LPT1", OpenParallel, Always},        {91, "LPT2", OpenParallel, Always},
    {100, "TCP/IP", OpenTcp, Always},          {200, "USB", OpenUsb, Always},
    {488, "GPIB", OpenGpib, GpibAvailability},
};

}  // namespace

const PortKind* FindPortKind(std::int16_t code) {
  for (const PortKind& kind : kPortKinds) {
    if (kind.code == code) return &kind;
  }
  return nullptr;
}

}  // namespace kolvane::devlnk
