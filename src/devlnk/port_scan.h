#pragma once

#include <string>
#include <vector>

#include "devlnk/deadline.h"

namespace kolvane::devlnk {

enum class UsbDriver { kTmc, kSerial };

/// A USB device that can be opened: an instrument, or an adapter with a serial line.
struct UsbDevice {
  UsbDriver driver = UsbDriver::kTmc;
  std::string node;
  std::string serial;  ///< serial number; never empty
  std::string description;
};

/// Attached devices, instruments first, each serial number once, ordered by node name. Read from the system's
/// records; nothing is sent to any device. `root` replaces /sys. Devices not found by the deadline are left
/// out.
std::vector<UsbDevice> ScanUsb(const std::string& root, Deadline& deadline);

/// ScanUsb on /sys, or on the folder named by the variable KOLVANE_SYSFS. Returns within two seconds even if
/// the system does not respond, then with nothing.
std::vector<UsbDevice> AttachedUsb(Waiting* waiting = nullptr);

/// A port of this computer.
struct FoundPort {
  enum class Kind { kSerial, kUsb, kGpib, kParallel };
  Kind kind = Kind::kSerial;
  std::string name;    ///< COM1, COM2, LPT1, LPT2 or GPIB if configured under that name; else empty
  std::string node;    ///< empty for a GPIB board missing from the system's records
  int board = 0;       ///< with kGpib
  std::string serial;  ///< serial number, with kUsb
  std::string description;
};

/// Serial lines with hardware, USB devices with a serial number, GPIB boards and parallel ports, from the
/// system's records; nothing is sent to any device. `root` replaces /sys. Ports not found by the deadline are
/// left out.
std::vector<FoundPort> ScanPorts(const std::string& root, Deadline& deadline);

/// ScanPorts on sysfs::Root(). Returns within two seconds even if the system does not respond, then with
/// nothing.
std::vector<FoundPort> AttachedPorts();

}  // namespace kolvane::devlnk
