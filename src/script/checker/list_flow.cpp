#include "script/checker/list_flow.h"

#include <algorithm>
#include <limits>

namespace kolvane::script::checker {
namespace {

constexpr int kDeepest = kLevels - 1;
constexpr std::int32_t kMinCount = std::numeric_limits<std::int32_t>::min();

/// The states after the row, without those that it refuses.
StateSet Passing(const FlowStep& step, int row, const StateSet& run) {
  StateSet next = run;
  switch (step.op) {
    case FlowOp::kRepeat:
      next = {};
      for (int level = StateSet::kLowestLevel; level < kDeepest; ++level)
        if (run.HasLevel(level)) next.Join(run.Raised(level, static_cast<std::int16_t>(row)));
      break;
    case FlowOp::kOpenLog:
      if (run.log == log::kOpen) return {};
      next.log = log::kOpen;
      break;
    case FlowOp::kOpenNoLog:
      if (run.log == log::kOpen) return {};
      next.log = log::kClosed;
      break;
    case FlowOp::kWriteLog:
      if (run.log == log::kClosed) return {};
      next.log = log::kOpen;
      break;
    case FlowOp::kCloseLog:
      next.log = log::kClosed;
      break;
    case FlowOp::kSplitParams:
      next.params = params::kSet;
      break;
    case FlowOp::kGetParam:
      if (run.params == params::kUnset) return {};
      next.params = params::kSet;
      break;
    default:
      break;
  }
  return next;
}

bool MayRefuse(const FlowStep& step, const StateSet& run) {
  switch (step.op) {
    case FlowOp::kRepeat:
      return run.HasLevel(kDeepest) || run.HasLevel(StateSet::kHighestLevel);
    case FlowOp::kOpenLog:
    case FlowOp::kOpenNoLog:
      return (run.log & log::kOpen) != 0;
    case FlowOp::kWriteLog:
      return run.log != log::kOpen;
    case FlowOp::kGetParam:
      return (run.params & params::kUnset) != 0;
    default:
      return false;
  }
}

Refusal RefusalOf(bool may_refuse, bool may_pass) {
  return !may_refuse ? Refusal::kNever : may_pass ? Refusal::kSometimes : Refusal::kAlways;
}

}  // namespace

ListFlow::ListFlow(const std::vector<FlowStep>& steps, const RunStart& start)
    : steps_(steps), start_(start), rows_(steps.size() + 1), waiting_(steps.size() + 1) {
  for (int row = 1; row <= last_row(); ++row) {
    if (Step(row).op != FlowOp::kRepeat) continue;
    any_overflows_ |= Step(row).count == kMinCount;
    if (Step(row).count > 0) loop_rows_.push_back(row);
  }
  for (const std::int32_t count : start.repeat_counts) any_overflows_ |= count == kMinCount;
  if (steps.empty()) return;
  Start();
  FollowPaths();
}

void ListFlow::Start() {
  StateSet first;
  const int level = std::clamp<int>(start_.repeat_level, StateSet::kLowestLevel, StateSet::kHighestLevel);
  first.Add(level, if_depth::Of(start_.if_depth));
  std::fill_n(first.loops.begin(), std::clamp(level + 1, 0, kLevels), loop_at::kEarlier);
  first.params = start_.has_parameters ? params::kSet : params::kUnset;
  first.log = start_.log == LogAtStart::kOpen     ? log::kOpen
              : start_.log == LogAtStart::kClosed ? log::kClosed
                                                  : log::kUnknown;
  (start_.skips_rows ? rows_[1].skipping : rows_[1].executing) = first;
  waiting_[1] = true;
}

void ListFlow::FollowPaths() {
  while (next_ <= last_row()) {
    const int row = next_++;
    if (!waiting_[static_cast<std::size_t>(row)]) continue;
    waiting_[static_cast<std::size_t>(row)] = false;
    Visit(row);
  }
}

void ListFlow::Visit(int row) {
  Row& here = rows_[static_cast<std::size_t>(row)];
  if (++here.visits == kMaxVisits) here.executing = here.skipping = StateSet::Any();
  if (Step(row).op == FlowOp::kEndIf) return ExecuteEndIf(row, here.executing, here.skipping);
  if (!here.skipping.empty()) Continue(row + 1, {}, here.skipping);
  if (!here.executing.empty()) Execute(row, here.executing);
}

void ListFlow::Execute(int row, StateSet run) {
  const FlowStep& step = Step(row);
  switch (step.op) {
    case FlowOp::kStop:
      return;
    case FlowOp::kGoTo:
      return Continue(step.target == 0 ? row + 1 : step.target + 1, run, {});
    case FlowOp::kCondition:
      return ExecuteCondition(row, run);
    case FlowOp::kEndRepeat:
      return ExecuteEndRepeat(row, run);
    default:
      break;
  }
  const StateSet next = Passing(step, row, run);
  rows_[static_cast<std::size_t>(row)].refusal = RefusalOf(MayRefuse(step, run), !next.empty());
  Continue(row + 1, next.empty() ? run : next, {});
}

// Whether the condition holds depends on the device.
void ListFlow::ExecuteCondition(int row, StateSet run) {
  rows_[static_cast<std::size_t>(row)].refusal = RefusalOf((run.AllDepths() & if_depth::kHighest) != 0, true);
  run.IncreaseDepths();
  Continue(row + 1, run, run);
}

// The runner closes conditions in skipped rows too.
void ListFlow::ExecuteEndIf(int row, StateSet run, StateSet skip) {
  const std::uint32_t depths = run.AllDepths() | skip.AllDepths();
  rows_[static_cast<std::size_t>(row)].refusal = RefusalOf((depths & if_depth::kLowest) != 0, true);
  if (Step(row).misspelled) Continue(row + 1, {}, skip);
  run.DecreaseDepths();
  skip.DecreaseDepths();
  Continue(row + 1, run, skip);
}

void ListFlow::ExecuteEndRepeat(int row, const StateSet& run) {
  bool may_refuse = false;
  bool may_pass = false;
  for (int level = StateSet::kLowestLevel; level <= StateSet::kHighestLevel; ++level) {
    if (!run.HasLevel(level)) continue;
    const bool passes = PassEndRepeat(row, run, level);
    may_pass |= passes;
    may_refuse |= !passes || (run.LoopAt(level) == loop_at::kAny && any_overflows_);
  }
  rows_[static_cast<std::size_t>(row)].refusal = RefusalOf(may_refuse, may_pass);
  if (!may_pass) Continue(row + 1, run, {});
}

/// Returns false if the row is refused on this level.
bool ListFlow::PassEndRepeat(int row, const StateSet& run, int level) {
  if (level < 0 || level > kDeepest) return false;
  const std::int16_t loop = run.LoopAt(level);
  if (Overflows(loop, level)) return false;
  if (Repeats(loop, level)) LoopBack(run.At(level), loop);
  Continue(row + 1, run.Lowered(level), {});
  return true;
}

bool ListFlow::Overflows(std::int16_t loop, int level) const {
  if (loop == loop_at::kEarlier) return start_.repeat_counts[static_cast<std::size_t>(level)] == kMinCount;
  return loop > 0 && Step(loop).count == kMinCount;
}

bool ListFlow::Repeats(std::int16_t loop, int level) const {
  if (loop == loop_at::kEarlier) return start_.repeat_counts[static_cast<std::size_t>(level)] > 0;
  return loop == loop_at::kAny || Step(loop).count > 0;
}

void ListFlow::LoopBack(const StateSet& at_level, std::int16_t loop) {
  if (loop == loop_at::kAny) return LoopAnywhere(at_level);
  if (loop > 0) return Continue(loop + 1, at_level, {});
  for (int level = 0; level <= kDeepest; ++level) {
    if (at_level.HasLevel(level))
      Continue(start_.repeat_rows[static_cast<std::size_t>(level)] + 1, at_level, {});
  }
}

void ListFlow::LoopAnywhere(const StateSet& at_level) {
  if (!anywhere_.Join(at_level)) return;
  if (++anywhere_visits_ == kMaxVisits) anywhere_ = StateSet::Any();
  for (const int row : loop_rows_) Continue(row + 1, anywhere_, {});
  for (std::size_t level = 0; level < start_.repeat_rows.size(); ++level) {
    if (start_.repeat_counts[level] > 0) Continue(start_.repeat_rows[level] + 1, anywhere_, {});
  }
}

void ListFlow::Continue(int row, StateSet run, StateSet skip) {
  if (row > last_row()) return;
  row = std::max(row, 1);
  run.Join(skip.TakeDepthZero());
  Row& there = rows_[static_cast<std::size_t>(row)];
  const bool changed = there.executing.Join(run);
  if (!there.skipping.Join(skip) && !changed) return;
  waiting_[static_cast<std::size_t>(row)] = true;
  next_ = std::min(next_, row);
}

}  // namespace kolvane::script::checker
