#pragma once

#include <string>
#include <vector>

#include "device/device_state.h"
#include "device/port_library.h"

namespace kolvane::device {

/// A USB device that can be opened by its serial number. UTF-8.
struct UsbInstrument {
  std::string serial_number;
  std::string description;
  bool operator==(const UsbInstrument&) const = default;
};

/// The attached USB devices as the port library sees them; those without a serial number are left out. The
/// status of the scan becomes the open-step status.
std::vector<UsbInstrument> FindUsb(PortLibrary& library, DeviceState& state);

/// The same for the user, "serial number - description" each.
std::vector<std::string> ScanUsb(PortLibrary& library, DeviceState& state);

}  // namespace kolvane::device
