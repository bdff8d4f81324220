#include "devlnk/port_kinds.h"

#include "devlnk/serial_channel.h"
#include "devlnk/tcp_channel.h"

namespace kolvane::devlnk {
namespace {

constexpr PortKind kPortKinds[] = {
    {1, "COM1", OpenSerial},  {2, "COM2", OpenSerial}, {10, "COM1", OpenRs485},
    {20, "COM2", OpenRs485},  {90, "LPT1", nullptr},   {91, "LPT2", nullptr},
    {100, "TCP/IP", OpenTcp}, {200, "USB", nullptr},   {488, "GPIB", nullptr},
};

}  // namespace

const PortKind* FindPortKind(std::int16_t code) {
  for (const PortKind& kind : kPortKinds) {
    if (kind.code == code) return &kind;
  }
  return nullptr;
}

}  // namespace kolvane::devlnk
