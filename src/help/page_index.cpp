#include "help/page_index.h"

#include <algorithm>
#include <utility>

#include "base/folding.h"

namespace kolvane::help {
namespace {

std::vector<std::string> Words(std::string_view text) {
  const std::string folded = base::UpperCase(text);
  std::vector<std::string> words;
  for (std::size_t start = 0; (start = folded.find_first_not_of(' ', start)) != std::string::npos;) {
    const std::size_t end = std::min(folded.find(' ', start), folded.size());
    words.push_back(folded.substr(start, end - start));
    start = end;
  }
  return words;
}

bool HoldsAll(const std::string& text, const std::vector<std::string>& words) {
  return std::ranges::all_of(words,
                             [&text](const std::string& word) { return text.find(word) != text.npos; });
}

}  // namespace

void PageIndex::Add(SearchHit hit, std::string_view text) {
  if (text.size() > kMaxText - size_) return;
  size_ += text.size();
  std::string folded_title = base::UpperCase(hit.title);
  std::string folded_whole = folded_title + ' ' + base::UpperCase(text);
  entries_.push_back({std::move(hit), std::move(folded_title), std::move(folded_whole)});
}

std::vector<SearchHit> PageIndex::Find(std::string_view words) const {
  const std::vector<std::string> wanted = Words(words);
  if (wanted.empty()) return {};
  std::vector<SearchHit> hits;
  std::vector<SearchHit> in_text;
  for (const Entry& entry : entries_) {
    if (HoldsAll(entry.folded_title, wanted)) {
      hits.push_back(entry.hit);
    } else if (HoldsAll(entry.folded_whole, wanted)) {
      in_text.push_back(entry.hit);
    }
  }
  hits.insert(hits.end(), in_text.begin(), in_text.end());
  return hits;
}

}  // namespace kolvane::help
