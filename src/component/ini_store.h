#pragma once

#include <memory>
#include <optional>
#include <string>

#include "window/state_store.h"

namespace kolvane::component {

/// Why pending writes could not be saved.
struct SaveFailure {
  std::string file;
  int error;  ///< errno
};

/// Texts by section and key. Texts are UTF-8.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  /// The file of the store, for messages; empty for a store without a file.
  virtual std::string File() const { return {}; }
  virtual std::optional<std::string> Find(const std::string& section, const std::string& key) const = 0;
  std::string Read(const std::string& section, const std::string& key, const std::string& fallback) const {
    return Find(section, key).value_or(fallback);
  }
  virtual void Write(const std::string& section, const std::string& key, const std::string& value) = 0;
  /// Saves pending writes atomically.
  [[nodiscard]] virtual std::optional<SaveFailure> Flush() = 0;
};

/// Opens the INI file `path`; if empty, the user's own (Kolvane/Kolvane.ini in the configuration folder).
/// Find returns a text already written, else that of the file when it was opened; a file that could not be
/// read counts as empty and is never overwritten. Flush replaces the file and keeps its other sections, keys
/// and comments, also those added since; of two stores flushed at the same time the later one's texts win.
std::unique_ptr<SettingsStore> OpenIniStore(const std::string& path);

/// The state of the user's terminal windows: sizes, positions, folders; docs/formats/state.md. Several
/// windows may have it open: each saves only the changes made through it.
class StateFile final : public window::StateStore {
 public:
  /// `path`: the file; if empty, nothing is stored.
  explicit StateFile(const std::string& path);

  std::string Read(const std::string& section, const std::string& key) const override;
  void Write(const std::string& section, const std::string& key, const std::string& text) override;

  /// Saves the changes; does not touch the file if there are none.
  [[nodiscard]] std::optional<SaveFailure> Save();

 private:
  std::unique_ptr<SettingsStore> store_;
  bool changed_ = false;
};

/// Kolvane/state.ini in the user's state folder; empty if there is none.
std::string UserStateFile();

}  // namespace kolvane::component
