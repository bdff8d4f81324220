#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

/// An entry of the table of contents.
struct ContentsEntry {
  int level = 0;  ///< 0 outermost; at most one deeper than the entry before
  std::string title;
  std::string page;         ///< as noted, without a leading '/'; empty where the entry is a heading only
  std::string anchor = {};  ///< the place on the page

  bool operator==(const ContentsEntry&) const = default;
};

/// The entries of a contents file (.hhc) in their order. Reads what it can: an unknown element is passed
/// over, an entry without a title is left out; there is a bound for depth and number.
std::vector<ContentsEntry> ParseContents(std::string_view html);

/// The numeric topics of a help file: number to the page's path as the compiler noted it, without an anchor,
/// from the bytes of the objects #IVB (pairs of number and place) and #STRINGS (texts ended by NUL). Pairs
/// that point nowhere are left out, as are paths of more than 1024 bytes: many pairs may share one.
std::map<std::uint32_t, std::string> ReadTopicTable(std::string_view ivb, std::string_view strings);

}  // namespace kolvane::help
