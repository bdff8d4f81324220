#include "pane/ui/pane_find.h"

#include <QElapsedTimer>
#include <QTimerEvent>
#include <utility>

namespace kolvane::pane {
namespace {

// Short enough not to delay typing and a running list.
constexpr int kSliceMs = 6;

}  // namespace

PaneFind::PaneFind(OutputPane* pane) : FindTarget(pane), pane_(pane), search_(pane->text().store()) {
  connect(pane_, &OutputPane::TextShown, this, [this] { TextChanged(false); });
  connect(pane_, &OutputPane::TextExchanged, this, [this] { TextChanged(true); });
}

void PaneFind::Search(std::shared_ptr<const Matcher> matcher) {
  if (!search_.IsOn()) origin_ = pane_->text().Selection().begin;
  current_.reset();
  origin_ = std::min(origin_, pane_->text().Length());
  search_.Start(std::move(matcher), origin_);
  pane_->ShowHits(search_.IsOn() ? &search_ : nullptr);
  if (search_.IsOn()) return GoTo(Jump::kNext, origin_);
  jump_ = Jump::kNone;
  slices_.stop();
  ShowProgress();
}

void PaneFind::GoToNext() { GoTo(Jump::kNext, pane_->text().Selection().end); }

void PaneFind::GoToPrevious() { GoTo(Jump::kPrevious, pane_->text().Selection().begin); }

void PaneFind::GoTo(Jump jump, std::size_t from) {
  if (!search_.IsOn()) return;
  jump_ = jump;
  jump_from_ = from;
  slices_.start(0, this);
}

void PaneFind::TextChanged(bool exchanged) {
  if (!search_.IsOn()) return;
  search_.Sync(exchanged);
  if (exchanged) origin_ = jump_from_ = 0;
  // If text was only removed, nothing is left to search but the count has changed.
  if (search_.IsComplete()) return ShowProgress();
  slices_.start(0, this);
}

void PaneFind::timerEvent(QTimerEvent* event) {
  if (event->timerId() != slices_.timerId()) return FindTarget::timerEvent(event);
  QElapsedTimer slice;
  slice.start();
  search_.Sync();
  search_.Advance([&slice] { return slice.elapsed() >= kSliceMs; });
  if (jump_ != Jump::kNone && FinishJump()) jump_ = Jump::kNone;
  if (search_.IsComplete()) slices_.stop();
  ShowProgress();
}

/// Returns false while the text on the way to the goal has not been searched.
bool PaneFind::FinishJump() {
  jump_from_ = std::min(jump_from_, pane_->text().Length());
  const PaneSearch::Answer answer =
      jump_ == Jump::kNext ? search_.NextHit(jump_from_) : search_.PreviousHit(jump_from_);
  if (!answer.known) return false;
  current_ = answer.hit;
  if (current_) pane_->Select(current_->begin, current_->end);
  return true;
}

FindState PaneFind::State() const {
  FindState state{.count = search_.Count(), .complete = search_.IsComplete() && jump_ == Jump::kNone};
  if (IsCurrentAHit()) state.current = std::min(search_.CountBefore(current_->begin) + 1, state.count);
  return state;
}

// Whether the hit last gone to is still one, or may be, because its part of the text is being searched again.
bool PaneFind::IsCurrentAHit() const {
  if (!current_ || current_->end > pane_->text().Length() || search_.Count() == 0) return false;
  const PaneSearch::Answer there = search_.NextHit(current_->begin);
  return !there.known || there.hit == current_;
}

QString PaneFind::SelectedText() const {
  const PaneStore& store = pane_->text().store();
  const PaneRange selection = pane_->text().Selection();
  const bool one_line = store.LineAt(selection.begin) == store.LineAt(selection.end);
  return one_line ? pane_->selectedText() : QString();
}

void PaneFind::ShowProgress() {
  pane_->MarkHits();
  Q_EMIT StateChanged();
}

}  // namespace kolvane::pane
