#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

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
