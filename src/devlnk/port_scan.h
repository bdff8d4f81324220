#pragma once

#include <string>
#include <vector>

#include "devlnk/deadline.h"

namespace kolvane::devlnk {

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
