#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kolvane::component {

/// Texts by section and key.
using IniEntries = std::map<std::pair<std::string, std::string>, std::string>;

/// The content of an INI file. Whatever it is, it can be read: a line that is neither a section, a key with
/// '=' nor a comment says nothing. Sections of one name are one; of repeated keys the last one counts.
class IniText {
 public:
  explicit IniText(std::string bytes);
  IniText(const IniText&) = delete;
  IniText& operator=(const IniText&) = delete;

  /// The text at a key, or nothing.
  std::optional<std::string> Find(const std::string& section, const std::string& key) const;

 private:
  struct Entry {
    std::string_view key;
    std::string_view value;
  };

  std::string bytes_;
  // In the file's order. Few keys are ever asked for, so there is no index over what may be millions.
  std::map<std::string_view, std::vector<Entry>> sections_;
};

/// The content `bytes` of an INI file with these texts at their keys, each there once; every other line stays
/// as it is.
std::string WithIniEntries(std::string_view bytes, const IniEntries& entries);

}  // namespace kolvane::component
