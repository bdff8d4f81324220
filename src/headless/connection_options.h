#pragma once

#include "device/connection_parameters.h"
#include "kolvane/CommandRun.h"
#include "terminal/receive_controls.h"

namespace kolvane::headless {

/// The parameters of the connection that `options` give go over those that are there; what belongs to serial
/// lines does not change any other kind of port.
void ApplyConnectionOptions(const CommandRunOptions& options, device::ConnectionParameters& parameters);

/// The same for receiving and sending; `controls` work on `state`.
void ApplyTerminalOptions(const CommandRunOptions& options, terminal::ReceiveControls& controls,
                          terminal::TerminalState& state);

}  // namespace kolvane::headless
