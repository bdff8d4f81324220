#include "faults/window_program.h"

#include <sched.h>
#include <signal.h>

#include <filesystem>
#include <system_error>

#include "base/temp_folder.h"

namespace kolvane::faults {
namespace {

constexpr int kLongestProgramMs = 30'000;

app::LaunchOptions WithSettings(app::LaunchOptions options, const std::string& settings) {
  options.environment.merge(std::map<std::string, std::string>{{"QT_QPA_PLATFORM", "offscreen"},
                                                               {"XDG_CONFIG_HOME", settings},
                                                               {"XDG_STATE_HOME", settings + "/state"}});
  return options;
}

bool Has(const std::string& status, const char* mask, int signal) {
  const std::size_t at = status.find(mask);
  if (at == std::string::npos) return true;
  return (std::stoull(status.substr(at + 7), nullptr, 16) >> (signal - 1) & 1) != 0;
}

}  // namespace

WindowProgram::WindowProgram(const std::string& settings, const std::string& folder,
                             app::LaunchOptions options)
    : program_({"--folder", folder}, WithSettings(std::move(options), settings)) {}

app::Outcome WindowProgram::End(bool* hung) {
  AwaitSignalHandling(program_.id(), SIGTERM);
  program_.Signal(SIGTERM);
  const bool ended = program_.EndsWithin(kLongestProgramMs);
  if (hung != nullptr) *hung = !ended;
  if (!ended) program_.Signal(SIGKILL);
  return program_.Wait();
}

// Polls: the kernel has no event for it. Wrappers may block signals while they start the program; hence this
// first checks which program runs, then what it does about the signal.
void AwaitSignalHandling(pid_t process, int signal) {
  const std::string folder = "/proc/" + std::to_string(process);
  const auto handles_signal = [&] {
    std::error_code error;
    const auto program = std::filesystem::read_symlink(folder + "/exe", error);
    if (error) return true;  // it has ended
    const std::string status = base::ReadBytes(folder + "/status");
    return program == KOLVANE_PROGRAM && (Has(status, "SigBlk:", signal) || Has(status, "SigCgt:", signal));
  };
  while (!handles_signal()) sched_yield();
}

}  // namespace kolvane::faults
