#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "device/device_state.h"
#include "device/port_library.h"

namespace kolvane::device {

/// A USB device that can be opened by its serial number. Texts are UTF-8.
struct UsbInstrument {
  std::string serial_number;
  std::string description;
  bool operator==(const UsbInstrument&) const = default;
};

/// The attached USB devices found by the port library; those without a serial number are left out. The status
/// of the scan becomes the open-step status.
std::vector<UsbInstrument> FindUsb(PortLibrary& library, DeviceState& state);

/// FindUsb as lines for the user, "serial number - description" each.
std::vector<std::string> ScanUsb(PortLibrary& library, DeviceState& state);

/// A port of this computer that the user can choose.
struct AttachedPort {
  enum class Kind { kSerial, kUsb, kGpib, kParallel };
  Kind kind = Kind::kSerial;
  std::optional<std::int16_t> code;  ///< none if no configured name refers to it
  std::string node;                  ///< device node, may be empty for GPIB
  int board = 0;                     ///< GPIB
  std::string serial_number = {};    ///< USB
  std::string description = {};      ///< English
  bool operator==(const AttachedPort&) const = default;
};

/// All serial, USB, GPIB and parallel ports. Takes at most two seconds and sends nothing to any device.
std::vector<AttachedPort> AttachedPorts();

/// `ports` with its USB devices replaced by those that a port library has found. For a serial number in both,
/// the details of `ports` are kept.
std::vector<AttachedPort> WithUsbOf(const std::vector<UsbInstrument>& found, std::vector<AttachedPort> ports);

}  // namespace kolvane::device
