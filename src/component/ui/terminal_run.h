#pragma once

#include <cstdint>

#include "component/component_state.h"
#include "component/ini_store.h"
#include "terminal/log.h"
#include "terminal/terminal_core.h"

namespace kolvane::component {

/// The steps that end a terminal, in their order: close the log, save the settings, give a host its device
/// back open (or close the terminal's own connection), release the host's object, allow unloading. Settings
/// that cannot be saved do not keep it from the steps after it.
[[nodiscard]] std::optional<SaveFailure> Unload(ComponentState& state, terminal::TerminalCore& core,
                                                terminal::Log& log, SettingsStore& store);

/// What MainClass::OpenTerminal promises, on `state`.
void RunTerminal(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx);

}  // namespace kolvane::component
