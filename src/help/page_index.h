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

/// What the search looks through. Letters are compared without regard to case, umlauts included.
class PageIndex {
 public:
  /// Pages beyond this much text are not searched.
  static constexpr std::size_t kMaxText = std::size_t{32} << 20;

  void Add(SearchHit hit, std::string_view text);

  /// The pages that hold every word, parts of words included: those with all of them in the title first, each
  /// group in the order of Add. None for no word.
  std::vector<SearchHit> Find(std::string_view words) const;

 private:
  struct Entry {
    SearchHit hit;
    std::string folded_title;
    std::string folded_whole;  ///< title and text: the search runs at each letter that is typed
  };

  std::vector<Entry> entries_;
  std::size_t size_ = 0;
};

}  // namespace kolvane::help
