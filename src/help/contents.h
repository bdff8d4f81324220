#pragma once

#include <cstddef>
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

struct SearchHit {
  std::string title;
  std::string page;

  bool operator==(const SearchHit&) const = default;
};

/// What the search looks through. Letters are compared without regard to case, umlauts included, which may as
/// well be spelled out: ae, oe, ue, and ss for ß.
class PageIndex {
 public:
  /// Pages beyond this much text are not searched.
  static constexpr std::size_t kMaxText = std::size_t{32} << 20;

  /// `key_words` are further words for what the page is about.
  void Add(SearchHit hit, std::string_view text, std::string_view key_words = {});

  /// The pages that hold every word, parts of words included: those with all of them in the title first, then
  /// those that have them among title and key words; within a group the page with the most hits first, in the
  /// order of Add where they are as many. None for no word.
  std::vector<SearchHit> Find(std::string_view words) const;

 private:
  struct Entry {
    SearchHit hit;
    // Folded, since the search runs at each letter that is typed.
    std::string title;
    std::string subject;  ///< title and key words
    std::string whole;    ///< the same and the text
  };

  std::vector<Entry> entries_;
  std::size_t size_ = 0;
};

}  // namespace kolvane::help
