#include "help/contents.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/text.h"
#include "help/chm_archive.h"
#include "help/html.h"

namespace kolvane::help {
namespace {

constexpr int kMaxLevel = 15;
constexpr std::size_t kMaxEntries = 10'000;

class ContentsReader {
 public:
  void Take(const HtmlPiece& piece) {
    const auto is = [&piece](std::string_view name) { return base::EqualsNoCase(piece.name, name); };
    if (is("ul")) ++depth_;
    if (is("/ul")) depth_ = std::max(depth_ - 1, 0);
    if (is("object")) entry_ = {};
    if (is("param")) TakeParameter(piece.text);
    if (is("/object")) Finish();
  }

  std::vector<ContentsEntry> entries;

 private:
  void TakeParameter(std::string_view text) {
    const std::string name = Attribute(text, "name");
    if (base::EqualsNoCase(name, "Name")) entry_.title = Attribute(text, "value");
    if (base::EqualsNoCase(name, "Local")) TakePage(Attribute(text, "value"));
  }

  void TakePage(const std::string& local) {
    const std::size_t end = std::min(local.find('#'), local.size());
    entry_.page = local.substr(0, end);
    entry_.anchor = local.substr(std::min(end + 1, local.size()));
  }

  void Finish() {
    ContentsEntry entry = std::exchange(entry_, {});
    if (entry.title.empty()) return;
    entry.page.erase(0, entry.page.find_first_not_of('/'));
    const int deepest = entries.empty() ? 0 : entries.back().level + 1;
    entry.level = std::clamp(depth_ - 1, 0, std::min(deepest, kMaxLevel));
    entries.push_back(std::move(entry));
  }

  int depth_ = 0;
  ContentsEntry entry_;
};

constexpr std::pair<std::string_view, std::string_view> kSpelledOut[] = {
    {"Ä", "AE"}, {"Ö", "OE"}, {"Ü", "UE"}, {"ß", "SS"}};

// Removes the differences that the search ignores: case, and umlauts spelled out.
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

bool IsWordCharacter(char c) { return base::IsAsciiLetter(c) || base::IsDigit(c); }

bool StartsAWord(const std::string& text, const std::string& word) {
  for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; ++at) {
    if (at == 0 || !IsWordCharacter(text[at - 1])) return true;
  }
  return false;
}

bool AllStartAWord(const std::string& text, const std::vector<std::string>& words) {
  return std::ranges::all_of(words, [&text](const std::string& word) { return StartsAWord(text, word); });
}

std::size_t CountOf(const std::string& text, const std::vector<std::string>& words) {
  std::size_t count = 0;
  for (const std::string& word : words) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; at += word.size()) ++count;
  }
  return count;
}

}  // namespace

std::vector<ContentsEntry> ParseContents(std::string_view html) {
  ContentsReader reader;
  while (const auto piece = TakePiece(html)) {
    if (piece->is_tag) reader.Take(*piece);
    if (reader.entries.size() == kMaxEntries) break;
  }
  return std::move(reader.entries);
}

namespace {

constexpr std::size_t kHeader = 4;  // the size of the rest
constexpr std::size_t kPair = 8;
constexpr std::size_t kMaxPairs = 65'536;
constexpr std::size_t kLongestPath = 1024;

}  // namespace

std::map<std::uint32_t, std::string> ReadTopicTable(std::string_view ivb, std::string_view strings) {
  std::map<std::uint32_t, std::string> topics;
  ivb.remove_prefix(std::min(kHeader, ivb.size()));
  ivb = ivb.substr(0, kMaxPairs * kPair);
  for (; ivb.size() >= kPair; ivb.remove_prefix(kPair)) {
    const std::size_t offset = NumberAt(ivb, 4);
    if (offset >= strings.size()) continue;
    const std::string_view rest = strings.substr(offset, kLongestPath + 1);
    const std::size_t end = rest.find('\0');
    if (end == std::string_view::npos) continue;
    const std::string_view page = rest.substr(0, std::min(end, rest.find('#')));
    if (!page.empty()) topics.emplace(NumberAt(ivb, 0), page);
  }
  return topics;
}

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
    int where;  // words start in the title 0, among the key words 1, are a part there 2, in the text 3
    std::size_t count;
  };
  std::vector<Found> found;
  for (const Entry& entry : entries_) {
    if (!HoldsAll(entry.whole, wanted)) continue;
    const int where = AllStartAWord(entry.title, wanted)     ? 0
                      : AllStartAWord(entry.subject, wanted) ? 1
                      : HoldsAll(entry.subject, wanted)      ? 2
                                                             : 3;
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
