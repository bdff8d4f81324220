#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kolvane/CommandRun.h"
#include "kolvane/Export.h"

namespace kolvane {

enum class ShellInput { kLine, kCancelled, kEnd };

/// The user's side of a conversation.
struct ShellHost {
  /// Reads a line after `Prompt` into `Line`, UTF-8, without its line end. kCancelled: the user discarded the
  /// line, or several that belong together. If not set, lines come from standard input without prompts.
  std::function<ShellInput(const std::string& Prompt, std::string& Line)> ReadLine;
  /// Called about every 50 ms during a wait, and after each row of a list; true gives up.
  std::function<bool()> GiveUp;
  bool Colors = false;  ///< shows failures and times in colour, by escape sequences
};

/// Connects and executes each line that the user enters: commands, "$" rows, "$RUN FILE" for a command file.
/// Rows from a "$REPEAT" or "$IF..." to its end are executed together. Failures are reported and the shell
/// continues; after a lost connection the next command reconnects. Ends with the input, or once StopRequested
/// returns true; kAnswerFailed if anything failed, kStopped if standard input cannot be read. Otherwise like
/// RunCommandList.
KOLVANE_EXPORT CommandRunStatus RunShell(const ShellHost& Host, const CommandRunOptions& Options);

/// Possible completions of the line `Typed`, as whole lines: "$" words and their arguments, file names, and
/// the words that end an exchange.
KOLVANE_EXPORT std::vector<std::string> ShellCompletions(const std::string& Typed);

}  // namespace kolvane
