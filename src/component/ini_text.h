#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

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

  /// The same content with these texts at their keys, each there once; every other line stays as it is.
  std::string With(const IniEntries& entries) const;

 private:
  std::string bytes_;
  std::unordered_map<std::string, std::string_view> values_;
};

}  // namespace kolvane::component
