#pragma once

#include "device/connection_parameters.h"
#include "kolvane/CommandRun.h"
#include "terminal/receive_controls.h"

namespace kolvane::headless {

/// Overwrites `parameters` with those set in `options`; the ones for serial lines are ignored for any other
/// port kind.
void ApplyConnectionOptions(const CommandRunOptions& options, device::ConnectionParameters& parameters);

/// Does the same for the options of receiving and sending; `controls` must work on `state`.
void ApplyTerminalOptions(const CommandRunOptions& options, terminal::ReceiveControls& controls,
                          terminal::TerminalState& state);

}  // namespace kolvane::headless
