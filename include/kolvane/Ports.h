#pragma once

#include <string>
#include <vector>

#include "kolvane/Export.h"

namespace kolvane {

/// A port of this computer. Texts are UTF-8.
struct Port {
  std::string Resource;     ///< for CommandRunOptions::Connect; empty if it cannot be connected to by name
  std::string Node;         ///< device node; empty if unknown
  std::string Description;  ///< English, one line
};

/// Lists serial ports, USB devices with a serial number, GPIB boards and parallel ports, in this order.
/// Nothing is sent to any device; takes at most two seconds. A GPIB resource has the word ADDRESS instead of
/// the bus address. If KOLVANE_PORT_LIBRARY names a port library, the USB devices are those that its scan
/// finds, however long that takes; a library that cannot be used is reported on standard error.
KOLVANE_EXPORT std::vector<Port> ListPorts();

}  // namespace kolvane
