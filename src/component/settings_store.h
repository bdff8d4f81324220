#pragma once

#include <memory>
#include <string>

namespace kolvane::component {

/// Texts by section and key. Texts are UTF-8.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  virtual std::string Read(const std::string& section, const std::string& key,
                           const std::string& fallback) const = 0;
  virtual void Write(const std::string& section, const std::string& key, const std::string& value) = 0;
};

/// The INI file `path`; the user's own (Kolvane/Kolvane.ini in the configuration folder) where it is empty.
/// What was written reaches the file when the store goes; sections and keys that it does not know stay in the
/// file.
std::unique_ptr<SettingsStore> OpenIniStore(const std::string& path);

}  // namespace kolvane::component
