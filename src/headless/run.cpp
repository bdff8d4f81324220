#include "headless/run.h"

#include <system_error>

#include "script/checker/check_texts.h"
#include "script/checker/checker.h"
#include "script/command_file.h"

namespace kolvane::headless {
namespace {

// In English, as all that is said about the command line itself.
std::string Reason(const script::FileResult& result) {
  if (result.problem == script::FileResult::Problem::kLineTooLong)
    return "a line is too long for a command file";
  return std::generic_category().message(result.error);
}

std::string CannotRead(const std::string& file, const script::FileResult& result) {
  return "cannot read the command list '" + file + "': " + Reason(result);
}

}  // namespace

List::List(Terminal& terminal, RunState& state)
    : terminal_(terminal),
      core_({state.script, state.terminal, state.device, terminal.core().exchange, terminal.pane(),
             terminal.core().waits, terminal.messages(), terminal.log(), *this}) {}

bool List::Load(const std::string& file) {
  const auto stop_due = [this](int /*waited_ms*/) { return terminal_.StopDue(); };
  const script::FileResult result = script::LoadCommandFile(core_.list, file, stop_due);
  if (terminal_.stopped()) return false;
  if (!result.ok()) {
    terminal_.messages().ShowError(CannotRead(file, result));
  } else if (core_.list.left_out() > 0) {
    terminal_.messages().ShowError("'" + file + "' is longer than " + std::to_string(script::kListRows) +
                                   " lines, left out: " + std::to_string(core_.list.left_out()));
  }
  return result.ok();
}

CommandRunStatus List::Play() {
  core_.runner.Play();
  const script::RunOutcome& outcome = core_.runner.outcome();
  if (terminal_.ConnectionGone()) return CommandRunStatus::kNotConnected;
  if (outcome.list_error || terminal_.stopped()) return CommandRunStatus::kStopped;
  return outcome.exchange_failed ? CommandRunStatus::kAnswerFailed : CommandRunStatus::kDone;
}

void List::Yield() {
  terminal_.pane().EndLine();
  if (terminal_.StopDue() || terminal_.ConnectionGone()) core_.runner.Abort();
}

CommandRunStatus RunList(const RunSetup& setup, const std::string& file) {
  Terminal terminal(setup);
  List list(terminal, setup.state);
  if (!list.Load(file)) return terminal.stopped() ? CommandRunStatus::kStopped : CommandRunStatus::kUsage;
  if (!terminal.Connect()) return CommandRunStatus::kNotConnected;
  return terminal.StopDue() ? CommandRunStatus::kStopped : list.Play();
}

CommandRunStatus SendAll(const RunSetup& setup, const std::vector<std::string>& commands) {
  Terminal terminal(setup);
  if (!terminal.Connect()) return CommandRunStatus::kNotConnected;
  bool all_done = true;
  for (const std::string& command : commands) {
    if (terminal.StopDue()) break;
    all_done &= !terminal.core().exchange.Run(command, terminal::Sender::kList).Failed();
    terminal.pane().EndLine();
    if (terminal.ConnectionGone()) return CommandRunStatus::kNotConnected;
  }
  if (terminal.StopDue()) return CommandRunStatus::kStopped;
  return all_done ? CommandRunStatus::kDone : CommandRunStatus::kAnswerFailed;
}

namespace {

ListFinding Public(const script::checker::Finding& finding) {
  return {finding.row, finding.kind == script::checker::FindingKind::kError, finding.text,
          finding.replacement, finding.other_row};
}

ListFinding LeftOut(std::size_t lines) {
  constexpr int kFirst = script::kListRows + 1;
  const int last = script::kListRows + static_cast<int>(lines);
  return {kFirst, false, script::checker::texts::BeyondTheList(kFirst, last), {}, 0};
}

CheckedCommandList CheckFile(const std::string& file) {
  CheckedCommandList checked{file, {}, {}};
  script::CommandList list;
  const script::FileResult result = script::LoadCommandFile(list, file);
  if (!result.ok()) {
    checked.Problem = CannotRead(file, result);
    return checked;
  }
  for (const script::checker::Finding& finding : script::checker::CheckList(list))
    checked.Findings.push_back(Public(finding));
  if (list.left_out() > 0) checked.Findings.push_back(LeftOut(list.left_out()));
  return checked;
}

}  // namespace

std::vector<CheckedCommandList> CheckFiles(const std::vector<std::string>& files) {
  std::vector<CheckedCommandList> checked;
  for (const std::string& file : files) checked.push_back(CheckFile(file));
  return checked;
}

}  // namespace kolvane::headless
