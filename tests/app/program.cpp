#include "app/program.h"

#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "base/temp_folder.h"

namespace kolvane::app {

Program::Program(std::vector<std::string> arguments, const LaunchOptions& options) {
  arguments.insert(arguments.begin(), options.program);
  arguments.insert(arguments.begin(), options.wrapper.begin(), options.wrapper.end());
  child_ = fork();
  if (child_ < 0) throw std::runtime_error("fork");
  if (child_ == 0) Execute(arguments, options);
}

Program::~Program() {
  if (child_ < 0) return;
  kill(child_, SIGKILL);
  waitpid(child_, nullptr, 0);
}

void Program::Execute(std::vector<std::string>& words, const LaunchOptions& options) const {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) unsetenv(name);
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"}) setenv(name, "/nonexistent", 1);
  setenv("LSAN_OPTIONS", "print_suppressions=0:suppressions=" KOLVANE_LEAKS, 1);
  for (const auto& [name, value] : options.environment) setenv(name.c_str(), value.c_str(), 1);
  if (!options.folder.empty() && chdir(options.folder.c_str()) != 0) _exit(126);
  dup2(options.output >= 0 ? options.output : out_.fd(), STDOUT_FILENO);
  dup2(err_.fd(), STDERR_FILENO);
  if (options.input >= 0) dup2(options.input, STDIN_FILENO);
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  execvp(argv.front(), argv.data());
  _exit(127);
}

void Program::Signal(int number) const { kill(child_, number); }

// Polls: the kernel has no event for it.
void Program::AwaitHandled(int number) const {
  const std::string status = "/proc/" + std::to_string(child_) + "/status";
  for (unsigned long long caught = ~0ULL; (caught >> (number - 1) & 1) != 0; sched_yield()) {
    const std::string text = base::ReadBytes(status);
    caught = std::stoull(text.substr(text.find("SigCgt:") + 7), nullptr, 16);
  }
}

// Polls, too.
std::string Program::AwaitFolderIn(const std::string& parent) const {
  const std::filesystem::path link = "/proc/" + std::to_string(child_) + "/cwd";
  std::filesystem::path current;
  while (current.parent_path() != parent) {
    sched_yield();
    current = std::filesystem::read_symlink(link);
  }
  return current;
}

bool Program::EndsWithin(int milliseconds) const {
  const auto process = static_cast<int>(syscall(SYS_pidfd_open, child_, 0));
  pollfd entry{process, POLLIN, 0};
  const bool ended = poll(&entry, 1, milliseconds) == 1;
  close(process);
  return ended;
}

Outcome Program::Wait() {
  int status = 0;
  waitpid(child_, &status, 0);
  child_ = -1;
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), out_.text(), err_.text()};
}

}  // namespace kolvane::app
