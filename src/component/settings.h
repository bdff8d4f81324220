#pragma once

#include <optional>
#include <string>

#include "component/host_parameters.h"
#include "component/ini_store.h"
#include "device/connection_parameters.h"
#include "terminal/extras.h"
#include "terminal/terminal_state.h"

namespace kolvane::component {

/// The data that the settings load and save.
struct SettingsTarget {
  device::ConnectionParameters& connection;
  terminal::TerminalState& terminal;
  terminal::WindowSettings& window;
};

/// Reads every key in the table's order; those of the connection only if `with_connection`. If a value cannot
/// be converted, throws RuntimeError with a German text that names file, section, key and value; the store is
/// not changed.
void LoadSettings(const SettingsStore& store, SettingsTarget target, bool with_connection);

/// Reads the connection and related settings from the user's settings or from `settings_file`. Throws as
/// LoadSettings does.
void LoadStoredConnection(const std::string& settings_file, device::ConnectionParameters& connection,
                          terminal::TerminalState& terminal);

/// Writes and saves every writable key in any operating mode. `host` says which connection data came from a
/// host, null that the connection is the terminal's own. Data that the host did not give keep their stored
/// value, or get their default if none is stored.
[[nodiscard]] std::optional<SaveFailure> SaveSettings(SettingsStore& store, SettingsTarget target,
                                                      const HostParts* host = nullptr);

/// Kolvane/Extras.ini in the user's configuration folder; empty if there is none.
std::string UserExtrasFile();

/// Additional settings of the user's windows, docs/formats/extras.md. Several windows may have the file open:
/// each saves only its own changes.
class ExtrasFile {
 public:
  /// `path`: the file; if empty, nothing is stored.
  explicit ExtrasFile(const std::string& path) : file_(path) {}

  /// Reads the file; any value other than 0 and 1 is ignored.
  terminal::Extras Load() const;

  /// Saves what has changed since loading; does not touch the file if nothing has.
  [[nodiscard]] std::optional<SaveFailure> Save(const terminal::Extras& extras);

 private:
  StateFile file_;
};

}  // namespace kolvane::component
