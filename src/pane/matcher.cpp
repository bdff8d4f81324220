#include "pane/matcher.h"

#include "base/text.h"

namespace kolvane::pane {
namespace {

Hits HitsOf(std::string_view lines, std::string_view text) {
  Hits hits;
  for (std::size_t begin = 0;;) {
    const std::size_t at = lines.find(text, begin);
    if (at == lines.npos) return hits;
    begin = at;
    hits.push_back({begin, begin + text.size()});
    begin += text.size();
  }
}

}  // namespace

PlainMatcher::PlainMatcher(std::string_view text, bool match_case)
    : text_(match_case ? std::string(text) : base::UpperCase(text)), match_case_(match_case) {}

Hits PlainMatcher::FindIn(std::string_view lines) const {
  return match_case_ ? HitsOf(lines, text_) : HitsOf(base::UpperCase(lines), text_);
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
