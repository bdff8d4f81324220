// The stand-alone program: a host like any other, using only the public headers.

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <new>
#include <system_error>

#include "app/command_options.h"
#include "app/demo.h"
#include "app/listings.h"
#include "app/options.h"
#include "app/shell.h"
#include "app/signals.h"
#include "base/descriptor.h"
#include "kolvane/CommandRun.h"
#include "kolvane/Decode.h"
#include "kolvane/ListCheck.h"
#include "kolvane/MainClass.h"
#include "kolvane/Ports.h"

namespace {

// The operating mode of a terminal with its own connection.
constexpr std::int16_t kOwnConnection = 2;

using kolvane::app::Options;

enum ExitStatus { kDone = 0, kFailed = 1, kUsage = 2 };

// Empty if the file can be opened.
std::string ReadFailure(const std::string& file) {
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) return std::generic_category().message(EISDIR);
  return access(file.c_str(), R_OK) == 0 ? std::string() : std::generic_category().message(errno);
}

int OpenTerminal(const Options& options) {
  const std::string list = options.words.empty() ? std::string() : options.words.front();
  if (const std::string why = list.empty() ? "" : ReadFailure(list); !why.empty()) {
    std::fprintf(stderr, "kolvane: cannot read the command list '%s': %s\n", list.c_str(), why.c_str());
    return kUsage;
  }
  const kolvane::app::EndSignals end;
  kolvane::MainClass terminal;
  kolvane::TerminalOptions presets;
  presets.Folder = options.folder;
  presets.CommandList = list;
  presets.CloseDescriptor = end.descriptor();
  terminal.SetOptions(presets);
  terminal.OpenTerminal(options.mode.value_or(kOwnConnection), 0);
  return kDone;
}

int RunWithoutWindow(const Options& options) {
  const kolvane::app::StopSignals stop;
  kolvane::CommandRunOptions run = options.run;
  run.Folder = options.folder;
  run.StopRequested = kolvane::app::StopSignals::Raised;
  if (options.action == Options::Action::kRun)
    return static_cast<int>(kolvane::RunCommandList(options.words.front(), run));
  return static_cast<int>(kolvane::app::ReadsCommands(options) ? kolvane::SendLines(STDIN_FILENO, run)
                                                               : kolvane::SendCommands(options.words, run));
}

int Print(const std::string& text) {
  if (std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return kDone;
  std::fprintf(stderr, "kolvane: cannot write: %s\n", std::generic_category().message(errno).c_str());
  return kFailed;
}

int CheckLists(const Options& options) {
  const std::vector<kolvane::CheckedCommandList> lists = kolvane::CheckCommandLists(options.words);
  for (const kolvane::CheckedCommandList& list : lists) {
    if (!list.Problem.empty()) std::fprintf(stderr, "kolvane: %s\n", list.Problem.c_str());
  }
  const int printed = Print(kolvane::app::FindingLines(lists));
  return printed == kDone ? kolvane::app::CheckStatus(lists) : printed;
}

// With nothing to list standard output stays empty, for programs that read it line by line.
int ListPorts() {
  const std::vector<kolvane::Port> ports = kolvane::ListPorts();
  if (ports.empty()) std::fputs("kolvane: no ports found\n", stderr);
  return Print(kolvane::app::PortTable(ports));
}

int Report(const kolvane::DecodeResult& result) {
  if (!result.Problem.empty()) std::fprintf(stderr, "kolvane: %s\n", result.Problem.c_str());
  return result.Status;
}

int Run(const Options& options) {
  switch (options.action) {
    case Options::Action::kOpen:
      return OpenTerminal(options);
    case Options::Action::kDemo:
      return kolvane::app::RunDemo(options.folder);
    case Options::Action::kRun:
    case Options::Action::kSend:
      return RunWithoutWindow(options);
    case Options::Action::kShell:
      return kolvane::app::RunShell(options);
    case Options::Action::kCheck:
      return CheckLists(options);
    case Options::Action::kPorts:
      return ListPorts();
    case Options::Action::kDump:
      return Report(kolvane::DumpFile(options.words.front()));
    case Options::Action::kDecode:
      return Report(kolvane::DecodeFile(options.decode));
    case Options::Action::kHelp:
      return Print(kolvane::app::HelpText());
    case Options::Action::kVersion:
      return Print("kolvane " KOLVANE_VERSION "\n");
    case Options::Action::kUsageError:
      break;
  }
  std::fprintf(stderr, "kolvane: %s (see kolvane --help)\n", options.error.c_str());
  return kUsage;
}

}  // namespace

int main(int argc, char** argv) {
  kolvane::base::FillStandardDescriptors();
  // A file at its size limit is a write error, not the end of the program.
  signal(SIGXFSZ, SIG_IGN);
  try {
    return Run(kolvane::app::ParseOptions(argc, argv));
  } catch (const std::bad_alloc&) {
    std::fputs("kolvane: out of memory\n", stderr);
    return kFailed;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kolvane: %s\n", error.what());
    return kFailed;
  }
}
