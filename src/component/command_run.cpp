#include "kolvane/CommandRun.h"

#include <unistd.h>

#include <system_error>
#include <variant>

#include "base/runtime_error.h"
#include "component/folder.h"
#include "component/settings.h"
#include "device/connection_form.h"
#include "device/resource_name.h"
#include "headless/decode_file.h"
#include "headless/ports.h"
#include "headless/run.h"
#include "headless/shell.h"
#include "headless/terminal.h"
#include "headless/transcript.h"
#include "kolvane/ListCheck.h"
#include "kolvane/Ports.h"
#include "kolvane/Shell.h"

namespace kolvane {
namespace {

using headless::RunState;

// Empty if `state` is ready to connect, otherwise the reason why not.
std::string PrepareNamed(const std::string& name, RunState& state) {
  const auto result = device::ParseResourceName(name);
  if (const auto* problem = std::get_if<device::ResourceProblem>(&result)) return problem->text;
  device::ApplyResource(std::get<device::Resource>(result), state.connection);
  return {};
}

std::string PrepareStored(const CommandRunOptions& options, RunState& state) {
  try {
    component::LoadStoredConnection(options.SettingsFile, state.connection, state.terminal);
  } catch (const base::RuntimeError& error) {
    return error.what();
  }
  const bool complete =
      device::CompleteConnection(state.connection, component::ComponentFolder(options.Folder));
  return complete ? std::string() : device::kInvalidAddress;
}

// Opens the transcript; empty if that succeeded, otherwise the reason.
std::string PrepareTranscript(const CommandRunOptions& options, headless::Transcript& transcript) {
  const int error =
      options.Transcript.empty() ? 0 : transcript.Open(options.Transcript, options.TranscriptTimes);
  if (error == 0) return {};
  return "cannot write the transcript '" + options.Transcript +
         "': " + std::generic_category().message(error);
}

bool Prepare(const CommandRunOptions& options, headless::HostLines& host, RunState& state,
             headless::Transcript& transcript) {
  state.device.OperMode = device::operating_mode::kPortLibrary;
  std::string problem =
      options.Connect.empty() ? PrepareStored(options, state) : PrepareNamed(options.Connect, state);
  if (problem.empty()) problem = PrepareTranscript(options, transcript);
  if (!problem.empty())
    headless::Messages(STDERR_FILENO, false, host.wanted() ? &host : nullptr).ShowError(problem);
  headless::ApplyConnectionOptions(options, state.connection);
  return problem.empty();
}

// The host's function must outlive the terminal, which writes lines until its end.
template <typename Run>
CommandRunStatus RunPrepared(const CommandRunOptions& options, Run run) {
  headless::HostLines host(options.OnLine);
  RunState state;
  CommandRunStatus status = CommandRunStatus::kUsage;
  headless::Transcript transcript;
  if (Prepare(options, host, state, transcript))
    status = run(
        {options, host, state, component::OwnFolder(), options.Transcript.empty() ? nullptr : &transcript});
  host.Rethrow();
  return status;
}

}  // namespace

CommandRunStatus RunCommandList(const std::string& File, const CommandRunOptions& Options) {
  return RunPrepared(Options,
                     [&File](const headless::RunSetup& setup) { return headless::RunList(setup, File); });
}

CommandRunStatus SendCommands(const std::vector<std::string>& Commands, const CommandRunOptions& Options) {
  return RunPrepared(
      Options, [&Commands](const headless::RunSetup& setup) { return headless::SendAll(setup, Commands); });
}

CommandRunStatus SendLines(int Input, const CommandRunOptions& Options) {
  return RunPrepared(Options,
                     [Input](const headless::RunSetup& setup) { return headless::SendInput(setup, Input); });
}

CommandRunStatus RunShell(const ShellHost& Host, const CommandRunOptions& Options) {
  CommandRunOptions options = Options;
  // The shell has no connect button.
  options.Reconnect = true;
  return RunPrepared(options, [&Host](headless::RunSetup setup) {
    setup.give_up = &Host.GiveUp;
    setup.colors = Host.Colors;
    return headless::RunShell(setup, Host);
  });
}

std::vector<std::string> ShellCompletions(const std::string& Typed) {
  return headless::CompleteShellLine(Typed);
}

std::vector<CheckedCommandList> CheckCommandLists(const std::vector<std::string>& Files) {
  return headless::CheckFiles(Files);
}

DecodeResult DecodeFile(const DecodeOptions& Options) {
  return headless::Decode(Options, STDOUT_FILENO, STDERR_FILENO);
}

DecodeResult DumpFile(const std::string& File) { return headless::Dump(File, STDOUT_FILENO); }

std::vector<Port> ListPorts() { return headless::Ports(component::OwnFolder()); }

}  // namespace kolvane
