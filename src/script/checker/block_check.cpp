#include "script/checker/block_check.h"

#include "script/checker/check_texts.h"

namespace kolvane::script::checker {

BlockPairs::BlockPairs(const std::vector<FlowStep>& steps) : rows_(steps.size() + 1) {
  Pair(steps, FlowOp::kRepeat, FlowOp::kEndRepeat);
  Pair(steps, FlowOp::kCondition, FlowOp::kEndIf);
  Nest(steps, FlowOp::kRepeat, FlowOp::kEndRepeat, &Row::loop);
  Nest(steps, FlowOp::kCondition, FlowOp::kEndIf, &Row::condition);
}

void BlockPairs::Pair(const std::vector<FlowStep>& steps, FlowOp begin, FlowOp end) {
  std::vector<int> open;
  for (int row = 1; row < static_cast<int>(rows_.size()); ++row) {
    const FlowOp op = steps[static_cast<std::size_t>(row - 1)].op;
    if (op == begin) open.push_back(row);
    if (op != end || open.empty()) continue;
    rows_[static_cast<std::size_t>(row)].partner = open.back();
    rows_[static_cast<std::size_t>(open.back())].partner = row;
    open.pop_back();
  }
}

void BlockPairs::Nest(const std::vector<FlowStep>& steps, FlowOp begin, FlowOp end, int Row::*around) {
  std::vector<int> open;
  for (int row = 1; row < static_cast<int>(rows_.size()); ++row) {
    const FlowOp op = steps[static_cast<std::size_t>(row - 1)].op;
    const bool paired = PartnerOf(row) != 0;
    if (op == end && paired) open.pop_back();
    rows_[static_cast<std::size_t>(row)].*around = open.empty() ? 0 : open.back();
    if (op == begin && paired) open.push_back(row);
  }
}

namespace {

/// Whether $ENDREPEAT can be executed without a $REPEAT of this run.
bool MayHaveNoLoop(const StateSet& run) {
  if (run.HasLevel(StateSet::kLowestLevel)) return true;
  for (int level = 0; level < kLevels; ++level)
    if (run.HasLevel(level) && run.LoopAt(level) == loop_at::kEarlier) return true;
  return false;
}

/// The row of the innermost open $REPEAT; 0 if it can be more than one.
int InnermostLoop(const StateSet& run) {
  int loop = 0;
  for (int level = 0; level < kLevels; ++level) {
    if (!run.HasLevel(level)) continue;
    if (run.LoopAt(level) <= 0 || (loop != 0 && loop != run.LoopAt(level))) return 0;
    loop = run.LoopAt(level);
  }
  return loop;
}

class LoopCheck {
 public:
  LoopCheck(const CheckedList& list, std::vector<Finding>& findings) : list_(list), findings_(findings) {}

  void Run() {
    for (int row = 1; row <= list_.last_row(); ++row) {
      if (list_.Step(row).op == FlowOp::kRepeat) CheckOpening(row);
      if (list_.Step(row).op != FlowOp::kEndRepeat) continue;
      CheckEnd(row);
      CheckCrossing(row);
    }
  }

 private:
  void Add(int row, FindingKind kind, std::string text, int other_row = 0) {
    findings_.push_back({row, kind, std::move(text), {}, other_row});
  }

  void CheckOpening(int row) {
    const Refusal refusal = list_.flow.At(row).refusal;
    const bool always = refusal == Refusal::kAlways;
    too_deep_ |= always;
    if (refusal != Refusal::kNever)
      Add(row, KindOf(refusal), std::string(always ? texts::kTooDeep : texts::kPerhapsTooDeep));
    if (list_.pairs.PartnerOf(row) == 0) Add(row, FindingKind::kHint, std::string(texts::kLoopWithoutEnd));
  }

  // After a loop that is too deep to open, the ends of the loops around it come one too early.
  void CheckEnd(int row) {
    const Refusal refusal = list_.flow.At(row).refusal;
    const int loop = list_.pairs.PartnerOf(row);
    if (loop == 0) {
      Add(row, KindOf(refusal), std::string(texts::kEndWithoutLoop));
    } else if (!too_deep_ || refusal != Refusal::kNever) {
      CheckCount(row, loop, refusal);
    }
  }

  void CheckCount(int row, int loop, Refusal refusal) {
    const StateSet& states = list_.flow.At(row).executing;
    if (MayHaveNoLoop(states)) {
      const bool always = refusal == Refusal::kAlways;
      Add(row, KindOf(refusal),
          always ? std::string(texts::kEndWithoutLoop) : texts::PerhapsWithoutLoop(loop), loop);
    } else if (states.HasLevel(StateSet::kHighestLevel)) {
      Add(row, KindOf(refusal), std::string(texts::kTooDeep), loop);
    } else if (refusal != Refusal::kNever) {
      const int innermost = InnermostLoop(states);
      const int counting = innermost == 0 ? loop : innermost;
      Add(row, KindOf(refusal), texts::CountOverflows(counting), counting);
    }
  }

