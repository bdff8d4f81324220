#include "pane/pane_text.h"

#include <algorithm>
#include <utility>

#include "pane/pane_moves.h"

namespace kolvane::pane {

bool PaneUndo::Continues(const PaneEdit& edit) const {
  return typing_ && edit.removed.text.empty() && edits_.back().begin + edits_.back().inserted == edit.begin;
}

void PaneUndo::Note(PaneEdit edit, bool typed) {
  if (edit.removed.text.size() > kMaxRemoved) return Forget();
  if (typed && Continues(edit)) {
    edits_.back().inserted += edit.inserted;
    return;
  }
  typing_ = typed;
  removed_ += edit.removed.text.size();
  edits_.push_back(std::move(edit));
  while (removed_ > kMaxRemoved || edits_.size() > kMaxEdits) {
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

namespace {

std::size_t Moved(std::size_t offset, PaneRange erased) {
  if (offset <= erased.begin) return offset;
  return std::max(offset, erased.end) - (erased.end - erased.begin);
}

}  // namespace

PaneRange PaneText::Selection() const { return {std::min(caret_, anchor_), std::max(caret_, anchor_)}; }

std::string PaneText::SelectedText(std::string_view line_break) const {
  return store_.Text(Selection().begin, Selection().end, line_break);
}

void PaneText::MoveTo(std::size_t offset, bool keep_anchor) {
  Select(keep_anchor ? anchor_ : offset, offset);
}

void PaneText::Select(std::size_t anchor, std::size_t caret) {
  anchor_ = std::min(anchor, Length());
  caret_ = std::min(caret, Length());
  insertion_color_ = ColorBeside(caret_);
  left_caret_.reset();
}

// Unlike Select, keeps the insertion colour.
void PaneText::PutCaret(std::size_t offset) {
  caret_ = anchor_ = offset;
  left_caret_.reset();
}

void PaneText::Reselect(std::size_t anchor, std::size_t caret) {
  const std::size_t left = caret_;
  Select(anchor, caret);
  left_caret_ = left;
}

void PaneText::LeaveReselected() {
  if (left_caret_) MoveTo(*left_caret_);
}

void PaneText::AppendLine(std::string_view line, Color color) {
  const Color shown = color == kNoColor ? end_color_ : color;
  store_.SetOrigin(origin_);
  if (IsPlainLine(line)) {
    store_.AppendLine(line, shown);
  } else {
    AppendCleaned(line, shown);
  }
  store_.SetOrigin({});
  PutCaret(Length());
  insertion_color_ = end_color_;
}

void PaneText::AppendCleaned(std::string_view line, Color color) {
  const std::string text = ToPaneText(line);
  if (text.find('\n') == text.npos) {
    store_.AppendLine(text, color);
  } else {
    store_.Insert(Length(), "\n" + text, color);
  }
}

void PaneText::AppendText(std::string_view text, int back) {
  store_.SetOrigin(origin_);
  store_.Insert(Length(), ToPaneText(text), kNoColor);
  store_.SetOrigin({});
  MoveTo(Length());
  MoveBack(back);
}

void PaneText::SetText(std::string_view text) {
  store_.Clear();
  undo_.Forget();
  if (!text.empty()) store_.Insert(0, ToPaneText(text), kNoColor);
  MoveTo(0);
}

// `text` must be in the pane's form, as from ToPaneText.
void PaneText::Exchange(PaneRange range, std::string_view text, Color color) {
  if (range.empty() && text.empty()) return;
  const bool typed = !text.empty() && text.front() != '\n' && ClusterEnd(text, 0) == text.size();
  undo_.Note({range.begin, text.size(), store_.Piece(range.begin, range.end), end_color_}, typed);
  if (!range.empty()) store_.Erase(range.begin, range.end);
  if (!text.empty()) store_.Insert(range.begin, text, color);
}

void PaneText::ReplaceSelection(std::string_view text) {
  const std::size_t begin = Selection().begin;
  const std::string inserted = ToPaneText(text);
  Exchange(Selection(), inserted, insertion_color_);
  PutCaret(begin + inserted.size());
}

void PaneText::Erase(PaneRange range) {
  if (range.empty()) return;
  Exchange(range, "", kNoColor);
  Select(Moved(anchor_, range), Moved(caret_, range));
}

void PaneText::Insert(std::size_t offset, std::string_view text) {
  const std::string inserted = ToPaneText(text);
  Exchange({offset, offset}, inserted, ColorBeside(offset));
  const std::size_t size = inserted.size();
  Select(anchor_ + (anchor_ >= offset ? size : 0), caret_ + (caret_ >= offset ? size : 0));
}

void PaneText::InsertComment(std::string_view text) {
  std::string lines = "\n" + ToPaneText(text) + "\n";
  const PaneRange selection = Selection();
  Exchange(selection, lines, base::kCommentColor);
  PutCaret(selection.begin + lines.size());
  SetSelectionColor(base::kCommentColor);
}

std::optional<PaneRange> PaneText::Undoable() const {
  const PaneEdit* edit = undo_.Newest();
  if (edit == nullptr) return std::nullopt;
  return PaneRange{edit->begin, edit->begin + edit->inserted};
}

void PaneText::Undo() {
  if (undo_.Newest() == nullptr) return;
  const PaneEdit edit = undo_.Take();
  if (edit.inserted > 0) store_.Erase(edit.begin, edit.begin + edit.inserted);
  if (!edit.removed.text.empty()) store_.Insert(edit.begin, edit.removed);
  end_color_ = edit.end_color;
  MoveTo(edit.begin + edit.removed.text.size());
}

Color PaneText::SelectionColor() const {
  return base::WithoutBold(Selection().empty() ? insertion_color_ : store_.ColorAt(Selection().begin));
}

void PaneText::SetSelectionColor(Color color) {
  store_.SetColor(Selection().begin, Selection().end, color);
  insertion_color_ = color;
  if (Selection().end == Length()) end_color_ = color;
}

void PaneText::MoveBack(int length) {
  const std::size_t from = store_.ToRichUnits(Selection().begin);
  const auto back = static_cast<std::size_t>(std::max(length, 0));
  MoveTo(store_.FromRichUnits(from - std::min(from, back)));
}

void PaneText::SelectForward(int length) {
  const std::size_t begin = Selection().begin;
  const std::size_t end = store_.ToRichUnits(begin) + static_cast<std::size_t>(std::max(length, 0));
  Select(begin, store_.FromRichUnits(end));
}

Color PaneText::ColorBeside(std::size_t offset) const {
  if (offset == Length()) return end_color_;
  const bool begins_line = store_.LineStart(store_.LineAt(offset)) == offset;
  return store_.ColorAt(begins_line ? offset : offset - 1);
}

}  // namespace kolvane::pane
