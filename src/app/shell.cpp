#include "app/shell.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "app/line_editor.h"
#include "app/shell_typing.h"
#include "app/signals.h"
#include "base/descriptor.h"
#include "kolvane/Shell.h"

namespace kolvane::app {
namespace {

constexpr char kGreeting[] =
    "Ctrl+D ends, Tab completes, Esc gives up a wait, $RUN FILE runs a command list.\n";

// https://no-color.org; a terminal without colours calls itself dumb.
bool TakesColors() {
  const char* refused = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return (refused == nullptr || *refused == '\0') && terminal != nullptr &&
         std::string_view(terminal) != "dumb";
}

std::vector<std::string> Candidates(const ShellHistory& history, const std::string& typed) {
  if (typed.empty()) return {};
  std::vector<std::string> found = ShellCompletions(typed);
  const auto is_there = [&found](const std::string& line) {
    return std::ranges::any_of(
        found, [&line](const std::string& each) { return each == line || each == line + ' '; });
  };
  for (std::string& line : history.StartingWith(typed))
    if (!is_there(line)) found.push_back(std::move(line));
  return found;
}

int RunAtTerminal(CommandRunOptions run) {
  const EndSignals end;
  ShellHistory history(ShellHistory::UserFile());
  const bool colors = TakesColors();
  LineEditor editor(
      end.descriptor(), history, [&history](const std::string& typed) { return Candidates(history, typed); },
      colors);
  bool greeted = false;
  ShellHost host;
  host.Colors = colors;
  host.GiveUp = [&editor] { return editor.GiveUp(); };
  host.ReadLine = [&](const std::string& prompt, std::string& line) {
    if (!std::exchange(greeted, true)) std::fputs(kGreeting, stdout);
    return editor.ReadLine(prompt, line);
  };
  run.StopRequested = [&end] { return base::IsReadable(end.descriptor()); };
  return static_cast<int>(kolvane::RunShell(host, run));
}

}  // namespace

int RunShell(const Options& options) {
  CommandRunOptions run = options.run;
  run.Folder = options.folder;
  if (isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1) return RunAtTerminal(std::move(run));
  const StopSignals stop;
  run.StopRequested = StopSignals::Raised;
  return static_cast<int>(kolvane::RunShell({}, run));
}

}  // namespace kolvane::app