  /// A loop that begins inside a condition and ends outside, or the other way round.
  void CheckCrossing(int end) {
    const int loop = list_.pairs.PartnerOf(end);
    if (loop == 0) return;
    const int around_begin = list_.pairs.ConditionAround(loop);
    const int around_end = list_.pairs.ConditionAround(end);
    if (around_begin == around_end) return;
    const int condition = around_end > loop ? around_end : around_begin;
    Add(end, FindingKind::kHint, texts::LoopCrossesCondition(loop, condition), condition);
  }

  const CheckedList& list_;
  std::vector<Finding>& findings_;
  bool too_deep_ = false;
};

}  // namespace

void CheckLoops(const CheckedList& list, std::vector<Finding>& findings) { LoopCheck(list, findings).Run(); }

namespace {

class ConditionCheck {
 public:
  ConditionCheck(const CheckedList& list, std::vector<Finding>& findings)
      : list_(list), findings_(findings) {}

  void Run() {
    for (int row = 1; row <= list_.last_row(); ++row) {
      if (list_.Step(row).op == FlowOp::kCondition) CheckOpening(row);
      if (list_.Step(row).op == FlowOp::kEndIf) CheckEnd(row);
    }
  }

 private:
  void Add(int row, std::string text, int other_row = 0) {
    findings_.push_back({row, FindingKind::kHint, std::move(text), {}, other_row});
  }

  void CheckOpening(int row) {
    const ListFlow::Row& paths = list_.flow.At(row);
    const int outer = list_.pairs.ConditionAround(row);
    if (list_.pairs.PartnerOf(row) == 0) {
      Add(row, std::string(texts::kConditionWithoutEnd));
    } else if (paths.refusal != Refusal::kNever) {
      adds_up_ = true;
      Add(row, std::string(texts::kConditionsAddUp));
    }
    if (outer == 0 || paths.skipping.empty()) return;
    miscounted_ = true;
    Add(row, texts::NestedCondition(outer), outer);
  }

  // One miscount makes every later $ENDIF wrong. Only the first is reported, and those that can be refused.
  void CheckEnd(int row) {
    const ListFlow::Row& paths = list_.flow.At(row);
    const std::uint32_t depths = paths.executing.AllDepths() | paths.skipping.AllDepths();
    const bool unpaired = list_.pairs.PartnerOf(row) == 0;
    if ((depths & if_depth::kNotOpen) != 0 &&
        (unpaired || !miscounted_ || paths.refusal != Refusal::kNever)) {
      miscounted_ = true;
      const bool never_open = (depths & ~if_depth::kNotOpen) == 0;
      Add(row, std::string(never_open ? texts::kEndWithoutCondition : texts::kPerhapsWithoutCondition));
    } else if ((paths.skipping.AllDepths() & if_depth::kSeveral) != 0 && !miscounted_ &&
               list_.pairs.ConditionAround(row) == 0) {
      miscounted_ = true;
      CheckLeftOpen(row);
    }
  }

  /// Reports the jumps that leave a condition open, so that `end` does not close its own.
  void CheckLeftOpen(int end) {
    bool found = false;
    for (int row = 1; row <= list_.last_row(); ++row) {
      const int condition = list_.pairs.ConditionAround(row);
      if (condition == 0 || !LeavesOpen(row, condition)) continue;
      Add(row, texts::JumpLeavesCondition(condition, end), end);
      found = true;
    }
    if (!found && !adds_up_) Add(end, std::string(texts::kEarlierConditionOpen));
  }

  bool LeavesOpen(int row, int condition) const {
    const int target = list_.Step(row).target;
    return target != 0 && list_.IsReached(row) && target != condition &&
           !list_.pairs.Holds(condition, target) && !ClosesNext(target);
  }

  /// Whether the next row after `target` that opens or closes a condition closes one.
  bool ClosesNext(int target) const {
    for (int row = target + 1; row <= list_.last_row(); ++row) {
      const FlowOp op = list_.Step(row).op;
      if (op == FlowOp::kEndIf) return true;
      if (op == FlowOp::kCondition || op == FlowOp::kGoTo || op == FlowOp::kStop) return false;
    }
    return false;
  }

  const CheckedList& list_;
  std::vector<Finding>& findings_;
  bool miscounted_ = false;
  bool adds_up_ = false;
};

}  // namespace

void CheckConditions(const CheckedList& list, std::vector<Finding>& findings) {
  ConditionCheck(list, findings).Run();
}

}  // namespace kolvane::script::checker
