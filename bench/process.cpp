#include "process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace kolvane::bench {
namespace {

[[noreturn]] void Execute(std::vector<std::string>& words) {
  const int null_device = open("/dev/null", O_RDWR | O_CLOEXEC);
  dup2(null_device, STDOUT_FILENO);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  execv(arguments.front(), arguments.data());
  _exit(127);
}

// The number after `name` in a file of "name: number" lines.
std::int64_t Field(const std::string& file, const std::string& name) {
  std::ifstream lines(file);
  for (std::string word; lines >> word;) {
    std::int64_t value = 0;
    if (word == name + ":" && lines >> value) return value;
  }
  throw std::runtime_error("no " + name + " in " + file);
}

std::int64_t TicksIn(const std::string& file) {
  std::ifstream stat(file);
  std::string text((std::istreambuf_iterator<char>(stat)), {});
  // The name in parentheses may hold spaces; user and system time are the 12th and 13th words after it.
  std::istringstream words(text.substr(text.rfind(')') + 1));
  std::string skipped;
  for (int word = 0; word < 11; ++word) words >> skipped;
  std::int64_t user = 0;
  std::int64_t system = 0;
  words >> user >> system;
  return user + system;
}

}  // namespace

double MonotonicSeconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

Process::Process(std::vector<std::string> words) : started_(MonotonicSeconds()), child_(fork()) {
  if (child_ < 0) throw std::runtime_error("fork");
  if (child_ == 0) Execute(words);
}

int Process::Wait() {
  int status = 0;
  if (waitpid(child_, &status, 0) != child_) throw std::runtime_error("waitpid");
  child_ = -1;
  return WEXITSTATUS(status);
}

Process::~Process() {
  if (child_ < 0) return;
  kill(child_, SIGKILL);
  waitpid(child_, nullptr, 0);
}

std::string Process::Proc(const std::string& name) const {
  return "/proc/" + std::to_string(child_) + "/" + name;
}

double Process::Memory(const std::string& kind) const {
  return static_cast<double>(Field(Proc("smaps_rollup"), kind)) * 1024;
}

Process::Usage Process::Used() const {
  Usage usage;
  usage.ticks = TicksIn(Proc("stat"));
  for (const auto& thread : std::filesystem::directory_iterator(Proc("task"))) {
    usage.switches += Field(thread.path() / "status", "voluntary_ctxt_switches");
    std::int64_t nanoseconds = 0;
    std::ifstream(thread.path() / "schedstat") >> nanoseconds;
    usage.nanoseconds += nanoseconds;
  }
  return usage;
}

}  // namespace kolvane::bench
