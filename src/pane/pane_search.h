#pragma once

#include <bitset>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "pane/matcher.h"
#include "pane/pane_store.h"

namespace kolvane::pane {

/// What is found in a text that may have millions of lines and go on growing. It is searched piece by piece,
/// as Advance is called; what has been changed since is searched again. Per chunk only the number of hits is
/// kept. Every call but Advance costs no more than a look at one chunk, NextHit and PreviousHit at those
/// between.
class PaneSearch {
 public:
  explicit PaneSearch(const PaneStore& store) : store_(store) {}

  /// Null: nothing is searched for. The part around `from` comes first.
  void Start(std::shared_ptr<const Matcher> matcher, std::size_t from);
  bool IsOn() const { return matcher_ != nullptr; }
  /// To be called after each change of the text, before anything else. `exchanged`: another text stands in
  /// the store.
  void Sync(bool exchanged = false);
  /// Searches until all is searched, or `enough`, asked after each chunk, says so.
  void Advance(const std::function<bool()>& enough);

  bool IsComplete() const { return open_ == 0; }
  /// Hits found so far.
  std::size_t Count() const { return count_; }
  /// Those of them that begin before `offset`.
  std::size_t CountBefore(std::size_t offset) const;

  struct Answer {
    bool known = true;  ///< false: the text on the way has not been searched yet
    std::optional<PaneRange> hit = {};
  };
  /// The first hit that begins at `from` or later; after the last one the first again.
  Answer NextHit(std::size_t from) const;
  /// The last hit that begins before `before`; before the first one the last again.
  Answer PreviousHit(std::size_t before) const;

  /// The hits in the chunk, counted from its begin, searched or not; valid until the next call.
  const Hits& HitsIn(std::size_t chunk) const;
  /// How many hits the chunk has, as far as it was searched.
  std::size_t CountIn(std::size_t chunk) const { return chunks_[chunk].count; }
  /// In which of so many parts of equal size a chunk has hits.
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
  // The last one asked for: painting asks for it row by row.
  mutable std::uint64_t hits_version_ = 0;
  mutable Hits hits_;
};

}  // namespace kolvane::pane
