#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/encoding.h"

namespace kolvane::component {

using base::kUtf8Mark;

/// A line of an INI file, with the section in which it stands.
struct IniLine {
  std::size_t begin;
  std::size_t next;  ///< after its end
  std::string_view section;
  std::string_view key;    ///< empty: none
  std::string_view value;  ///< as it stands
  bool is_section = false;
};

/// Walks over the lines of `bytes`, which have to outlive it. Each of CR LF, LF and CR ends a line.
class IniLines {
 public:
  explicit IniLines(std::string_view bytes)
      : bytes_(bytes), at_(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0) {}

  /// False after the last one.
  bool Next(IniLine& line);

 private:
  std::size_t After(std::size_t end) const;
  void Understand(std::string_view text, IniLine& line);

  std::string_view bytes_;
  std::size_t at_;
  std::string_view section_;
};

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
