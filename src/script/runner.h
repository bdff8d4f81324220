#pragma once

#include <cstdint>
#include <string>

#include "script/interpreter.h"
#include "script/script_links.h"

namespace kolvane::script {

/// What went wrong since a run or step began.
struct RunOutcome {
  bool list_error = false;       ///< a row ended in an error, which ended the run
  bool exchange_failed = false;  ///< a command was not written or not answered
};

/// Runs the command list: rows that begin with "$" through the interpreter, all others but comments, empty
/// ones and those of a failed condition by an exchange. A run that is on is never entered again:
/// whatever asks for another one in the meantime is refused and forgotten.
class Runner {
 public:
  Runner(CommandList& list, Interpreter& interpreter, ListErrors& errors, const ScriptLinks& links)
      : list_(list), interpreter_(interpreter), errors_(errors), links_(links) {}

  /// TB_PLAY: from the first row to the end or until Stop or Break.
  void Play();
  /// Plays from the current row on, whatever breakpoint that has. After Break it goes on after the row in
  /// hand, as long as that is the current one. Loops and conditions stay as they are.
  void PlayFromHere();
  /// The next PlayOn, which plays from where a run stands, else from the first row, stops before `row`.
  void StopBefore(int row) { stop_before_ = row; }
  void PlayOn() { PlayFrom(stands_at() != 0 ? stands_at() : 1); }
  /// The row before which a run stands that a step, Break, a breakpoint or PlayOn has ended; 0 for none, and
  /// where the row that was marked then is another by now.
  int stands_at() const;
  /// TB_SINGLESTEP: the current row. The row that the next step executes is highlighted then. Past the last
  /// row, or after Stop, the loops and conditions end and the position moves on by one row instead; past the
  /// last row it moves to row 1.
  void SingleStep() { RunCommandList(1); }
  /// TB_STOP: ends a run after the row in hand. Steps taken before the next Play end loops and conditions.
  void Stop();
  /// TB_BREAK: ends a run after the row in hand.
  void Break() { links_.state.run.BreakRequested = true; }
  /// The front end goes away: a run ends after the row in hand, and none begins any more.
  void Abort() { aborted_ = true; }

  /// Play without what it does around a run (0), or SingleStep (anything else).
  void RunCommandList(std::int16_t single_step) { Run(single_step, 1); }

  bool running() const { return links_.state.run.ScriptRunning != 0; }
  /// Of the run or step in hand, or the last one.
  const RunOutcome& outcome() const { return outcome_; }
  /// The row that it carried out last, be it in vain; 0 where none was.
  int last_row() const { return last_row_; }

 private:
  /// What Play does around a run from `first` on.
  void PlayFrom(int first);
  void Run(std::int16_t single_step, int first);
  void RunToEnd(int first);
  bool StopsBefore(int row) const;
  void Step();
  bool EndRequested() const {
    return links_.state.run.StopRequested || links_.state.run.BreakRequested || aborted_;
  }
  void Highlight(int row);

  /// The current row. Returns false where it ended in an error, which has been reported then.
  bool ExecuteRow();
  bool ExecuteLine();
  bool SendLine();

  bool LineEndsCondition() const;
  void EndIf();

  void EndStepping();
  void StepOverFailedCondition();

  CommandList& list_;
  Interpreter& interpreter_;
  ListErrors& errors_;
  ScriptLinks links_;
  RunOutcome outcome_;
  std::string line_;  ///< the row in hand, trimmed; a copy, since a message box lets the user edit the list
  int last_row_ = 0;
  int stands_at_ = 0;
  int broken_at_ = 0;  // the row in hand when Break ended a run
  int stop_before_ = 0;
  bool aborted_ = false;
};

}  // namespace kolvane::script
