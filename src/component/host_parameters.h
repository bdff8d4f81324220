#pragma once

#include "device/connection_parameters.h"
#include "device/device_state.h"

namespace kolvane::component {

/// What a host has said of its device's connection; the rest of the record is no business of its.
struct HostParts {
  bool kind = false;  ///< one that the terminal knows
  bool baud = false;  ///< one of the list of rates
  bool parity = false;
  bool address = false;
  bool ip_address = false;  ///< and the IP port
  bool usb_address = false;
};

/// Copies the connection data of the host's device into `parameters`: operating mode 0 property by property
/// through IO(), mode 1 through GetDeviceInfo; any other mode asks nothing. The host may change the device
/// index. Throws what the host throws, and RuntimeError for a missing object or a value that cannot be
/// converted; its text names the value and where it came from.
HostParts ReadHostParameters(device::DeviceState& state, device::ConnectionParameters& parameters);

}  // namespace kolvane::component
