#pragma once

#include "device/connection_parameters.h"
#include "device/device_state.h"

namespace kolvane::component {

/// Copies the connection data of the host's device into `parameters`: operating mode 0 property by property
/// through IO(), mode 1 through GetDeviceInfo; any other mode asks nothing. Throws what the host throws, and
/// RuntimeError for a missing object or a value that cannot be converted.
void ReadHostParameters(const device::DeviceState& state, device::ConnectionParameters& parameters);

}  // namespace kolvane::component
