#pragma once

#include "device/connection_parameters.h"

namespace kolvane::device {

/// Derives from what the settings hold (option button, list indexes, seconds) what opening needs: port code,
/// rate, time-out in milliseconds. Fields that the settings do not decide get what most instruments use: 8
/// data bits, 1 stop bit, a receive buffer of 4096 bytes.
void ApplyStoredConnection(ConnectionParameters& parameters);

}  // namespace kolvane::device
