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
class List final : private script::RunHost, private base::Prompt {
 public:
  List(Terminal& terminal, RunState& state);

  /// False, and the user has been told, where `file` cannot be read or a stop was asked for meanwhile.
  [[nodiscard]] bool Load(const std::string& file);

  /// Runs the list on the open connection, as often as the options say.
  CommandRunStatus Play();
  /// The same, once.
  CommandRunStatus PlayOnce();
  /// Runs rows that the user has just entered: loops and conditions, and what else a row has set, stay as
  /// they are, and what is wrong with a single row is said without its number.
  CommandRunStatus PlayRows(const std::vector<std::string>& rows);

 private:
  void LockGUI(bool) override {}
  void Yield() override;
  void ShowError(std::string_view text) override;
  void ShowMessage(std::string_view text) override { ShowError(text); }
  CommandRunStatus Status();

  Terminal& terminal_;
  bool single_row_ = false;
  script::ScriptCore core_;
};

/// Connects, plays the command file and disconnects.
CommandRunStatus RunList(const RunSetup& setup, const std::string& file);

/// Connects, sends each command (of an empty one only the terminator) and disconnects.
CommandRunStatus SendAll(const RunSetup& setup, const std::vector<std::string>& commands);

/// The same for the lines of the descriptor `input`, as they come.
CommandRunStatus SendInput(const RunSetup& setup, int input);

/// Why commands can no longer be read.
std::string CannotReadInput(int error);

/// Checks command files without running them.
std::vector<CheckedCommandList> CheckFiles(const std::vector<std::string>& files);

}  // namespace kolvane::headless
