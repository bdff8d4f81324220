#pragma once

#include <functional>
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

 private:
  struct Place {
    std::string_view section;
    std::string_view key;
    bool operator==(const Place&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Place& place) const {
      constexpr std::size_t kFactor = 31;
      const std::hash<std::string_view> hash;
      return hash(place.section) * kFactor + hash(place.key);
    }
  };

  std::string bytes_;
  std::unordered_map<Place, std::string_view, Hash> values_;
};

/// The content `bytes` of an INI file with these texts at their keys, each there once; every other line stays
/// as it is.
std::string WithIniEntries(std::string_view bytes, const IniEntries& entries);

}  // namespace kolvane::component
