#include "device/attached_ports.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "device/connection_parameters.h"
#include "devlnk/port_scan.h"

namespace kolvane::device {
namespace {

using Found = devlnk::FoundPort;
using Kind = AttachedPort::Kind;

Kind KindOf(Found::Kind kind) {
  switch (kind) {
    case Found::Kind::kUsb:
      return Kind::kUsb;
    case Found::Kind::kGpib:
      return Kind::kGpib;
    case Found::Kind::kParallel:
      return Kind::kParallel;
    case Found::Kind::kSerial:
      break;
  }
  return Kind::kSerial;
}

std::optional<std::int16_t> CodeOf(const Found& port) {
  constexpr std::pair<std::string_view, std::int16_t> kCodes[] = {{"COM1", port_code::kCom1},
                                                                  {"COM2", port_code::kCom2},
                                                                  {"LPT1", port_code::kLpt1},
                                                                  {"LPT2", port_code::kLpt2},
                                                                  {"GPIB", port_code::kGpib}};
  if (port.kind == Found::Kind::kUsb) return port_code::kUsb;
  for (const auto& [name, code] : kCodes) {
    if (name == port.name) return code;
  }
  return std::nullopt;
}

}  // namespace

std::vector<AttachedPort> AttachedPorts() {
  std::vector<AttachedPort> ports;
  for (const Found& port : devlnk::AttachedPorts())
    ports.push_back({KindOf(port.kind), CodeOf(port), port.node, port.board, port.serial, port.description});
  return ports;
}

std::vector<AttachedPort> WithUsbOf(const std::vector<UsbInstrument>& found,
                                    std::vector<AttachedPort> ports) {
  std::vector<AttachedPort> usb;
  for (const UsbInstrument& each : found) {
    const auto known = std::ranges::find_if(ports, [&](const AttachedPort& port) {
      return port.kind == Kind::kUsb && port.serial_number == each.serial_number;
    });
    usb.push_back(known == ports.end()
                      ? AttachedPort{Kind::kUsb, port_code::kUsb, {}, 0, each.serial_number, each.description}
                      : *known);
  }
  std::erase_if(ports, [](const AttachedPort& port) { return port.kind == Kind::kUsb; });
  const auto after_serial =
      std::ranges::find_if(ports, [](const AttachedPort& port) { return port.kind != Kind::kSerial; });
  ports.insert(after_serial, usb.begin(), usb.end());
  return ports;
}

}  // namespace kolvane::device
