#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kolvane::device {

/// A port that this computer has, for the user to choose from.
struct AttachedPort {
  enum class Kind { kSerial, kUsb, kGpib, kParallel };
  Kind kind = Kind::kSerial;
  std::optional<std::int16_t> code;  ///< none where no configured name stands for it
  std::string node;                  ///< device node, may be empty for GPIB
  int board = 0;                     ///< GPIB
  std::string serial_number;         ///< USB
  std::string description;           ///< English
};

/// All of them: serial ports, USB, GPIB, parallel ports. Takes two seconds at most and speaks to no device.
std::vector<AttachedPort> AttachedPorts();

}  // namespace kolvane::device
