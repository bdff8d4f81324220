#include "help/page_index.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace kolvane::help {
namespace {

constexpr std::pair<std::string_view, std::string_view> kSpelledOut[] = {
    {"Ä", "AE"}, {"Ö", "OE"}, {"Ü", "UE"}, {"ß", "SS"}};

// What is the same to the search: case, and umlauts spelled out.
std::string Fold(std::string_view text) {
  std::string folded = base::UpperCase(text);
  for (const auto& [letter, spelled] : kSpelledOut) {
    for (std::size_t at = 0; (at = folded.find(letter, at)) != std::string::npos; at += spelled.size())
      folded.replace(at, letter.size(), spelled);
  }
  return folded;
}

std::vector<std::string> Words(std::string_view text) {
  const std::string folded = Fold(text);
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

std::size_t CountOf(const std::string& text, const std::vector<std::string>& words) {
  std::size_t count = 0;
  for (const std::string& word : words) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; at += word.size()) ++count;
  }
  return count;
}

}  // namespace

void PageIndex::Add(SearchHit hit, std::string_view text, std::string_view key_words) {
  if (text.size() > kMaxText - size_) return;
  size_ += text.size();
  std::string title = Fold(hit.title);
  std::string subject = title + ' ' + Fold(key_words);
  std::string whole = subject + ' ' + Fold(text);
  entries_.push_back({std::move(hit), std::move(title), std::move(subject), std::move(whole)});
}

std::vector<SearchHit> PageIndex::Find(std::string_view words) const {
  const std::vector<std::string> wanted = Words(words);
  if (wanted.empty()) return {};
  struct Found {
    const SearchHit* hit;
    int where;  // 0 in the title, 1 among the key words, 2 in the text
    std::size_t count;
  };
  std::vector<Found> found;
  for (const Entry& entry : entries_) {
    if (!HoldsAll(entry.whole, wanted)) continue;
    const int where = HoldsAll(entry.title, wanted) ? 0 : HoldsAll(entry.subject, wanted) ? 1 : 2;
    found.push_back({&entry.hit, where, CountOf(entry.whole, wanted)});
  }
  std::ranges::stable_sort(found, [](const Found& a, const Found& b) {
    return a.where == b.where ? a.count > b.count : a.where < b.where;
  });
  std::vector<SearchHit> hits;
  for (const Found& one : found) hits.push_back(*one.hit);
  return hits;
}

}  // namespace kolvane::help
