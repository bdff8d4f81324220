#pragma once

#include <chrono>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "headless/terminal.h"
#include "kolvane/CommandRun.h"
#include "kolvane/ListCheck.h"
#include "script/runner.h"
#include "script/script_core.h"

namespace kolvane::headless {

/// Start times of the passes of a run: the first at once, each further one at a multiple of the period after
/// that, so that delays do not add up. Without a period each starts when the previous one has ended.
class Schedule {
 public:
  using Clock = std::chrono::steady_clock;

  /// Without `passes` there is one pass, or with a period no limit.
  Schedule(std::optional<std::int32_t> passes, std::optional<std::int32_t> period_ms,
           Clock::time_point start);

  /// The start of the next pass; nothing after the last one. Missed starts are skipped and do not count as
  /// passes.
  std::optional<Clock::time_point> Next(Clock::time_point now);

 private:
  static constexpr std::int64_t kUnlimited = std::numeric_limits<std::int64_t>::max();

  std::int64_t left_;  // passes
  std::optional<Clock::duration> period_;
  Clock::time_point due_;
  bool first_ = true;
};

/// A command list run in a terminal without a window.
class List final : private script::RunHost, private base::Prompt {
 public:
  List(Terminal& terminal, RunState& state);

  /// False, after a message to the user, if `file` cannot be read or a stop was requested.
  [[nodiscard]] bool Load(const std::string& file);

  /// Runs the list on the open connection, as often as the options say.
  CommandRunStatus Play();
  /// Runs the list once.
  CommandRunStatus PlayOnce();
  /// Runs rows entered in the shell: loops, conditions and everything else that rows have set are kept, and
  /// an error in a single row is reported without its number.
  CommandRunStatus PlayRows(const std::vector<std::string>& rows);

 private:
  void LockGUI(bool) override {}
  void Yield() override;
  void ShowError(std::string_view text) override;
  void ShowListError(std::string_view text, std::string_view error) override;
  void ShowMessage(std::string_view text) override { ShowError(text); }
  CommandRunStatus Status();

  Terminal& terminal_;
  bool single_row_ = false;
  script::ScriptCore core_;
};

/// Connects, plays the command file and disconnects.
CommandRunStatus RunList(const RunSetup& setup, const std::string& file);

/// Connects, sends each command (for an empty one only the terminator) and disconnects.
CommandRunStatus SendAll(const RunSetup& setup, const std::vector<std::string>& commands);

/// The same for the lines of the descriptor `input`, as they arrive.
CommandRunStatus SendInput(const RunSetup& setup, int input);

/// Message for a failure to read commands.
std::string CannotReadInput(int error);

/// Checks command files without running them.
std::vector<CheckedCommandList> CheckFiles(const std::vector<std::string>& files);

}  // namespace kolvane::headless
