#include "app/amplifier_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <stdexcept>
#include <string_view>

extern char** environ;

namespace kolvane::app {
namespace {

// The first line that comes out of `fd`, without its end; what came before an end of file otherwise.
std::string FirstLine(int fd) {
  std::string line;
  char c = 0;
  for (;;) {
    const ssize_t got = read(fd, &c, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0 || c == '\n') return line;
    line += c;
  }
}

std::uint16_t PortIn(std::string_view line) {
  std::uint16_t port = 0;
  const std::size_t colon = line.rfind(':');
  if (colon != std::string_view::npos)
    std::from_chars(line.data() + colon + 1, line.data() + line.size(), port);
  return port;
}

}  // namespace

AmplifierProcess::AmplifierProcess(const std::string& program) {
  Start(program);
  port_ = PortIn(FirstLine(output_));
  if (port_ != 0) return;
  Stop();
  throw std::runtime_error("the simulated amplifier did not start: " + program);
}

AmplifierProcess::~AmplifierProcess() { Stop(); }

void AmplifierProcess::Start(const std::string& program) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error(std::string("pipe: ") + std::strerror(errno));
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t none;
  sigemptyset(&none);
  // The signals that end the terminal may be blocked here; the amplifier shall end by them.
  posix_spawnattr_setsigmask(&attributes, &none);
  // Ctrl+C is meant for the terminal, which still talks to the amplifier while it ends.
  posix_spawnattr_setpgroup(&attributes, 0);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
  std::string words[] = {program, "--tcp", "0", "--exit-with-parent"};
  char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
  const int failure = posix_spawn(&child_, program.c_str(), &actions, &attributes, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  close(ends[1]);
  output_ = ends[0];
  if (failure == 0) return;
  close(output_);
  throw std::runtime_error("the simulated amplifier cannot be started: " + program + ": " +
                           std::strerror(failure));
}

void AmplifierProcess::Stop() {
  kill(child_, SIGTERM);
  while (waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
  }
  close(output_);
}

}  // namespace kolvane::app
