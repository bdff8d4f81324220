#pragma once

#include "component/component_state.h"
#include "component/resource_name.h"
#include "kolvane/CommandRun.h"
#include "terminal/receive_controls.h"

namespace kolvane::component {

/// Fills the connection of `state`, and its terminal settings, from the stored ones. Throws RuntimeError for
/// one that cannot be read.
void LoadStoredConnection(const std::string& settings_file, const std::string& component_folder,
                          ComponentState& state);

/// The parameters of the connection that `options` give go over those that are there; what belongs to serial
/// lines leaves every other kind of port alone.
void ApplyConnectionOptions(const CommandRunOptions& options, device::ConnectionParameters& parameters);

/// The same for receiving and sending; `controls` work on `state`.
void ApplyTerminalOptions(const CommandRunOptions& options, terminal::ReceiveControls& controls,
                          terminal::TerminalState& state);

}  // namespace kolvane::component
