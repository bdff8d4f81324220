#include "script/interpreter.h"

#include "base/number.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "script/special_line.h"
#include "script/texts.h"

namespace kolvane::script {
namespace {

constexpr std::string_view kDone;

/// Applies ON or OFF in any case; any other word changes nothing.
void Switch(bool& flag, std::string_view word) {
  if (base::EqualsNoCase(word, kOn)) flag = true;
  if (base::EqualsNoCase(word, kOff)) flag = false;
}

}  // namespace

void ListErrors::Report(std::string_view error) {
  const int row = list_.current_row();
  list_.NoteError(row, error);
  prompt_.ShowListError(texts::ErrorInRow(row, error), error);
  list_.HighlightLine(row, kErrorRow.back, kErrorRow.fore, kErrorRow.bold);
  list_.SetCurrentRow(kListRows);
}

const Interpreter::Command Interpreter::kCommands[] = {
    {SpecialCommand::kRepeat, &Interpreter::Repeat},
    {SpecialCommand::kEndRepeat, &Interpreter::EndRepeat},
    {SpecialCommand::kDelay, &Interpreter::Delay},
    {SpecialCommand::kStop, &Interpreter::Stop},
    {SpecialCommand::kIfError, &Interpreter::IfError},
    {SpecialCommand::kIfEqual, &Interpreter::IfEqual},
    {SpecialCommand::kIfGreater, &Interpreter::IfGreater},
    {SpecialCommand::kIfLess, &Interpreter::IfLess},
    {SpecialCommand::kEndIf, &Interpreter::EndIf},
    {SpecialCommand::kGoTo, &Interpreter::GoTo},
    {SpecialCommand::kOpenLog, &Interpreter::OpenLog},
    {SpecialCommand::kWriteLog, &Interpreter::WriteLog},
    {SpecialCommand::kCloseLog, &Interpreter::CloseLog},
    {SpecialCommand::kSplitParams, &Interpreter::SplitParams},
    {SpecialCommand::kGetParam, &Interpreter::GetParam},
    {SpecialCommand::kClear, &Interpreter::Clear},
    {SpecialCommand::kSilent, &Interpreter::Silent},
    {SpecialCommand::kAutoLog, &Interpreter::AutoLog},
    {SpecialCommand::kFlush, &Interpreter::Flush},
    {SpecialCommand::kRead, &Interpreter::Read},
    {SpecialCommand::kAnswers, &Interpreter::Answers},
};

bool Interpreter::RunSpecialCommand(std::string_view line) {
  try {
    const std::string_view error = Execute(SpecialLine(line));
    if (error.empty()) return true;
    errors_.Report(error);
  } catch (const base::RuntimeError& error) {
    errors_.Report(error.what());
  }
  return false;
}

std::string_view Interpreter::Execute(const SpecialLine& line) {
  const SpecialWord* word = FindSpecialWord(line.Command());
  if (word == nullptr) return texts::kUnknownCommand;
  for (const Command& command : kCommands) {
    if (command.special == word->command) return (this->*command.action)(line);
  }
  return texts::kUnknownCommand;
}

std::string_view Interpreter::Repeat(const SpecialLine& line) {
  InterpreterState& state = links_.state.interpreter;
  AddChecked<std::int16_t>(state.RepeatLevel, 1);
  const std::int32_t passes = base::RoundToInt32(line.Number());
  At(state.RepeatCount, state.RepeatLevel) = passes;
  At(state.RepeatRow, state.RepeatLevel) = static_cast<std::int16_t>(list_.current_row());
  return kDone;
}

// The block has run once when its end is reached for the first time, hence n + 1 passes.
std::string_view Interpreter::EndRepeat(const SpecialLine& /*line*/) {
  InterpreterState& state = links_.state.interpreter;
  std::int32_t& passes = At(state.RepeatCount, state.RepeatLevel);
  AddChecked<std::int32_t>(passes, -1);
  if (passes >= 0) {
    list_.ClearLineSelection(list_.current_row());
    list_.SetCurrentRow(At(state.RepeatRow, state.RepeatLevel));
  } else {
    AddChecked<std::int16_t>(state.RepeatLevel, -1);
  }
  return kDone;
}

std::string_view Interpreter::Delay(const SpecialLine& line) {
  const std::int32_t milliseconds = base::RoundToInt32(line.Number());
  links_.device.last_result = links_.waits.Delay(milliseconds);
  return kDone;
}

std::string_view Interpreter::Stop(const SpecialLine& /*line*/) {
  list_.SetCurrentRow(kListRows);
  return kDone;
}

std::string_view Interpreter::IfError(const SpecialLine& /*line*/) {
  return Condition(links_.terminal.last_answer.text.starts_with('?') || links_.device.last_result < 0);
}

// Compared as texts, not as numbers; the argument is the left operand.
std::string_view Interpreter::IfEqual(const SpecialLine& line) {
  return Condition(line.Argument() == links_.state.interpreter.ParamValue);
}

std::string_view Interpreter::IfGreater(const SpecialLine& line) {
  return Condition(line.Argument() > links_.state.interpreter.ParamValue);
}

std::string_view Interpreter::IfLess(const SpecialLine& line) {
  return Condition(line.Argument() < links_.state.interpreter.ParamValue);
}

std::string_view Interpreter::Condition(bool holds) {
  links_.state.interpreter.SkipRows = !holds;
  AddChecked<std::int16_t>(links_.state.interpreter.IfDepth, 1);
  return kDone;
}

// The runner closes the condition, because it must do so in skipped rows too.
std::string_view Interpreter::EndIf(const SpecialLine& /*line*/) { return kDone; }

std::string_view Interpreter::GoTo(const SpecialLine& line) {
  const std::string target = std::string(line.Argument()) + ":";
  list_.ClearLineSelection(list_.current_row());
  for (int row = 1; row <= kListRows; ++row) {
    list_.SetCurrentRow(row);
    if (base::EqualsNoCase(list_.Text(row), target)) return kDone;
  }
  return texts::kNoJumpTarget;
}

std::string_view Interpreter::OpenLog(const SpecialLine& line) {
  if (links_.log.IsOpen()) return texts::kLogAlreadyOpen;
  links_.log.OpenLog(std::string(line.Unquoted()));
  return kDone;
}

std::string_view Interpreter::WriteLog(const SpecialLine& line) {
  if (!links_.log.IsOpen()) return texts::kNoLogOpen;
  links_.log.WriteLine(line.Unquoted());
  return kDone;
}

std::string_view Interpreter::CloseLog(const SpecialLine& /*line*/) {
  links_.log.CloseLog();
  return kDone;
}

std::string_view Interpreter::SplitParams(const SpecialLine& /*line*/) {
  links_.state.interpreter.ParamList = links_.terminal.last_answer.Fields();
  return kDone;
}

std::string_view Interpreter::GetParam(const SpecialLine& line) {
  const std::vector<std::string>& fields = links_.state.interpreter.ParamList;
  const double position = line.Number();
  if (fields.empty()) throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
  if (position < 1 || position > static_cast<double>(fields.size())) return texts::kNoSuchParameter;
  links_.state.interpreter.ParamValue = fields[static_cast<std::size_t>(base::RoundToInt32(position - 1))];
  return kDone;
}

std::string_view Interpreter::Clear(const SpecialLine& /*line*/) {
  links_.pane.Clear();
  return kDone;
}

std::string_view Interpreter::Silent(const SpecialLine& line) {
  Switch(links_.terminal.output.SilentMode, line.Argument());
  return kDone;
}

std::string_view Interpreter::AutoLog(const SpecialLine& line) {
  Switch(links_.terminal.output.log_recording, line.Argument());
  return kDone;
}

std::string_view Interpreter::Flush(const SpecialLine& /*line*/) {
  links_.exchange.Flush();
  return kDone;
}

std::string_view Interpreter::Read(const SpecialLine& /*line*/) {
  read_failed_ |= links_.exchange.Read(terminal::Sender::kList).Failed();
  return kDone;
}

std::string_view Interpreter::Answers(const SpecialLine& line) {
  const bool queries = base::EqualsNoCase(line.Argument(), kQueries);
  if (!queries && !base::EqualsNoCase(line.Argument(), kAlways)) return texts::kUnknownCommand;
  links_.terminal.answers_of_run = queries;
  return kDone;
}

}  // namespace kolvane::script
