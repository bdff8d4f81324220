#include "app/finding_lines.h"

#include <algorithm>

namespace kolvane::app {

std::string FindingLines(const std::vector<CheckedCommandList>& lists) {
  std::string lines;
  for (const CheckedCommandList& list : lists) {
    for (const ListFinding& finding : list.Findings)
      lines += list.File + ":" + std::to_string(finding.Row) +
               (finding.IsError ? ": Fehler: " : ": Hinweis: ") + finding.Text + "\n";
  }
  return lines;
}

int CheckStatus(const std::vector<CheckedCommandList>& lists) {
  const auto unread = [](const CheckedCommandList& list) { return !list.Problem.empty(); };
  const auto wrong = [](const CheckedCommandList& list) {
    return std::ranges::any_of(list.Findings, &ListFinding::IsError);
  };
  return std::ranges::any_of(lists, unread) ? 2 : std::ranges::any_of(lists, wrong) ? 1 : 0;
}

}  // namespace kolvane::app
