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

/// A line of an INI file, with its section.
struct IniLine {
  std::size_t begin;
  std::size_t next;  ///< after its end
  std::string_view section;
  std::string_view key;    ///< empty: none
  std::string_view value;  ///< still escaped
  bool is_section = false;
};

/// Iterates over the lines of `bytes`, which must outlive it. CR LF, LF and CR each end a line.
class IniLines {
 public:
  explicit IniLines(std::string_view bytes)
      : bytes_(bytes), at_(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0) {}

  /// False after the last one.
  bool Next(IniLine& line);

 private:
  std::size_t After(std::size_t end) const;
  void ParseLine(std::string_view text, IniLine& line);

  std::string_view bytes_;
  std::size_t at_;
  std::string_view section_;
};

/// Texts by section and key.
using IniEntries = std::map<std::pair<std::string, std::string>, std::string>;

/// The content of an INI file. Any content is accepted: a line that is not a section, a key with '=' or a
/// comment is ignored. Sections of the same name are merged; of repeated keys the last one counts.
class IniText {
 public:
  explicit IniText(std::string bytes);
  IniText(const IniText&) = delete;
  IniText& operator=(const IniText&) = delete;

  /// The text of a key, or nothing.
  std::optional<std::string> Find(const std::string& section, const std::string& key) const;

 private:
  struct Entry {
    std::string_view key;
    std::string_view value;
  };

  std::string bytes_;
  // In file order. Only a few keys are looked up, so there is no index over possibly millions.
  std::map<std::string_view, std::vector<Entry>> sections_;
};

/// The INI file `bytes` with these texts for their keys, each key once; every other line stays unchanged.
std::string WithIniEntries(std::string_view bytes, const IniEntries& entries);

}  // namespace kolvane::component
