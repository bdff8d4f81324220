#include "script/command_list.h"

#include <algorithm>
#include <utility>

#include "base/folding.h"

namespace kolvane::script {
namespace {

std::string_view FirstLine(std::string_view text) { return text.substr(0, text.find_first_of("\r\n")); }

}  // namespace

void CommandList::SetText(int row, std::string_view text) { SetTexts(row, {std::string(text)}); }

void CommandList::SetTexts(int first, const std::vector<std::string>& texts) {
  const int last = first + static_cast<int>(texts.size()) - 1;
  if (texts.empty() || !IsRow(first) || !IsRow(last)) return;
  RowsBefore before{first, {}};
  bool changes = false;
  for (int row = first; row <= last; ++row) {
    before.texts.push_back(Text(row));
    changes |= Text(row) != FirstLine(texts[static_cast<std::size_t>(row - first)]);
  }
  if (!changes) return;
  undo_.Push(std::move(before));
  Replace(first, texts);
}

int CommandList::Undo() {
  const auto before = undo_.Pop();
  if (!before) return 0;
  Replace(before->first, before->texts);
  return before->first;
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
  SetModified();
  return true;
}

bool CommandList::ClearCommandScriptGrid() { return ShowFile({}, {}, 0); }

bool CommandList::ShowFile(std::string name, std::vector<std::string> rows, std::size_t left_out) {
  if (InUse()) return false;
  Fill(std::move(rows));
  undo_.Clear();
  SetCurrentRow(1);
  file_name_ = std::move(name);
  left_out_ = left_out;
  modified_ = false;
  TellFile();
  return true;
}

void CommandList::Fill(std::vector<std::string> rows) {
  rows.resize(kListRows);
  for (int row = 1; row <= kListRows; ++row) {
    Row& target = Used(row);
    target.text = std::move(rows[static_cast<std::size_t>(row - 1)]);
    target.highlighted = false;
    target.color = ColorOf(target.text);
  }
  TellRows(1, kListRows);
}

void CommandList::SyntaxColorLine(int row) {
  if (!IsRow(row)) return;
  Used(row).color = ColorOf(Used(row).text);
  TellRows(row, row);
}

void CommandList::ClearLineSelection(int row) {
  if (!IsRow(row)) return;
  Used(row).highlighted = false;
  SyntaxColorLine(row);
}

void CommandList::HighlightLine(int row, Color back, Color fore, bool bold) {
  if (!IsRow(row)) return;
  Used(row).highlighted = true;
  Used(row).highlight = {back, fore, bold};
  TellRows(row, row);
}

void CommandList::SetDefaultTextColor(Color color) {
  default_color_ = color;
  for (Row& row : rows_) row.color = ColorOf(row.text);
  TellRows(1, kListRows);
}

void CommandList::SetCurrentRow(int row) {
  row = std::clamp(row, 0, kListRows + 1);
  if (row == current_row_) return;
  current_row_ = row;
  if (observer_ != nullptr) observer_->CurrentRowChanged(row);
}

void CommandList::SetFileName(std::string name) {
  file_name_ = std::move(name);
  left_out_ = 0;
  TellFile();
}

void CommandList::MarkSaved() {
  left_out_ = 0;
  modified_ = false;
  TellFile();
}

Color CommandList::ColorOf(std::string_view text) const {
  const std::string_view trimmed = base::TrimBlanks(text);
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
  TellRows(first, row - 1);
  SetModified();
}

void CommandList::SetModified() {
  if (!std::exchange(modified_, true)) TellFile();
}

}  // namespace kolvane::script
