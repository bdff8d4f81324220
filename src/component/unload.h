#pragma once

#include "component/component_state.h"
#include "component/settings_store.h"
#include "terminal/log_sink.h"
#include "terminal/terminal_core.h"

namespace kolvane::component {

/// The steps that end a terminal, in their order: close the log, save the settings, give a host its device
/// back open (or close the terminal's own connection), release the host's object, allow unloading. Settings
/// that cannot be saved do not keep it from the steps behind.
[[nodiscard]] std::optional<SaveFailure> Unload(ComponentState& state, terminal::TerminalCore& core,
                                                terminal::LogSink& log, SettingsStore& store);

}  // namespace kolvane::component
