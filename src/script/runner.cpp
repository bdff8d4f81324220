#include "script/runner.h"

#include "base/encoding.h"
#include "base/runtime_error.h"
#include "base/scope_exit.h"
#include "base/text.h"
#include "device/sendable.h"
#include "script/special_line.h"
#include "terminal/texts.h"

namespace kolvane::script {
namespace {

constexpr std::string_view kEndIf = "$ENDIF";

}  // namespace

int Runner::stopped_before() const {
  const auto* mark = list_.HighlightOf(broken_at_ != 0 ? broken_at_ : stopped_before_);
  return mark != nullptr && *mark == kRunningRow ? stopped_before_ : 0;
}

void Runner::Play() { PlayFrom(1, false); }

void Runner::PlayFromHere() {
  const int row = list_.current_row();
  PlayFrom(broken_at_ == row && stopped_before() != 0 ? row + 1 : row, true);
}

void Runner::PlayTo(int row) {
  if (running()) return;
  play_to_ = row;
  const base::ScopeExit reset([this] { play_to_ = 0; });
  const int stopped = stopped_before();
  PlayFrom(stopped != 0 ? stopped : 1, stopped != 0);
}

void Runner::PlayFrom(int first, bool passes_first) {
  if (running() || aborted_) return;
  // Locking may fail half-way if memory runs out.
  const base::ScopeExit unlock([this] { links_.host.LockGUI(false); });
  links_.host.LockGUI(true);
  links_.state.run.StopRequested = false;
  links_.state.run.BreakRequested = false;
  // Continuing later belongs to the same run.
  if (first == 1) interpreter_.ForgetRunSettings();
  Run(0, first, passes_first);
  if (list_.current_row() > kListRows || links_.state.run.StopRequested) interpreter_.ForgetRunSettings();
}

void Runner::Stop() {
  links_.state.run.StopRequested = true;
  // A run that is interrupted ends here.
  if (!running()) interpreter_.ForgetRunSettings();
  list_.ClearLineSelection(stopped_before_);
  stopped_before_ = 0;
  list_.ClearLineSelection(list_.current_row());
}

void Runner::Run(std::int16_t single_step, int first, bool passes_first) {
  if (running() || aborted_) return;
  links_.state.run.ScriptRunning = 1;
  const base::ScopeExit ended([this] { links_.state.run.ScriptRunning = 0; });
  outcome_ = {};
  last_row_ = 0;
  if (single_step == 0) {
    RunToEnd(first, passes_first);
  } else {
    Step();
  }
}

[[gnu::hot]] void Runner::RunToEnd(int first, bool passes_first) {
  InterpreterState& state = links_.state.interpreter;
  list_.ClearLineSelection(stopped_before_);
  list_.ClearLineSelection(list_.current_row());
  stopped_before_ = 0;
  broken_at_ = 0;
  list_.SetCurrentRow(first - 1);
  for (bool passes = passes_first; !EndRequested(); passes = false) {
    list_.ClearLineSelection(list_.current_row());
    list_.SetCurrentRow(list_.current_row() + 1);
    if (list_.current_row() > kListRows) break;
    Highlight(list_.current_row());
    if (!passes && IsStopRow(list_.current_row())) {
      stopped_before_ = list_.current_row();
      return;
    }
    links_.host.RowStarts();
    ExecuteRow();
    if (state.IfDepth == 0) state.SkipRows = false;
    links_.host.Yield();
  }
  if (!links_.state.run.BreakRequested || links_.state.run.StopRequested || outcome_.list_error) return;
  broken_at_ = list_.current_row();
  stopped_before_ = broken_at_ < kListRows ? broken_at_ + 1 : 0;
}

// Rows of a failed condition are skipped.
bool Runner::IsStopRow(int row) const {
  return !links_.state.interpreter.SkipRows && (row == play_to_ || list_.HasBreakpoint(row));
}

void Runner::Step() {
  const int row = list_.current_row();
  broken_at_ = 0;
  if (stopped_before_ != row) list_.ClearLineSelection(stopped_before_);
  if (ExecuteRow()) {
    list_.ClearLineSelection(row);
    list_.ClearLineSelection(list_.current_row());
  }
  if (list_.current_row() > kListRows || links_.state.run.StopRequested) return EndStepping();
  StepOverFailedCondition();
  list_.SetCurrentRow(list_.current_row() + 1);
  Highlight(list_.current_row());
  stopped_before_ = list_.current_row();
}

void Runner::EndStepping() {
  stopped_before_ = 0;
  links_.state.interpreter.CloseBlocks();
  interpreter_.ForgetRunSettings();
  const int row = list_.current_row();
  list_.SetCurrentRow(row > kListRows ? 1 : row + 1);
}

void Runner::StepOverFailedCondition() {
  while (links_.state.interpreter.SkipRows && list_.current_row() < kListRows) {
    list_.SetCurrentRow(list_.current_row() + 1);
    ExecuteRow();
  }
}

void Runner::Highlight(int row) {
  list_.HighlightLine(row, kRunningRow.back, kRunningRow.fore, kRunningRow.bold);
}

[[gnu::hot]] bool Runner::ExecuteRow() {
  line_ = base::TrimSpaces(list_.Text(list_.current_row()));
  try {
    if (LineEndsCondition()) EndIf();
    return line_.empty() || line_.front() == '\'' || links_.state.interpreter.SkipRows || ExecuteLine();
  } catch (const base::RuntimeError& error) {
    errors_.Report(error.what());
    outcome_.list_error = true;
    return false;
  }
}

bool Runner::ExecuteLine() {
  last_row_ = list_.current_row();
  const bool done = line_.front() == '$' ? interpreter_.RunSpecialCommand(line_) : SendLine();
  outcome_.exchange_failed |= interpreter_.TakeReadFailed();
  outcome_.list_error |= !done;
  return done;
}

// The device would receive another command: "MEAS:RES 5 Ω" would arrive as a query.
[[gnu::hot]] bool Runner::SendLine() {
  const std::string_view character = device::UnsendableCharacter(links_.device, line_);
  if (character.empty()) {
    outcome_.exchange_failed |= links_.exchange.Run(line_, terminal::Sender::kList).Failed();
  } else {
    errors_.Report(terminal::texts::NotSendable(character));
  }
  return character.empty();
}

bool Runner::LineEndsCondition() const { return base::EqualsNoCase(line_, kEndIf); }

void Runner::EndIf() {
  InterpreterState& state = links_.state.interpreter;
  AddChecked<std::int16_t>(state.IfDepth, -1);
  if (state.IfDepth == 0) state.SkipRows = false;
}

}  // namespace kolvane::script
