#pragma once

#include "component/settings_store.h"
#include "device/connection_parameters.h"
#include "terminal/terminal_state.h"
#include "terminal/window_settings.h"

namespace kolvane::component {

/// What the settings fill and keep.
struct SettingsTarget {
  device::ConnectionParameters& connection;
  terminal::TerminalState& terminal;
  terminal::WindowSettings& window;
};

/// Reads every key in the table's order; the connection's only with `with_connection`. Throws RuntimeError
/// with a German text that names section, key and value where a value cannot be converted; the store is left
/// as it is.
void LoadSettings(const SettingsStore& store, SettingsTarget target, bool with_connection);

/// Writes every key that is to be written, whatever the operating mode, and makes it last.
[[nodiscard]] std::optional<SaveFailure> SaveSettings(SettingsStore& store, SettingsTarget target);

}  // namespace kolvane::component
