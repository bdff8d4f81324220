#pragma once

#include "component/host_parameters.h"
#include "component/ini_store.h"
#include "device/connection_parameters.h"
#include "terminal/terminal_state.h"

namespace kolvane::component {

/// What the settings fill and keep.
struct SettingsTarget {
  device::ConnectionParameters& connection;
  terminal::TerminalState& terminal;
  terminal::WindowSettings& window;
};

/// Reads every key in the table's order; the connection's only with `with_connection`. Throws RuntimeError
/// with a German text that names file, section, key and value where a value cannot be converted; the store is
/// left as it is.
void LoadSettings(const SettingsStore& store, SettingsTarget target, bool with_connection);

/// Reads the connection and what belongs to it of the user's settings, or those of `settings_file`. Throws as
/// LoadSettings does.
void LoadStoredConnection(const std::string& settings_file, device::ConnectionParameters& connection,
                          terminal::TerminalState& terminal);

/// Writes every key that is to be written, whatever the operating mode, and makes it last. `host` says what
/// of the connection came from a host, null that it is the terminal's own: what a host said nothing of stays
/// as it is stored, and starts on its default where it is not.
[[nodiscard]] std::optional<SaveFailure> SaveSettings(SettingsStore& store, SettingsTarget target,
                                                      const HostParts* host = nullptr);

}  // namespace kolvane::component
