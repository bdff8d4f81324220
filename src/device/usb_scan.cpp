#include "device/usb_scan.h"

#include <algorithm>
#include <string_view>

#include "base/codepage.h"
#include "base/folding.h"

namespace kolvane::device {
namespace {

constexpr std::size_t kFieldSize = 255;
constexpr std::size_t kRecordSize = 2 * kFieldSize;
constexpr std::size_t kSpareBlanks = 10;
// Far more than one computer can have; a library that claims more shall not exhaust the memory.
constexpr std::int32_t kMostSlots = 4096;

// A field is filled with blanks; a library that ends it with NUL is understood, too.
std::string FieldText(std::string_view field) {
  field = field.substr(0, field.find('\0'));
  return base::FromWindows1252(base::TrimBlanks(field));
}

}  // namespace

std::vector<UsbInstrument> FindUsb(PortLibrary& library, DeviceState& state) {
  const std::int32_t slots = std::min(library.MaxUsbDevices(), kMostSlots);
  if (slots < 0) {
    state.open_step_status = slots;
    return {};
  }
  const auto count = static_cast<std::size_t>(slots);
  std::string buffer(count * kRecordSize + kSpareBlanks, ' ');
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

}  // namespace kolvane::device
