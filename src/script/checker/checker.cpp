#include "script/checker/checker.h"

#include <algorithm>

#include "script/checker/block_check.h"
#include "script/checker/check_texts.h"
#include "script/checker/jump_check.h"
#include "script/checker/row_check.h"

namespace kolvane::script::checker {
namespace {

std::string_view RefusalText(FlowOp op, const ListFlow::Row& paths) {
  const bool always = paths.refusal == Refusal::kAlways;
  switch (op) {
    case FlowOp::kGetParam:
      return always ? texts::kNoSplitBefore : texts::kPerhapsNoSplitBefore;
    case FlowOp::kOpenLog:
    case FlowOp::kOpenNoLog:
      return always ? texts::kLogOpen : texts::kLogPerhapsOpen;
    default:
      if (always) return texts::kLogClosed;
      return (paths.executing.log & log::kClosed) == 0 ? texts::kLogClosedUnlessOpenedByHand
                                                       : texts::kLogPerhapsClosed;
  }
}

bool IsOfParametersOrLog(FlowOp op) {
  return op == FlowOp::kGetParam || op == FlowOp::kOpenLog || op == FlowOp::kOpenNoLog ||
         op == FlowOp::kWriteLog;
}

/// Marks the rows that a jump goes to.
std::vector<bool> Targets(const CheckedList& list) {
  std::vector<bool> targets(list.steps.size() + 1);
  for (const FlowStep& step : list.steps) targets[static_cast<std::size_t>(step.target)] = true;
  return targets;
}

/// $GETPARAM, $OPENLOG and $WRITELOG.
void CheckParametersAndLog(const CheckedList& list, std::vector<Finding>& findings) {
  for (int row = 1; row <= list.last_row(); ++row) {
    const ListFlow::Row& paths = list.flow.At(row);
    const FlowOp op = list.Step(row).op;
    if (!IsOfParametersOrLog(op) || paths.refusal == Refusal::kNever) continue;
    findings.push_back({row, KindOf(paths.refusal), std::string(RefusalText(op, paths))});
  }
}

// Reports rows that no run can execute, except labels: a jump target itself need not be executed.
void CheckReached(const CheckedList& list, std::vector<Finding>& findings) {
  const std::vector<bool> targets = Targets(list);
  int first = 0;
  int last = 0;
  const auto end_range = [&] {
    if (first != 0) findings.push_back({first, FindingKind::kHint, texts::NeverReached(first, last)});
    first = 0;
  };
  for (int row = 1; row <= list.last_row(); ++row) {
    if (!list.Parts(row).IsExecutable()) continue;
    if (list.IsReached(row)) {
      end_range();
    } else if (!targets[static_cast<std::size_t>(row)]) {
      if (first == 0) first = row;
      last = row;
    }
  }
  end_range();
}

using Findings = std::vector<Finding>;

std::vector<FlowStep> CheckRows(const std::vector<std::string_view>& rows, const std::vector<RowParts>& parts,
                                Findings& findings) {
  const LabelTable labels(rows);
  std::vector<FlowStep> steps;
  steps.reserve(rows.size());
  for (std::size_t at = 0; at < rows.size(); ++at) {
    const int row = static_cast<int>(at) + 1;
    RowMeaning meaning = CheckRow(row, parts[at], findings);
    if (meaning.step.op == FlowOp::kGoTo)
      meaning.step.target = FindTarget(row, parts[at], meaning.label, labels, findings);
    CheckCharacters(row, rows[at], findings);
    steps.push_back(meaning.step);
  }
  CheckDuplicates(steps, labels, findings);
  return steps;
}

void CheckPaths(const CheckedList& list, Findings& findings) {
  CheckLoops(list, findings);
  CheckConditions(list, findings);
  CheckParametersAndLog(list, findings);
  CheckJumpsIntoLoops(list, findings);
  CheckReached(list, findings);
}

/// An error in a row that no run can execute becomes a hint. In any other row the first error hides the rest.
void ReduceFindings(const CheckedList& list, Findings& findings) {
  for (Finding& finding : findings)
    if (!list.IsReached(finding.row)) finding.kind = FindingKind::kHint;
  std::ranges::stable_sort(findings, [](const Finding& a, const Finding& b) {
    return a.row != b.row ? a.row < b.row : a.kind < b.kind;
  });
  int error_row = 0;
  std::erase_if(findings, [&](const Finding& finding) {
    const bool hidden = finding.row == error_row;
    if (finding.kind == FindingKind::kError) error_row = finding.row;
    return hidden;
  });
}

}  // namespace

std::vector<Finding> CheckList(const std::vector<std::string_view>& rows, const RunStart& start) {
  Findings findings;
  const std::vector<RowParts> parts(rows.begin(), rows.end());
  const std::vector<FlowStep> steps = CheckRows(rows, parts, findings);
  const BlockPairs pairs(steps);
  const ListFlow flow(steps, start);
  const CheckedList list{parts, steps, pairs, flow};
  CheckPaths(list, findings);
  ReduceFindings(list, findings);
  return findings;
}

std::string FindingLine(const Finding& finding) { return NameOf(finding.kind) + (": " + finding.text); }

std::vector<int> Indents(const CommandList& list) {
  std::vector<int> indents;
  int depth = 0;
  for (int row = 1; row <= list.LastUsedRow(); ++row) {
    const FlowOp op = FlowOpOf(RowParts(list.Text(row)));
    if (op == FlowOp::kEndRepeat || op == FlowOp::kEndIf) depth = std::max(depth - 1, 0);
    indents.push_back(depth);
    if (op == FlowOp::kRepeat || op == FlowOp::kCondition) ++depth;
  }
  return indents;
}

std::vector<Finding> CheckList(const CommandList& list, const RunStart& start) {
  std::vector<std::string_view> rows;
  for (int row = 1; row <= list.LastUsedRow(); ++row) rows.emplace_back(list.Text(row));
  return CheckList(rows, start);
}

}  // namespace kolvane::script::checker
