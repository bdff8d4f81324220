#pragma once

#include <cstdint>

#include "component/component_state.h"
#include "component/ini_store.h"
#include "terminal/output.h"
#include "terminal/terminal_core.h"

namespace kolvane::component {

/// The last steps of a terminal, in order: close the log, save the settings, return a host's device open (or
/// close the terminal's own connection), release the host's object, allow unloading. A failure to save the
/// settings does not prevent the later steps.
[[nodiscard]] std::optional<SaveFailure> Unload(ComponentState& state, terminal::TerminalCore& core,
                                                terminal::Log& log, SettingsStore& store);

/// Implements MainClass::OpenTerminal, on `state`.
void RunTerminal(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx);

}  // namespace kolvane::component
