#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "script/checker/checker.h"

namespace kolvane::script::checker {

/// The pieces between "|".
inline std::vector<std::string_view> RowsOf(std::string_view text) {
  std::vector<std::string_view> rows;
  for (;;) {
    const std::size_t bar = text.find('|');
    rows.push_back(text.substr(0, bar));
    if (bar == std::string_view::npos) return rows;
    text.remove_prefix(bar + 1);
  }
}

/// "Fehler 3: Text => $STOP (7)": kind, row, text, then proposed text and other row if any.
inline std::string FindingText(const Finding& finding) {
  std::string text = finding.kind == FindingKind::kError ? "Fehler " : "Hinweis ";
  text += std::to_string(finding.row) + ": " + finding.text;
  if (!finding.replacement.empty()) text += " => " + finding.replacement;
  if (finding.other_row != 0) text += " (" + std::to_string(finding.other_row) + ")";
  return text;
}

/// All findings, one per line.
inline std::string FindingsText(const std::vector<Finding>& findings) {
  std::string text;
  for (const Finding& finding : findings) text += (text.empty() ? "" : "\n") + FindingText(finding);
  return text;
}

inline RunStart StartWithLog(LogAtStart log) {
  RunStart start;
  start.log = log;
  return start;
}

/// The findings in a list, "|" between its rows, with the log closed.
inline std::string Check(std::string_view rows, const RunStart& start = StartWithLog(LogAtStart::kClosed)) {
  return FindingsText(CheckList(RowsOf(rows), start));
}

}  // namespace kolvane::script::checker
