#include "script/list_editing.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace kolvane::script {
namespace {

using Texts = std::vector<std::string>;

// Keeps the first `room` lines; returns how many of the others hold text.
int CutTo(Texts& lines, int room) {
  const auto end = lines.begin() + std::min(static_cast<int>(lines.size()), room);
  const auto left_out = std::count_if(end, lines.end(), [](const auto& line) { return !line.empty(); });
  lines.erase(end, lines.end());
  return static_cast<int>(left_out);
}

void Clip(int& first, int& last) {
  first = std::max(first, 1);
  last = std::min(last, kListRows);
}

}  // namespace

std::string CopyRows(const CommandList& list, int first, int last) {
  Clip(first, last);
  std::string lines;
  for (int row = first; row <= last; ++row) {
    if (row > first) lines += '\n';
    lines += list.Text(row);
  }
  // Without a line end an empty row is no line.
  if (first <= last && list.Text(last).empty()) lines += '\n';
  return lines;
}

std::string CutRows(CommandList& list, int first, int last) {
  std::string lines = CopyRows(list, first, last);
  EmptyRows(list, first, last);
  return lines;
}

void EmptyRows(CommandList& list, int first, int last) {
  Clip(first, last);
  if (first <= last) list.SetTexts(first, Texts(static_cast<std::size_t>(last - first + 1)));
}

int PasteRows(CommandList& list, int row, std::string_view text) {
  Texts lines = base::LinesOf(text);
  const int left_out = CutTo(lines, row >= 1 && row <= kListRows ? kListRows - row + 1 : 0);
  list.SetTexts(row, lines);
  return left_out;
}

PastedRows ReplaceRow(CommandList& list, int row, std::string_view text) {
  Texts lines = base::LinesOf(text);
  lines.resize(std::max<std::size_t>(lines.size(), 1));
  const int used = list.InUse() ? row : std::max(list.LastUsedRow(), row);
  const int left_out = CutTo(lines, kListRows - used + 1);
  const PastedRows pasted{row + static_cast<int>(lines.size()) - 1, left_out};
  const Texts after = list.Texts(row + 1, used);
  lines.insert(lines.end(), after.begin(), after.end());
  list.SetTexts(row, lines);
  return pasted;
}

void RemoveRows(CommandList& list, int first, int last) {
  const int used = list.LastUsedRow();
  Clip(first, last);
  if (first > last || first > used) return;
  Texts texts = list.Texts(last + 1, used);
  texts.resize(static_cast<std::size_t>(used - first + 1));
  list.SetTexts(first, texts);
}

namespace {

bool InsertTexts(CommandList& list, int row, Texts lines) {
  const int used = std::max(list.LastUsedRow(), row - 1);
  if (row < 1 || static_cast<int>(lines.size()) > kListRows - used) return false;
  const Texts after = list.Texts(row, used);
  lines.insert(lines.end(), after.begin(), after.end());
  list.SetTexts(row, lines);
  return true;
}

}  // namespace

bool InsertRows(CommandList& list, int row, int count) {
  if (row < 1 || count < 1 || row > list.LastUsedRow()) return true;
  return count <= kListRows && InsertTexts(list, row, Texts(static_cast<std::size_t>(count)));
}

bool InsertLines(CommandList& list, int row, std::string_view text) {
  return InsertTexts(list, row, base::LinesOf(text));
}

bool DuplicateRows(CommandList& list, int first, int last) {
  Clip(first, last);
  return first <= last && InsertTexts(list, last + 1, list.Texts(first, last));
}

bool MoveRows(CommandList& list, int first, int last, int by) {
  if (by == 0 || first > last || std::min(first, first + by) < 1 || std::max(last, last + by) > kListRows)
    return false;
  const int start = std::min(first, first + by);
  Texts texts = list.Texts(start, std::max(last, last + by));
  std::rotate(texts.begin(), texts.begin() + (by < 0 ? -by : last - first + 1), texts.end());
  list.SetTexts(start, texts);
  return true;
}

void ToggleComments(CommandList& list, int first, int last) {
  Clip(first, last);
  Texts texts = list.Texts(first, last);
  const auto is_comment = [](std::string_view text) { return base::TrimSpaces(text).starts_with('\''); };
  const bool all = std::ranges::all_of(
      texts, [&](const std::string& text) { return base::TrimSpaces(text).empty() || is_comment(text); });
  for (std::string& text : texts) {
    if (base::TrimSpaces(text).empty()) continue;
    if (all)
      text.erase(text.find('\''), 1);
    else
      text.insert(0, 1, '\'');
  }
  list.SetTexts(first, texts);
}

}  // namespace kolvane::script
