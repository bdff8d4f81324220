#pragma once

#include <optional>
#include <string>

#include "component/ini_store.h"
#include "terminal/extras.h"

namespace kolvane::component {

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
