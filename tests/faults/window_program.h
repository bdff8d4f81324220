#pragma once

#include <map>
#include <string>

#include "app/program.h"

namespace kolvane::faults {

/// The program with its window, offscreen. SIGTERM ends it as a user would: the settings are saved.
class WindowProgram {
 public:
  /// `settings` is the folder that XDG_CONFIG_HOME names, `folder` the component's.
  WindowProgram(const std::string& settings, const std::string& folder, app::LaunchOptions options = {});

  /// Ends it by SIGTERM once it handles that signal; sets `hung` if it does not end.
  app::Outcome End(bool* hung = nullptr);
  app::Program& program() { return program_; }

 private:
  app::Program program_;
};

inline constexpr char kSettingsFile[] = "Kolvane/Kolvane.ini";

/// Returns once the process is the program and blocks or catches the signal.
void AwaitSignalHandling(pid_t process, int signal);

}  // namespace kolvane::faults
