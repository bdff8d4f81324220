#pragma once

#include <string>
#include <vector>

#include "kolvane/Export.h"

namespace kolvane {

/// A port that this computer has. Texts are UTF-8.
struct Port {
  std::string Resource;     ///< for CommandRunOptions::Connect; empty where no name leads there
  std::string Node;         ///< device node; empty where none is known
  std::string Description;  ///< English, one line
};

/// Serial ports, USB devices with a serial number, GPIB boards and parallel ports, in this order. No device
/// is spoken to; it takes two seconds at most. A GPIB resource has the word ADDRESS in the place of the bus
/// address. Where KOLVANE_PORT_LIBRARY names a port library, the USB devices are those that its scan finds,
/// in its own time; one that cannot be asked is a line on standard error.
KOLVANE_EXPORT std::vector<Port> ListPorts();

}  // namespace kolvane
