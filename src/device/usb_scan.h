#pragma once

#include <string>
#include <vector>

#include "device/device_state.h"
#include "device/port_library.h"

namespace kolvane::device {

/// The attached USB devices as the port library sees them, "serial number - description" each; those without
/// a serial number are left out. The status of the scan becomes the open-step status.
std::vector<std::string> ScanUsb(PortLibrary& library, DeviceState& state);

}  // namespace kolvane::device
