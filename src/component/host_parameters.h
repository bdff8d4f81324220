#pragma once

#include "device/connection_parameters.h"
#include "device/device_state.h"

namespace kolvane::component {

/// Which connection data a host has given; the others are not the host's.
struct HostParts {
  bool kind = false;  ///< a known port kind
  bool baud = false;  ///< a rate in the list
  bool parity = false;
  bool address = false;
  bool ip_address = false;  ///< and the IP port
  bool usb_address = false;
};

/// Copies the connection data of the host's device to `parameters`: in operating mode 0 property by property
/// through IO(), in mode 1 through GetDeviceInfo; in any other mode nothing. The host may change the device
/// index. Throws what the host throws, and RuntimeError for a missing object or a value that cannot be
/// converted; its text names the value and its source.
HostParts ReadHostParameters(device::DeviceState& state, device::ConnectionParameters& parameters);

}  // namespace kolvane::component
