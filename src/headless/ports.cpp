#include "headless/ports.h"

#include <unistd.h>

#include <utility>
#include <variant>

#include "device/connection_parameters.h"
#include "device/loaded_port_library.h"
#include "device/resource_name.h"
#include "headless/messages.h"

namespace kolvane::headless {
namespace {

namespace port_code = device::port_code;

using device::AttachedPort;
using Kind = AttachedPort::Kind;

std::string SerialName(const AttachedPort& port) {
  if (port.code == port_code::kCom1) return "ASRL1::INSTR";
  if (port.code == port_code::kCom2) return "ASRL2::INSTR";
  return "ASRL" + port.node + "::INSTR";
}

std::string ParallelName(const AttachedPort& port) {
  if (!port.code) return {};
  return port.code == port_code::kLpt1 ? "LPT1" : "LPT2";
}

std::string NameOf(const AttachedPort& port) {
  switch (port.kind) {
    case Kind::kSerial:
      return SerialName(port);
    case Kind::kUsb:
      return "USB::" + port.serial_number + "::INSTR";
    case Kind::kGpib:
      return port.code ? "GPIB0::ADDRESS::INSTR" : "";
    case Kind::kParallel:
      return ParallelName(port);
  }
  return {};
}

// A node or a serial number may contain text that parses as a different name.
bool OpensPort(const std::string& name, const AttachedPort& port) {
  if (port.kind == Kind::kGpib || port.kind == Kind::kParallel) return true;
  const auto result = device::ParseResourceName(name);
  const auto* resource = std::get_if<device::Resource>(&result);
  return resource != nullptr && resource->serial_number == port.serial_number &&
         (port.code || resource->node == port.node);
}

std::string Advice(const AttachedPort& port) {
  if (port.kind == Kind::kParallel) return ", KOLVANE_LPT1=" + port.node + " makes it LPT1";
  if (port.kind == Kind::kGpib) return ", KOLVANE_GPIB=" + std::to_string(port.board) + " chooses it";
  return {};
}

std::string DescriptionOf(const AttachedPort& port) {
  if (port.kind == Kind::kGpib) return port.description + " " + std::to_string(port.board);
  return port.description;
}

// A named library is the one that would open a USB instrument, so its scan is used.
std::vector<device::UsbInstrument> UsbOfNamedLibrary(const std::string& library_folder) {
  Messages messages(STDERR_FILENO, false);
  device::LazyPortLibrary source(library_folder);
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

std::vector<AttachedPort> PortsOf(const std::string& library_folder) {
  std::vector<AttachedPort> ports = device::AttachedPorts();
  if (!device::IsPortLibraryNamed()) return ports;
  return device::WithUsbOf(UsbOfNamedLibrary(library_folder), std::move(ports));
}

}  // namespace

Port PortEntry(const AttachedPort& port) {
  const std::string name = NameOf(port);
  const bool usable = !name.empty() && OpensPort(name, port);
  return {usable ? name : "", port.node, DescriptionOf(port) + (usable ? "" : Advice(port))};
}

std::vector<Port> Ports(const std::string& library_folder) {
  std::vector<Port> ports;
  for (const AttachedPort& port : PortsOf(library_folder)) ports.push_back(PortEntry(port));
  return ports;
}

}  // namespace kolvane::headless
