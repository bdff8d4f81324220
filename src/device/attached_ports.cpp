#include "device/attached_ports.h"

#include <algorithm>
#include <string_view>

#include "base/encoding.h"
#include "base/text.h"
#include "device/connection_parameters.h"
#include "device/port_table.h"
#include "devlnk/port_scan.h"

namespace kolvane::device {
namespace {

constexpr std::size_t kFieldSize = 255;
constexpr std::size_t kRecordSize = 2 * kFieldSize;
constexpr std::size_t kSpareSpaces = 10;
// Far more than any computer has; limits the memory for a library that claims more.
constexpr std::int32_t kMaxSlots = 4096;

// A field is padded with spaces; one ended by NUL is accepted too.
std::string FieldText(std::string_view field) {
  field = field.substr(0, field.find('\0'));
  return base::FromWindows1252(base::TrimSpaces(field));
}

}  // namespace

std::vector<UsbInstrument> FindUsb(PortLibrary& library, DeviceState& state) {
  const std::int32_t slots = std::min(library.MaxUsbDevices(), kMaxSlots);
  if (slots < 0) {
    state.open_step_status = slots;
    return {};
  }
  const auto count = static_cast<std::size_t>(slots);
  std::string buffer(count * kRecordSize + kSpareSpaces, ' ');
  state.open_step_status = library.ScanUsbDevices(slots, buffer.data());
  std::vector<UsbInstrument> found;
  for (std::size_t slot = 0; slot < count; ++slot) {
    const auto record = std::string_view(buffer).substr(slot * kRecordSize, kRecordSize);
    const std::string serial = FieldText(record.substr(0, kFieldSize));
    if (!serial.empty()) found.push_back({serial, FieldText(record.substr(kFieldSize))});
  }
  return found;
}

std::vector<std::string> ScanUsb(PortLibrary& library, DeviceState& state) {
  std::vector<std::string> lines;
  for (const UsbInstrument& found : FindUsb(library, state))
    lines.push_back(found.serial_number + " - " + found.description);
  return lines;
}

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
  using namespace port_code;
  if (port.kind == Found::Kind::kUsb) return kUsb;
  for (const std::int16_t code : {kCom1, kCom2, kLpt1, kLpt2, kGpib}) {
    if (NodeName(code) == port.name) return code;
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
