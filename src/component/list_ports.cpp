#include <unistd.h>

#include "component/folder.h"
#include "component/headless_messages.h"
#include "component/port_entry.h"
#include "device/lazy_port_library.h"

namespace kolvane {
namespace {

// A named library is the one that would open a USB instrument, so it says which there are.
std::vector<device::UsbInstrument> UsbOfNamedLibrary() {
  component::HeadlessMessages messages(STDERR_FILENO, false);
  device::LazyPortLibrary source(component::OwnFolder());
  device::PortLibrary* library = source.Library();
  if (library == nullptr) {
    messages.ShowError(source.Failure());
    return {};
  }
  device::DeviceState state;
  std::vector<device::UsbInstrument> found = device::FindUsb(*library, state);
  if (state.open_step_status < 0)
    messages.ShowError("the port library's search for USB instruments failed (" +
                       std::to_string(state.open_step_status) + ")");
  return found;
}

std::vector<device::AttachedPort> AttachedPorts() {
  std::vector<device::AttachedPort> ports = device::AttachedPorts();
  if (!device::IsPortLibraryNamed()) return ports;
  return device::WithUsbOf(UsbOfNamedLibrary(), std::move(ports));
}

}  // namespace

std::vector<Port> ListPorts() {
  std::vector<Port> ports;
  for (const device::AttachedPort& port : AttachedPorts()) ports.push_back(component::PortEntry(port));
  return ports;
}

}  // namespace kolvane
