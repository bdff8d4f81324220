#pragma once

#include <string>
#include <vector>

#include "headless/terminal.h"
#include "kolvane/CommandRun.h"
#include "kolvane/ListCheck.h"
#include "script/runner.h"
#include "script/script_core.h"

namespace kolvane::headless {

/// A command list that runs in a terminal without a window.
class List final : private script::RunHost {
 public:
  List(Terminal& terminal, RunState& state);

  /// False, and the user has been told, where `file` cannot be read or a stop was asked for meanwhile.
  [[nodiscard]] bool Load(const std::string& file);

  /// Runs the list on the open connection, as often as the options say.
  CommandRunStatus Play();

 private:
  void LockGUI(bool) override {}
  void Yield() override;
  CommandRunStatus PlayOnce();

  Terminal& terminal_;
  script::ScriptCore core_;
};

/// Connects, plays the command file and disconnects.
CommandRunStatus RunList(const RunSetup& setup, const std::string& file);

/// Connects, sends each command (of an empty one only the terminator) and disconnects.
CommandRunStatus SendAll(const RunSetup& setup, const std::vector<std::string>& commands);

/// The same for the lines of the descriptor `input`, as they come.
CommandRunStatus SendInput(const RunSetup& setup, int input);

/// Checks command files without running them.
std::vector<CheckedCommandList> CheckFiles(const std::vector<std::string>& files);

}  // namespace kolvane::headless
