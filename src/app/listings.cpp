#include "app/listings.h"

#include <algorithm>

namespace kolvane::app {
namespace {

constexpr std::size_t kGap = 2;

std::string Shown(const std::string& text) { return text.empty() ? "-" : text; }

template <typename Field>
std::size_t WidthOf(const std::vector<Port>& ports, Field field) {
  std::size_t width = 0;
  for (const Port& port : ports) width = std::max(width, Shown(port.*field).size());
  return width + kGap;
}

std::string Padded(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text;
}

}  // namespace

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

std::string PortTable(const std::vector<Port>& ports) {
  const std::size_t resource = WidthOf(ports, &Port::Resource);
  const std::size_t node = WidthOf(ports, &Port::Node);
  std::string table;
  for (const Port& port : ports)
    table += Padded(Shown(port.Resource), resource) + Padded(Shown(port.Node), node) +
             Shown(port.Description) + "\n";
  return table;
}

}  // namespace kolvane::app
