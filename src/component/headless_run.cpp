#include <unistd.h>

#include <optional>
#include <variant>

#include "base/number.h"
#include "base/runtime_error.h"
#include "component/chosen_node.h"
#include "component/folder.h"
#include "component/headless_list.h"
#include "component/headless_settings.h"
#include "component/headless_terminal.h"
#include "device/operating_mode.h"
#include "kolvane/CommandRun.h"
#include "terminal/response_clock.h"
#include "terminal/texts.h"

namespace kolvane {
namespace {

using component::ComponentState;
using component::HeadlessTerminal;
using Status = CommandRunStatus;

// What a run works on.
struct Run {
  ComponentState state;
  std::optional<component::ChosenNode> node;
};

// Empty where `run` is ready to connect, what is wrong otherwise.
std::string PrepareNamed(const std::string& name, Run& run) {
  const auto result = component::ParseResourceName(name);
  if (const auto* problem = std::get_if<component::ResourceProblem>(&result)) return problem->text;
  const auto& resource = std::get<component::Resource>(result);
  component::ApplyResource(resource, run.state.connection);
  if (!resource.node.empty()) run.node.emplace(resource.node);
  return {};
}

std::string PrepareStored(const CommandRunOptions& options, ComponentState& state) {
  try {
    component::LoadStoredConnection(options.SettingsFile, component::ComponentFolder(options.Folder), state);
    return {};
  } catch (const base::RuntimeError& error) {
    return error.what();
  }
}

bool Prepare(const CommandRunOptions& options, Run& run) {
  run.state.device.OperMode = device::operating_mode::kPortLibrary;
  const std::string problem =
      options.Connect.empty() ? PrepareStored(options, run.state) : PrepareNamed(options.Connect, run);
  if (!problem.empty()) component::HeadlessMessages(STDERR_FILENO, false).ShowError(problem);
  component::ApplyConnectionOptions(options, run.state.connection);
  return problem.empty();
}

// A command as it would be sent by hand; false where it or its answer failed.
bool Exchange(HeadlessTerminal& terminal, const terminal::Options& options, const std::string& command) {
  terminal::TerminalCore& core = terminal.core();
  terminal.pane().SetCommand(command);
  const double start = terminal::DoubleMilliseconds(core.clock);
  bool done = core.session.SendCommand(command);
  if (options.show_commands) core.output.AddLine(command, terminal::kCommandColor);
  const terminal::PostSendRule rule = core.session.PostSendCheck(command);
  if (rule.continues) {
    done &= core.session.GetAnswer();
    const double elapsed = terminal::DoubleMilliseconds(core.clock) - start;
    if (options.show_response_times)
      core.output.AppendText(
          terminal::texts::ResponseTime(base::DoubleText(elapsed, base::SystemDecimalSign())), 0);
  } else {
    core.output.AddLine(rule.message);
  }
  terminal.pane().EndLine();
  return done;
}

}  // namespace

Status RunCommandList(const std::string& File, const CommandRunOptions& Options) {
  Run run;
  if (!Prepare(Options, run)) return Status::kUsage;
  HeadlessTerminal terminal(Options, run.state);
  component::HeadlessList list(terminal, run.state);
  if (!list.Load(File)) return Status::kUsage;
  if (!terminal.Connect()) return Status::kNotConnected;
  return terminal.StopDue() ? Status::kStopped : list.Play();
}

Status SendCommands(const std::vector<std::string>& Commands, const CommandRunOptions& Options) {
  Run run;
  if (!Prepare(Options, run)) return Status::kUsage;
  HeadlessTerminal terminal(Options, run.state);
  if (!terminal.Connect()) return Status::kNotConnected;
  bool all_done = true;
  for (const std::string& command : Commands) {
    if (terminal.StopDue()) break;
    if (!command.empty()) all_done &= Exchange(terminal, run.state.terminal.options, command);
  }
  if (terminal.StopDue()) return Status::kStopped;
  return all_done ? Status::kDone : Status::kAnswerFailed;
}

}  // namespace kolvane
