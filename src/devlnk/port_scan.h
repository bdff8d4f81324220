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

/// A port that this computer has.
struct FoundPort {
  enum class Kind { kSerial, kUsb, kGpib, kParallel };
  Kind kind = Kind::kSerial;
  std::string name;    ///< COM1, COM2, LPT1, LPT2 or GPIB where it is what that name stands for; else empty
  std::string node;    ///< empty for a GPIB board that the system's record does not show
  int board = 0;       ///< with kGpib
  std::string serial;  ///< serial number, with kUsb
  std::string description;
};

/// Serial lines with hardware behind them, USB devices with a serial number, GPIB boards and parallel ports,
/// from the system's own record; no device is spoken to. `root` stands in place of /sys. What is not found by
/// the deadline is left out.
std::vector<FoundPort> ScanPorts(const std::string& root, Deadline& deadline);

/// The same over sysfs::Root(). Returns within two seconds even where the system's record does not answer,
/// then with nothing.
std::vector<FoundPort> AttachedPorts();

}  // namespace kolvane::devlnk
