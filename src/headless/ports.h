#pragma once

#include <string>
#include <vector>

#include "device/attached_ports.h"
#include "kolvane/Ports.h"

namespace kolvane::headless {

/// The port as the user chooses it: by its RESOURCE name, and with a word on how to get one where it has
/// none.
Port PortEntry(const device::AttachedPort& port);

/// What can be connected to. What a named port library fails with is reported on standard error.
std::vector<Port> Ports(const std::string& library_folder);

}  // namespace kolvane::headless
