#pragma once

#include <cstdint>
#include <optional>
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

/// A port that this computer has, for the user to choose from.
struct AttachedPort {
  enum class Kind { kSerial, kUsb, kGpib, kParallel };
  Kind kind = Kind::kSerial;
  std::optional<std::int16_t> code;  ///< none where no configured name stands for it
  std::string node;                  ///< device node, may be empty for GPIB
  int board = 0;                     ///< GPIB
  std::string serial_number;         ///< USB
  std::string description;           ///< English
  bool operator==(const AttachedPort&) const = default;
};

/// All of them: serial ports, USB, GPIB, parallel ports. Takes two seconds at most and speaks to no device.
std::vector<AttachedPort> AttachedPorts();

/// `ports` with the USB devices that a port library has found in the place of their own. What `ports` know of
/// a serial number stays.
std::vector<AttachedPort> WithUsbOf(const std::vector<UsbInstrument>& found, std::vector<AttachedPort> ports);

}  // namespace kolvane::device
