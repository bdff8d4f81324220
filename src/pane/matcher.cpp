#include "pane/matcher.h"

#include <algorithm>
#include <functional>

#include "base/text.h"

namespace kolvane::pane {
namespace {

template <typename Searcher>
Hits HitsOf(std::string_view lines, std::size_t size, const Searcher& searcher) {
  Hits hits;
  for (auto at = lines.begin(); (at = std::search(at, lines.end(), searcher)) != lines.end();
       at += static_cast<std::ptrdiff_t>(size)) {
    const auto begin = static_cast<std::size_t>(at - lines.begin());
    hits.push_back({begin, begin + size});
  }
  return hits;
}

}  // namespace

PlainMatcher::PlainMatcher(std::string_view text, bool match_case)
    : text_(match_case ? std::string(text) : base::UpperCase(text)), match_case_(match_case) {}

Hits PlainMatcher::FindIn(std::string_view lines) const {
  const std::boyer_moore_horspool_searcher searcher(text_.begin(), text_.end());
  return match_case_ ? HitsOf(lines, text_.size(), searcher)
                     : HitsOf(base::UpperCase(lines), text_.size(), searcher);
}

std::string ReplaceHits(const Matcher& matcher, std::string_view line, std::string_view with) {
  std::string out;
  std::size_t copied = 0;
  for (const PaneRange& hit : matcher.FindIn(std::string(line) + '\n')) {
    out.append(line.substr(copied, hit.begin - copied)).append(matcher.Replacement(line, hit, with));
    copied = hit.end;
  }
  return out.append(line.substr(copied));
}

}  // namespace kolvane::pane
