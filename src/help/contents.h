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
  int level = 0;  ///< 0 is outermost; at most one deeper than the previous entry
  std::string title;
  std::string page;         ///< as noted, without a leading '/'; empty if the entry is only a heading
  std::string anchor = {};  ///< the position on the page

  bool operator==(const ContentsEntry&) const = default;
};

/// The entries of a contents file (.hhc) in order. Reads what it can: an unknown element is skipped, an entry
/// without a title left out; depth and number are limited.
std::vector<ContentsEntry> ParseContents(std::string_view html);

/// The numeric topics of a help file: number to the page's path as noted by the compiler, without an anchor.
/// `ivb` and `strings` are the objects #IVB (pairs of number and position) and #STRINGS (texts ended by NUL).
/// Pairs with an invalid position or a path above 1024 bytes are left out: many pairs may share one.
std::map<std::uint32_t, std::string> ReadTopicTable(std::string_view ivb, std::string_view strings);

struct SearchHit {
  std::string title;
  std::string page;

  bool operator==(const SearchHit&) const = default;
};

/// The text that the search covers. Letters are compared without regard to case, including umlauts, which may
/// also be spelled out: ae, oe, ue, and ss for ß.
class PageIndex {
 public:
  /// Pages beyond this total amount of text are not searched.
  static constexpr std::size_t kMaxText = std::size_t{32} << 20;

  /// `key_words` are additional words for the page's subject.
  void Add(SearchHit hit, std::string_view text, std::string_view key_words = {});

  /// The pages that contain every word, also as part of a word: first those with words of the title that
  /// start so, then those with words of title and key words that do, then those with parts of such words;
  /// within a group the page with the most hits first, equal ones in the order of Add. Empty if there is no
  /// word.
  std::vector<SearchHit> Find(std::string_view words) const;

 private:
  struct Entry {
    SearchHit hit;
    // Folded, because the search runs after each letter typed.
    std::string title;
    std::string subject;  ///< title and key words
    std::string whole;    ///< the same and the text
  };

  std::vector<Entry> entries_;
  std::size_t size_ = 0;
};

}  // namespace kolvane::help
