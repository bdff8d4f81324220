#include "component/port_entry.h"

namespace kolvane {

std::vector<Port> ListPorts() {
  std::vector<Port> ports;
  for (const device::AttachedPort& port : device::AttachedPorts())
    ports.push_back(component::PortEntry(port));
  return ports;
}

}  // namespace kolvane
