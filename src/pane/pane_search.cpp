#include "pane/pane_search.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

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

void PaneSearch::Start(std::shared_ptr<const Matcher> matcher, std::size_t from) {
  matcher_ = std::move(matcher);
  Sync(true);
  cursor_ = store_.ChunkOfOffset(from);
}

void PaneSearch::Sync(bool exchanged) {
  if (exchanged) {
    chunks_.clear();
    hits_version_ = 0;
  }
  chunks_.resize(matcher_ == nullptr ? 0 : store_.ChunkCount());
  open_ = 0;
  count_ = 0;
  for (std::size_t chunk = 0; chunk < chunks_.size(); ++chunk) {
    if (chunks_[chunk].version != store_.Chunk(chunk).version) chunks_[chunk] = {};
    open_ += IsSearched(chunk) ? 0 : 1;
    count_ += chunks_[chunk].count;
  }
}

void PaneSearch::Advance(const std::function<bool()>& enough) {
  while (open_ > 0) {
    SearchNext();
    if (enough()) return;
  }
}

void PaneSearch::SearchNext() {
  if (cursor_ >= chunks_.size()) cursor_ = 0;
  while (IsSearched(cursor_)) cursor_ = (cursor_ + 1) % chunks_.size();
  ChunkState& state = chunks_[cursor_];
  const PaneChunk& chunk = store_.Chunk(cursor_);
  const Hits hits = matcher_->FindIn(chunk.text());
  state = {chunk.version, hits.size(), {}};
  for (const PaneRange& hit : hits) state.parts.set(hit.begin * kParts / chunk.text().size());
  count_ += state.count;
  --open_;
}

const Hits& PaneSearch::HitsIn(std::size_t chunk) const {
  const PaneChunk& text = store_.Chunk(chunk);
  if (hits_version_ != text.version) {
    hits_ = matcher_ == nullptr ? Hits() : matcher_->FindIn(text.text());
    hits_version_ = text.version;
  }
  return hits_;
}

PaneRange PaneSearch::InText(std::size_t chunk, PaneRange hit) const {
  const std::size_t start = store_.ChunkStart(chunk).bytes;
  return {start + hit.begin, start + hit.end};
}

std::size_t PaneSearch::CountBefore(std::size_t offset) const {
  const std::size_t last = store_.ChunkOfOffset(offset);
  std::size_t count = 0;
  for (std::size_t chunk = 0; chunk < last; ++chunk) count += chunks_[chunk].count;
  const std::size_t local = offset - store_.ChunkStart(last).bytes;
  const Hits& hits = HitsIn(last);
  const auto next = std::ranges::lower_bound(hits, local, {}, &PaneRange::begin);
  return count + static_cast<std::size_t>(next - hits.begin());
}

PaneSearch::Answer PaneSearch::NextHit(std::size_t from) const {
  const std::size_t first = store_.ChunkOfOffset(from);
  // The first chunk is visited again at the end, for the hits before `from`.
  for (std::size_t i = 0; i <= chunks_.size(); ++i) {
    const std::size_t chunk = (first + i) % chunks_.size();
    if (!IsSearched(chunk)) return {.known = false};
    if (chunks_[chunk].count == 0) continue;
    const Hits& hits = HitsIn(chunk);
    const std::size_t local = i == 0 ? from - store_.ChunkStart(chunk).bytes : 0;
    const auto hit = std::ranges::lower_bound(hits, local, {}, &PaneRange::begin);
    if (hit != hits.end()) return {.hit = InText(chunk, *hit)};
  }
  return {};
}

PaneSearch::Answer PaneSearch::PreviousHit(std::size_t before) const {
  const std::size_t first = store_.ChunkOfOffset(before);
  for (std::size_t i = 0; i <= chunks_.size(); ++i) {
    const std::size_t chunk = (first + chunks_.size() * 2 - i) % chunks_.size();
    if (!IsSearched(chunk)) return {.known = false};
    if (chunks_[chunk].count == 0) continue;
    const Hits& hits = HitsIn(chunk);
    const std::size_t local =
        i == 0 ? before - store_.ChunkStart(chunk).bytes : std::numeric_limits<std::size_t>::max();
    const auto next = std::ranges::lower_bound(hits, local, {}, &PaneRange::begin);
    if (next != hits.begin()) return {.hit = InText(chunk, *std::prev(next))};
  }
  return {};
}

}  // namespace kolvane::pane
