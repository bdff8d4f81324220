#pragma once

#include <optional>
#include <string>

#include "component/host_parameters.h"
#include "component/ini_store.h"
#include "device/connection_parameters.h"
#include "terminal/extras.h"
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

/// Kolvane/Extras.ini in the user's configuration folder; empty where there is none.
std::string UserExtrasFile();

/// The additions of the user's windows, docs/formats/extras.md. Several windows may have the file open: each
/// saves what was changed in it and leaves the rest.
class ExtrasFile {
 public:
  /// `path`: the file; empty where nothing is kept.
  explicit ExtrasFile(const std::string& path) : file_(path) {}

  /// What the file says; a value that is neither 0 nor 1 counts as none.
  terminal::Extras Load() const;

  /// Saves what differs from what was loaded; touches nothing where nothing does.
  [[nodiscard]] std::optional<SaveFailure> Save(const terminal::Extras& extras);

 private:
  StateFile file_;
};

}  // namespace kolvane::component
