#include "script/command_list.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace kolvane::script {
namespace {

std::string_view FirstLine(std::string_view text) { return text.substr(0, text.find_first_of("\r\n")); }

}  // namespace

void CommandList::SetText(int row, std::string_view text) { SetTexts(row, {std::string(text)}); }

void CommandList::SetTexts(int first, const std::vector<std::string>& texts) {
  const int last = first + static_cast<int>(texts.size()) - 1;
  if (texts.empty() || !IsRow(first) || !IsRow(last)) return;
  std::vector<std::string> before = Texts(first, last);
  if (std::ranges::equal(before, texts, {}, {}, FirstLine)) return;
  Push({first, std::move(before), modified_, {}});
  Replace(first, texts);
  SetModified(true);
}

std::vector<std::string> CommandList::Texts(int first, int last) const {
  std::vector<std::string> texts;
  for (int row = first; row <= last; ++row) texts.push_back(Text(row));
  return texts;
}

ListStep CommandList::Whole() const { return {1, Texts(1, LastUsedRow()), modified_, file_}; }

void CommandList::Push(ListStep before) {
  done_.Push(std::move(before));
  undone_.Clear();
}

int CommandList::GoTo(ListSteps& from, ListSteps& to) {
  const ListStep* top = from.Top();
  if (top == nullptr || (top->file && InUse())) return 0;
  ListStep step = from.Pop();
  if (step.file) {
    to.Push(Whole());
    Show(*std::move(step.file), std::move(step.texts), step.modified);
  } else {
    const int last = step.first + static_cast<int>(step.texts.size()) - 1;
    to.Push({step.first, Texts(step.first, last), modified_, {}});
    Replace(step.first, step.texts);
    SetModified(step.modified);
  }
  return step.first;
}

int CommandList::LastUsedRow() const {
  const auto used =
      std::find_if(rows_.rbegin(), rows_.rend(), [](const Row& row) { return !row.text.empty(); });
  return static_cast<int>(rows_.rend() - used);
}

bool CommandList::AddToScript(std::string_view command) {
  const int row = LastUsedRow() + 1;
  if (!IsRow(row)) return false;
  SetText(row, command);
  if (!InUse()) SetCurrentRow(row);
  SetModified(true);
  return true;
}

bool CommandList::ClearCommandScriptGrid() { return ShowFile({}, {}, 0); }

bool CommandList::ShowFile(std::string name, std::vector<std::string> rows, std::size_t left_out) {
  if (InUse()) return false;
  // An untouched list leaves nothing to restore.
  if (LastUsedRow() > 0 || !file_.name.empty() || done_.Top() != nullptr) Push(Whole());
  Show({std::move(name), left_out}, std::move(rows), false);
  return true;
}

void CommandList::Show(ListFile file, std::vector<std::string> rows, bool modified) {
  Fill(std::move(rows));
  SetCurrentRow(1);
  file_ = std::move(file);
  modified_ = modified;
  NotifyFile();
}

void CommandList::Fill(std::vector<std::string> rows) {
  rows.resize(kListRows);
  for (int row = 1; row <= kListRows; ++row) {
    Row& target = Used(row);
    target.text = std::move(rows[static_cast<std::size_t>(row - 1)]);
    target.highlighted = false;
    target.breakpoint = false;
    target.color = ColorOf(target.text);
  }
  ++revision_;
  NotifyRows(1, kListRows);
}

void CommandList::SyntaxColorLine(int row) {
  if (!IsRow(row)) return;
  Used(row).color = ColorOf(Used(row).text);
  NotifyRows(row, row);
}

[[gnu::hot]] void CommandList::ClearLineSelection(int row) {
  if (!IsRow(row)) return;
  Used(row).highlighted = false;
  SyntaxColorLine(row);
}

[[gnu::hot]] void CommandList::HighlightLine(int row, Color back, Color fore, bool bold) {
  if (!IsRow(row)) return;
  Used(row).highlighted = true;
  Used(row).highlight = {back, fore, bold};
  NotifyRows(row, row);
}

void CommandList::ToggleBreakpoint(int row) {
  if (!IsRow(row)) return;
  Used(row).breakpoint = !Used(row).breakpoint;
  NotifyRows(row, row);
}

void CommandList::NoteError(int row, std::string_view error) {
  error_row_ = row;
  error_ = error;
}

std::string_view CommandList::ErrorOf(int row) const {
  const Highlight* highlight = HighlightOf(row);
  return row == error_row_ && highlight != nullptr && *highlight == kErrorRow ? error_ : std::string_view();
}

void CommandList::SetDefaultTextColor(Color color) {
  default_color_ = color;
  for (Row& row : rows_) row.color = ColorOf(row.text);
  NotifyRows(1, kListRows);
}

[[gnu::hot]] void CommandList::SetCurrentRow(int row) {
  row = std::clamp(row, 0, kListRows + 1);
  if (row == current_row_) return;
  current_row_ = row;
  if (observer_ != nullptr) observer_->CurrentRowChanged(row);
}

void CommandList::SetFileName(std::string name) {
  file_ = {std::move(name), 0};
  modified_ = LastUsedRow() > 0;
  done_.MarkModified();
  undone_.MarkModified();
  NotifyFile();
}

void CommandList::MarkSaved(std::string copy) {
  file_.left_out = 0;
  file_.copy = std::move(copy);
  modified_ = false;
  done_.MarkModified();
  undone_.MarkModified();
  NotifyFile();
}

void CommandList::MarkModified() { SetModified(true); }

Color CommandList::ColorOf(std::string_view text) const {
  const std::string_view trimmed = base::TrimSpaces(text);
  switch (trimmed.empty() ? '\0' : trimmed.front()) {
    case '$':
      return syntax_color::kSpecialCommand;
    case '\'':
      return syntax_color::kComment;
    case ':':
      return syntax_color::kColon;
    default:
      return default_color_;
  }
}

void CommandList::Replace(int first, const std::vector<std::string>& texts) {
  int row = first;
  for (const std::string& text : texts) {
    Row& target = Used(row++);
    target.text = FirstLine(text);
    target.color = ColorOf(target.text);
    if (!InUse()) target.highlighted = false;
  }
  ++revision_;
  NotifyRows(first, row - 1);
}

void CommandList::SetModified(bool modified) {
  if (std::exchange(modified_, modified) != modified) NotifyFile();
}

}  // namespace kolvane::script
