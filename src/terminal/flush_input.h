#pragma once

#include "device/device.h"
#include "terminal/output.h"

namespace kolvane::terminal {

/// Discards what the device has sent and nobody has read, and says in the pane how much it was. Silent where
/// flushing does not apply (not connected, test mode).
void FlushInput(device::Device& device, Output& output);

}  // namespace kolvane::terminal
