#pragma once

#include <memory>
#include <optional>
#include <string>

#include "window/state_store.h"

namespace kolvane::component {

/// Why what was written did not come to last.
struct SaveFailure {
  std::string file;
  int error;  ///< errno
};

/// Texts by section and key. Texts are UTF-8.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  /// Where the texts are kept, for messages; empty for a store without a file.
  virtual std::string File() const { return {}; }
  virtual std::optional<std::string> Find(const std::string& section, const std::string& key) const = 0;
  std::string Read(const std::string& section, const std::string& key, const std::string& fallback) const {
    return Find(section, key).value_or(fallback);
  }
  virtual void Write(const std::string& section, const std::string& key, const std::string& value) = 0;
  /// Makes what was written since last, all of it or nothing.
  [[nodiscard]] virtual std::optional<SaveFailure> Flush() = 0;
};

/// The INI file `path`; the user's own (Kolvane/Kolvane.ini in the configuration folder) where it is empty.
/// Find gives what the file held when it was opened; what could not be read then is empty, and is never
/// written over. Flush replaces the file at once and keeps its other sections, keys and comments, also those
/// that have come since; of two stores that flush at the same time the later one's texts stand.
std::unique_ptr<SettingsStore> OpenIniStore(const std::string& path);

/// The state of the user's terminal windows: sizes, places, folders; docs/formats/state.md. Several windows
/// may have it open: each saves what was changed through it and leaves the rest.
class StateFile final : public window::StateStore {
 public:
  /// `path`: the file; empty where the user has no place for it, so that nothing is kept.
  explicit StateFile(const std::string& path);

  std::string Read(const std::string& section, const std::string& key) const override;
  void Write(const std::string& section, const std::string& key, const std::string& text) override;

  /// Makes what was written last; touches nothing where that says what the file said.
  [[nodiscard]] std::optional<SaveFailure> Save();

 private:
  std::unique_ptr<SettingsStore> store_;
  bool changed_ = false;
};

/// Kolvane/state.ini in the folder of the user's for states; empty where there is none.
std::string UserStateFile();

}  // namespace kolvane::component
