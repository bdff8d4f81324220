#include "terminal/pane_undo.h"

#include <utility>

namespace kolvane::terminal {

bool PaneUndo::Continues(const PaneEdit& edit) const {
  return typing_ && edit.removed.text.empty() && edits_.back().begin + edits_.back().inserted == edit.begin;
}

void PaneUndo::Note(PaneEdit edit, bool typed) {
  if (edit.removed.text.size() > kMostRemoved) return Forget();
  if (typed && Continues(edit)) {
    edits_.back().inserted += edit.inserted;
    return;
  }
  typing_ = typed;
  removed_ += edit.removed.text.size();
  edits_.push_back(std::move(edit));
  while (removed_ > kMostRemoved || edits_.size() > kMostEdits) {
    removed_ -= edits_.front().removed.text.size();
    edits_.pop_front();
  }
}

void PaneUndo::Forget() { *this = PaneUndo(); }

PaneEdit PaneUndo::Take() {
  PaneEdit edit = std::move(edits_.back());
  edits_.pop_back();
  removed_ -= edit.removed.text.size();
  typing_ = false;
  return edit;
}

}  // namespace kolvane::terminal
