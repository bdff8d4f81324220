#pragma once

#include <cstddef>
#include <string_view>

#include "base/utf8.h"

namespace kolvane::component {

using base::kUtf8Mark;

/// A line of an INI file, with the section in which it stands.
struct IniLine {
  std::size_t begin;
  std::size_t next;  ///< behind its end
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

  /// False behind the last one.
  bool Next(IniLine& line);

 private:
  std::size_t Behind(std::size_t end) const;
  void Understand(std::string_view text, IniLine& line);

  std::string_view bytes_;
  std::size_t at_;
  std::string_view section_;
};

}  // namespace kolvane::component
