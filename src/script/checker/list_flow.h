#pragma once

#include <cstdint>
#include <vector>

#include "script/checker/checker.h"
#include "script/checker/state_set.h"

namespace kolvane::script::checker {

enum class FlowOp : std::uint8_t {
  kPass,
  kRepeat,
  kEndRepeat,
  kCondition,
  kEndIf,
  kGoTo,
  kStop,
  kOpenLog,
  kOpenNoLog,  ///< $OPENLOG with an empty name, for which no log is ever opened
  kWriteLog,
  kCloseLog,
  kSplitParams,
  kGetParam
};

/// How a row affects the course of a run. For a row that is always refused: what it was probably meant to do.
struct FlowStep {
  FlowOp op = FlowOp::kPass;
  std::int32_t count = 0;   ///< kRepeat: the number of repetitions
  int target = 0;           ///< kGoTo: the label's row; 0: none, the run continues with the next row
  bool misspelled = false;  ///< no such command: skipped, the row does nothing
};

enum class Refusal { kNever, kSometimes, kAlways };

/// How a refusal is reported, unless it never happens.
constexpr FindingKind KindOf(Refusal refusal) {
  return refusal == Refusal::kAlways ? FindingKind::kError : FindingKind::kHint;
}

/// Every path that a run can take through a list, whatever the device answers. Per row it holds at least the
/// states that a run can be in there, so "never" and "always" hold for every run and "sometimes" may be too
/// cautious. If all states are refused, the path continues as if the row were not there.
class ListFlow {
 public:
  struct Row {
    StateSet executing;  ///< states before the row in which it is executed
    StateSet skipping;   ///< those in which it is skipped
    Refusal refusal = Refusal::kNever;
    int visits = 0;
  };

  ListFlow(const std::vector<FlowStep>& steps, const RunStart& start);

  const Row& At(int row) const { return rows_[static_cast<std::size_t>(row)]; }

 private:
  static constexpr int kMaxVisits = 64;  // after that a row gets all states

  void Start();
  void FollowPaths();
  void Visit(int row);
  void Execute(int row, StateSet run);
  void ExecuteCondition(int row, StateSet run);
  void ExecuteEndIf(int row, StateSet run, StateSet skip);
  void ExecuteEndRepeat(int row, const StateSet& run);
  bool PassEndRepeat(int row, const StateSet& run, int level);
  void LoopBack(const StateSet& at_level, std::int16_t loop);
  void LoopAnywhere(const StateSet& at_level);
  void Continue(int row, StateSet run, StateSet skip);

  bool Overflows(std::int16_t loop, int level) const;
  bool Repeats(std::int16_t loop, int level) const;
  const FlowStep& Step(int row) const { return steps_[static_cast<std::size_t>(row - 1)]; }
  int last_row() const { return static_cast<int>(steps_.size()); }

  const std::vector<FlowStep>& steps_;
  const RunStart& start_;
  std::vector<Row> rows_;  // by row; element 0 is unused
  std::vector<bool> waiting_;
  int next_ = 1;       // no row before it waits
  StateSet anywhere_;  // before the jump back of an $ENDREPEAT whose $REPEAT is unknown
  int anywhere_visits_ = 0;
  std::vector<int> loop_rows_;
  bool any_overflows_ = false;
};

}  // namespace kolvane::script::checker
