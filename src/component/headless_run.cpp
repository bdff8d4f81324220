#include <unistd.h>

#include <variant>

#include "base/runtime_error.h"
#include "component/folder.h"
#include "component/headless_list.h"
#include "component/headless_settings.h"
#include "component/headless_terminal.h"
#include "device/operating_mode.h"
#include "kolvane/CommandRun.h"

namespace kolvane {
namespace {

using component::ComponentState;
using component::HeadlessTerminal;
using Status = CommandRunStatus;

// What a run works on. The host's function outlives the terminal, which has lines to the last.
struct Run {
  component::HostLines host;
  ComponentState state;
};

// Empty where `state` is ready to connect, what is wrong otherwise.
std::string PrepareNamed(const std::string& name, ComponentState& state) {
  const auto result = component::ParseResourceName(name);
  if (const auto* problem = std::get_if<component::ResourceProblem>(&result)) return problem->text;
  component::ApplyResource(std::get<component::Resource>(result), state.connection);
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
      options.Connect.empty() ? PrepareStored(options, run.state) : PrepareNamed(options.Connect, run.state);
  component::HostLines* host = run.host.wanted() ? &run.host : nullptr;
  if (!problem.empty()) component::HeadlessMessages(STDERR_FILENO, false, host).ShowError(problem);
  component::ApplyConnectionOptions(options, run.state.connection);
  return problem.empty();
}

Status RunList(const std::string& file, const CommandRunOptions& options, Run& run) {
  if (!Prepare(options, run)) return Status::kUsage;
  HeadlessTerminal terminal(options, run.host, run.state);
  component::HeadlessList list(terminal, run.state);
  if (!list.Load(file)) return terminal.stopped() ? Status::kStopped : Status::kUsage;
  if (!terminal.Connect()) return Status::kNotConnected;
  return terminal.StopDue() ? Status::kStopped : list.Play();
}

Status Send(const std::vector<std::string>& commands, const CommandRunOptions& options, Run& run) {
  if (!Prepare(options, run)) return Status::kUsage;
  HeadlessTerminal terminal(options, run.host, run.state);
  if (!terminal.Connect()) return Status::kNotConnected;
  bool all_done = true;
  for (const std::string& command : commands) {
    if (terminal.StopDue()) break;
    all_done &= !terminal.core().exchange.Run(command, terminal::Sender::kList).Failed();
    terminal.pane().EndLine();
  }
  if (terminal.StopDue()) return Status::kStopped;
  return all_done ? Status::kDone : Status::kAnswerFailed;
}

}  // namespace

Status RunCommandList(const std::string& File, const CommandRunOptions& Options) {
  Run run{component::HostLines(Options.OnLine), {}};
  const Status status = RunList(File, Options, run);
  run.host.Rethrow();
  return status;
}

Status SendCommands(const std::vector<std::string>& Commands, const CommandRunOptions& Options) {
  Run run{component::HostLines(Options.OnLine), {}};
  const Status status = Send(Commands, Options, run);
  run.host.Rethrow();
  return status;
}

}  // namespace kolvane
