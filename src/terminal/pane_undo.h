#pragma once

#include <cstddef>
#include <deque>

#include "terminal/pane_store.h"

namespace kolvane::terminal {

/// Where the user put `inserted` bytes at `begin` in place of `removed`.
struct PaneEdit {
  std::size_t begin;
  std::size_t inserted;
  PanePiece removed;
  Color end_color;  ///< of lines to come, before
};

/// What the user has changed in a text, to be taken back from the newest on. Lines that the session puts at
/// the end meanwhile leave the places as they are.
class PaneUndo {
 public:
  /// What is kept of removed text, in bytes: an edit that removes more ends the record.
  static constexpr std::size_t kMostRemoved = 16 * 1024 * 1024;
  static constexpr std::size_t kMostEdits = 1000;

  /// A character typed right after the one of the last call is taken back together with it.
  void Note(PaneEdit edit, bool typed);
  void Forget();
  /// The newest one; null where there is none.
  const PaneEdit* Newest() const { return edits_.empty() ? nullptr : &edits_.back(); }
  PaneEdit Take();

 private:
  bool Continues(const PaneEdit& edit) const;

  std::deque<PaneEdit> edits_;
  std::size_t removed_ = 0;  // bytes in all of them
  bool typing_ = false;      // the newest one consists of typed characters
};

}  // namespace kolvane::terminal
