#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pane/pane_store.h"

namespace kolvane::pane {

using Hits = std::vector<PaneRange>;

/// What is searched for. A hit is within one line and not empty; hits do not overlap. Texts are UTF-8.
class Matcher {
 public:
  virtual ~Matcher() = default;
  /// The hits in `lines`, each of which ends in LF, in text order.
  virtual Hits FindIn(std::string_view lines) const = 0;
  /// The text that replaces `hit`, one of FindIn's, in `line`, which has no LF.
  virtual std::string Replacement(std::string_view line, PaneRange hit, std::string_view with) const = 0;
};

/// A literal text, with or without regard to case.
class PlainMatcher final : public Matcher {
 public:
  /// `text` is not empty and holds no LF.
  PlainMatcher(std::string_view text, bool match_case);

  Hits FindIn(std::string_view lines) const override;
  std::string Replacement(std::string_view, PaneRange, std::string_view with) const override {
    return std::string(with);
  }

 private:
  std::string text_;
  bool match_case_;
};

/// `line` with each of its hits replaced.
std::string ReplaceHits(const Matcher& matcher, std::string_view line, std::string_view with);

/// Searches a text that may have millions of lines and keep growing. Advance searches it chunk by chunk;
/// chunks changed since then are searched again. Per chunk only the number of hits and the parts with hits
/// are kept. Every call but Advance searches at most one chunk, NextHit and PreviousHit two.
class PaneSearch {
 public:
  explicit PaneSearch(const PaneStore& store) : store_(store) {}

  /// Null ends the search. The part around `from` is searched first.
  void Start(std::shared_ptr<const Matcher> matcher, std::size_t from);
  bool IsOn() const { return matcher_ != nullptr; }
  /// To be called after each change of the text, before anything else. `exchanged`: the store holds another
  /// text.
  void Sync(bool exchanged = false);
  /// Searches until everything is searched, or `enough`, called after each chunk, returns true.
  void Advance(const std::function<bool()>& enough);

  bool IsComplete() const { return open_ == 0; }
  /// Hits found so far.
  std::size_t Count() const { return count_; }
  /// How many of them start before `offset`.
  std::size_t CountBefore(std::size_t offset) const;

  struct Answer {
    bool known = true;  ///< false: the text on the way has not been searched yet
    std::optional<PaneRange> hit = {};
  };
  // These two only while IsOn().
  /// The first hit that starts at `from` or later; after the last hit comes the first again.
  Answer NextHit(std::size_t from) const;
  /// The last hit that starts before `before`; before the first hit comes the last again.
  Answer PreviousHit(std::size_t before) const;

  /// The hits in the chunk, relative to its start, even if it is not searched yet; valid until the next call.
  const Hits& HitsIn(std::size_t chunk) const;
  /// The number of hits in the chunk; 0 if it is not searched yet.
  std::size_t CountIn(std::size_t chunk) const { return chunks_[chunk].count; }
  /// In which of its kParts parts of equal size a chunk has hits.
  static constexpr std::size_t kParts = 256;
  const std::bitset<kParts>& PartsIn(std::size_t chunk) const { return chunks_[chunk].parts; }
  std::size_t ChunkCount() const { return chunks_.size(); }

 private:
  struct ChunkState {
    std::uint64_t version = 0;  // 0: not searched
    std::size_t count = 0;
    std::bitset<kParts> parts;
  };

  bool IsSearched(std::size_t chunk) const { return chunks_[chunk].version != 0; }
  void SearchNext();
  PaneRange InText(std::size_t chunk, PaneRange hit) const;

  const PaneStore& store_;
  std::shared_ptr<const Matcher> matcher_;
  std::vector<ChunkState> chunks_;
  std::size_t cursor_ = 0;
  std::size_t open_ = 0;
  std::size_t count_ = 0;
  // The last chunk requested: painting requests it row by row.
  mutable std::uint64_t hits_version_ = 0;
  mutable Hits hits_;
};

}  // namespace kolvane::pane
