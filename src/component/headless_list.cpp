#include "component/headless_list.h"

#include <system_error>

#include "script/command_file.h"

namespace kolvane::component {
namespace {

// In English, as all that is said about the command line itself.
std::string Reason(const script::FileResult& result) {
  if (result.problem == script::FileResult::Problem::kLineTooLong)
    return "a line is too long for a command file";
  return std::generic_category().message(result.error);
}

}  // namespace

HeadlessList::HeadlessList(HeadlessTerminal& terminal, ComponentState& state)
    : terminal_(terminal),
      log_(terminal.log()),
      core_({state.script, state.terminal, state.device, terminal.core().exchange, terminal.pane(),
             terminal.library(), terminal.messages(), log_, *this}) {}

bool HeadlessList::Load(const std::string& file) {
  const auto stop_due = [this](int /*waited_ms*/) { return terminal_.StopDue(); };
  const script::FileResult result = script::LoadCommandFile(core_.list, file, stop_due);
  if (terminal_.stopped()) return false;
  if (!result.ok()) {
    terminal_.messages().ShowError("cannot read the command list '" + file + "': " + Reason(result));
  } else if (core_.list.left_out() > 0) {
    terminal_.messages().ShowError("'" + file + "' is longer than " + std::to_string(script::kListRows) +
                                   " lines, left out: " + std::to_string(core_.list.left_out()));
  }
  return result.ok();
}

CommandRunStatus HeadlessList::Play() {
  core_.runner.Play();
  const script::RunOutcome& outcome = core_.runner.outcome();
  if (outcome.list_error || terminal_.stopped()) return CommandRunStatus::kStopped;
  return outcome.exchange_failed ? CommandRunStatus::kAnswerFailed : CommandRunStatus::kDone;
}

void HeadlessList::Yield() {
  terminal_.pane().EndLine();
  if (terminal_.StopDue()) core_.runner.Abort();
}

}  // namespace kolvane::component
