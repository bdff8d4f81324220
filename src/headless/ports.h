#pragma once

#include <string>
#include <vector>

#include "device/attached_ports.h"
#include "kolvane/Ports.h"

namespace kolvane::headless {

/// The port for the user: with its RESOURCE name or, if it has none, with a hint on how to get one.
Port PortEntry(const device::AttachedPort& port);

/// All ports to connect to. Failures of a named port library are reported on standard error.
std::vector<Port> Ports(const std::string& library_folder);

}  // namespace kolvane::headless
