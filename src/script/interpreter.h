#pragma once

#include <string_view>
#include <utility>

#include "base/prompt.h"
#include "script/command_list.h"
#include "script/script_links.h"
#include "script/special_line.h"

namespace kolvane::script {

/// Reports an error in a command list and ends the run.
class ListErrors {
 public:
  ListErrors(CommandList& list, base::Prompt& prompt) : list_(list), prompt_(prompt) {}

  /// Shows `error` with the number of the current row, highlights that row and makes the last row current.
  void Report(std::string_view error);

 private:
  CommandList& list_;
  base::Prompt& prompt_;
};

/// Executes the rows that begin with "$". It controls a run only by the list's current row and its state.
class Interpreter {
 public:
  Interpreter(CommandList& list, ListErrors& errors, const ScriptLinks& links)
      : list_(list), errors_(errors), links_(links) {}

  /// Executes `line`, the current row. Returns false if it ended in an error, which has been reported then;
  /// changes made before the error stay.
  bool RunSpecialCommand(std::string_view line);

  /// Whether a $READ has got no answer since the last call.
  bool TakeReadFailed() { return std::exchange(read_failed_, false); }

  /// Resets what rows have set for the rest of their run.
  void ForgetRunSettings() { links_.terminal.answers_of_run.reset(); }

 private:
  /// Returns the error's text, empty if there is none.
  using Action = std::string_view (Interpreter::*)(const SpecialLine&);
  struct Command {
    SpecialCommand special;
    Action action;
  };
  static const Command kCommands[];

  std::string_view Execute(const SpecialLine& line);
  std::string_view Repeat(const SpecialLine& line);
  std::string_view EndRepeat(const SpecialLine& line);
  std::string_view Delay(const SpecialLine& line);
  std::string_view Stop(const SpecialLine& line);
  std::string_view IfError(const SpecialLine& line);
  std::string_view IfEqual(const SpecialLine& line);
  std::string_view IfGreater(const SpecialLine& line);
  std::string_view IfLess(const SpecialLine& line);
  std::string_view EndIf(const SpecialLine& line);
  std::string_view GoTo(const SpecialLine& line);
  std::string_view OpenLog(const SpecialLine& line);
  std::string_view WriteLog(const SpecialLine& line);
  std::string_view CloseLog(const SpecialLine& line);
  std::string_view SplitParams(const SpecialLine& line);
  std::string_view GetParam(const SpecialLine& line);
  std::string_view Clear(const SpecialLine& line);
  std::string_view Silent(const SpecialLine& line);
  std::string_view AutoLog(const SpecialLine& line);
  std::string_view Flush(const SpecialLine& line);
  std::string_view Read(const SpecialLine& line);
  std::string_view Answers(const SpecialLine& line);

  std::string_view Condition(bool holds);

  CommandList& list_;
  ListErrors& errors_;
  ScriptLinks links_;
  bool read_failed_ = false;
};

}  // namespace kolvane::script
