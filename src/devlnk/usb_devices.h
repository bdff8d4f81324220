#pragma once

#include <string>
#include <vector>

#include "devlnk/deadline.h"

namespace kolvane::devlnk {

enum class UsbDriver { kTmc, kSerial };

/// A USB device that can be opened: an instrument, or an adapter with a serial line behind it.
struct UsbDevice {
  UsbDriver driver = UsbDriver::kTmc;
  std::string node;
  std::string serial;  ///< serial number; never empty
  std::string description;
};

/// What is attached, instruments first, each serial number once, in the order of the node names; read from
/// the system's own record, so that no device is spoken to. `root` stands in place of /sys. What is not found
/// by the deadline is left out.
std::vector<UsbDevice> ScanUsb(const std::string& root, Deadline& deadline);

/// The same over /sys, or over the folder that the variable KOLVANE_SYSFS names. Returns within two seconds
/// even where the system's record does not answer, then with nothing.
std::vector<UsbDevice> AttachedUsb(Waiting* waiting = nullptr);

}  // namespace kolvane::devlnk
