#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "script/command_list.h"

namespace kolvane::script {

/// The rows up to the last one used, "|" between them; ">" before the current row, "!" before an
/// erroneous row and "*" before a running one.
inline std::string ListText(const CommandList& list) {
  std::string text;
  for (int row = 1; row <= list.LastUsedRow(); ++row) {
    if (row > 1) text += '|';
    if (row == list.current_row()) text += '>';
    if (const Highlight* highlight = list.HighlightOf(row))
      text += *highlight == kErrorRow ? '!' : *highlight == kRunningRow ? '*' : '?';
    text += list.Text(row);
  }
  return text;
}

/// Fills `list` with the lines of `text`, "|" between them, from row 1 on.
inline void FillList(CommandList& list, std::string_view text) {
  std::vector<std::string> rows;
  for (;;) {
    const std::size_t bar = text.find('|');
    rows.emplace_back(text.substr(0, bar));
    if (bar == std::string_view::npos) break;
    text.remove_prefix(bar + 1);
  }
  list.ShowFile("", rows, 0);
}

}  // namespace kolvane::script
