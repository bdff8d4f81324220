#pragma once

#include "device/attached_ports.h"
#include "kolvane/Ports.h"

namespace kolvane::component {

/// The port as the user chooses it: by its RESOURCE name, and with a word on how to get one where it has
/// none.
Port PortEntry(const device::AttachedPort& port);

}  // namespace kolvane::component
