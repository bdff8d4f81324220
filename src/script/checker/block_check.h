#pragma once

#include <vector>

#include "script/checker/checker.h"
#include "script/checker/list_flow.h"
#include "script/checker/row_words.h"

namespace kolvane::script::checker {

/// Which rows start and end a loop or a condition by the list's text, whatever path a run takes.
class BlockPairs {
 public:
  explicit BlockPairs(const std::vector<FlowStep>& steps);

  /// The other end of the loop or condition that starts or ends at `row`; 0 for none.
  int PartnerOf(int row) const { return At(row).partner; }
  /// The first row of the innermost loop or condition around `row` that has both ends; 0 for none.
  int LoopAround(int row) const { return At(row).loop; }
  int ConditionAround(int row) const { return At(row).condition; }
  /// Whether `row` is inside the loop or condition that starts at `first`.
  bool Holds(int first, int row) const { return first < row && row < PartnerOf(first); }

 private:
  struct Row {
    int partner = 0;
    int loop = 0;
    int condition = 0;
  };

  const Row& At(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  void Pair(const std::vector<FlowStep>& steps, FlowOp begin, FlowOp end);
  void Nest(const std::vector<FlowStep>& steps, FlowOp begin, FlowOp end, int Row::*around);

  std::vector<Row> rows_;  // by row; element 0 is unused
};

/// A whole list with its analysed paths; rows are numbered from 1.
struct CheckedList {
  const std::vector<RowParts>& parts;
  const std::vector<FlowStep>& steps;
  const BlockPairs& pairs;
  const ListFlow& flow;

  int last_row() const { return static_cast<int>(steps.size()); }
  const RowParts& Parts(int row) const { return parts[static_cast<std::size_t>(row - 1)]; }
  const FlowStep& Step(int row) const { return steps[static_cast<std::size_t>(row - 1)]; }
  /// Whether a run can execute the row.
  bool IsReached(int row) const {
    const bool ends_skipping = Step(row).op == FlowOp::kEndIf && !Step(row).misspelled;
    return !flow.At(row).executing.empty() || (ends_skipping && !flow.At(row).skipping.empty());
  }
};

// Each appends what it finds.

/// $REPEAT and $ENDREPEAT.
void CheckLoops(const CheckedList& list, std::vector<Finding>& findings);
/// $IF... and $ENDIF.
void CheckConditions(const CheckedList& list, std::vector<Finding>& findings);

}  // namespace kolvane::script::checker
