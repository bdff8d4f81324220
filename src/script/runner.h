#pragma once

#include <cstdint>
#include <string>

#include "script/interpreter.h"
#include "script/script_links.h"

namespace kolvane::script {

/// What went wrong since a run or step started.
struct RunOutcome {
  bool list_error = false;       ///< a row failed and ended the run
  bool exchange_failed = false;  ///< a command was not written or not answered
};

/// Runs the command list: rows that begin with "$" through the interpreter, all others by an exchange, except
/// comments, empty rows and those of a failed condition. While a run is in progress, requests for another one
/// are refused and forgotten.
class Runner {
 public:
  Runner(CommandList& list, Interpreter& interpreter, ListErrors& errors, const ScriptLinks& links)
      : list_(list), interpreter_(interpreter), errors_(errors), links_(links) {}

  /// TB_PLAY: runs from the first row to the end or until Stop or Break.
  void Play();
  /// Plays from the current row on, ignoring a breakpoint on it. After Break it continues after the row at
  /// which the run ended, if that is still current. Loops and conditions stay as they are.
  void PlayFromHere();
  /// Plays from stopped_before() or from row 1, and stops before `row`.
  void PlayTo(int row);
  /// The row before which a step, Break, a breakpoint or PlayTo has stopped a run; 0 if there is none or the
  /// row highlighted then no longer is.
  int stopped_before() const;
  /// TB_SINGLESTEP: executes the current row, then highlights the row that the next step executes. Past the
  /// last row, or after Stop, it ends loops and conditions and moves on by one row instead; past the last row
  /// it moves to row 1.
  void SingleStep() { RunCommandList(1); }
  /// TB_STOP: ends a run after the current row. Steps taken before the next Play end loops and conditions.
  void Stop();
  /// TB_BREAK: ends a run after the current row.
  void Break() { links_.state.run.BreakRequested = true; }
  /// The front end is closing: a run ends after the current row, and no other one starts.
  void Abort() { aborted_ = true; }

  /// Runs the list as Play does, without its preparation and cleanup (0), or as SingleStep (any other value).
  void RunCommandList(std::int16_t single_step) { Run(single_step, 1, false); }

  bool running() const { return links_.state.run.ScriptRunning != 0; }
  /// Of the current or last run or step.
  const RunOutcome& outcome() const { return outcome_; }
  /// The row that it executed last, even if it failed; 0 if none.
  int last_row() const { return last_row_; }

 private:
  /// Runs from `first` on, with Play's preparation and cleanup. `passes_first`: does not stop before `first`.
  void PlayFrom(int first, bool passes_first);
  void Run(std::int16_t single_step, int first, bool passes_first);
  void RunToEnd(int first, bool passes_first);
  bool IsStopRow(int row) const;
  void Step();
  bool EndRequested() const {
    return links_.state.run.StopRequested || links_.state.run.BreakRequested || aborted_;
  }
  void Highlight(int row);

  /// Executes the current row. Returns false if it ended in an error, which has been reported then.
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
  std::string line_;  ///< the current row, trimmed; a copy, since a message box lets the user edit the list
  int last_row_ = 0;
  int stopped_before_ = 0;
  int broken_at_ = 0;  // the current row when Break ended a run
  int play_to_ = 0;    // the row that PlayTo is to stop before
  bool aborted_ = false;
};

}  // namespace kolvane::script
