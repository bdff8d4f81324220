#pragma once

#include <memory>
#include <optional>
#include <string>

#include "component/settings_store.h"
#include "window/state_store.h"

namespace kolvane::component {

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
