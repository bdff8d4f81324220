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
  /// Reads a line after `Prompt` into `Line`, UTF-8 and without its end. kCancelled: the user has given up
  /// the line, or several that belong together. Without it lines come from standard input and there are no
  /// prompts.
  std::function<ShellInput(const std::string& Prompt, std::string& Line)> ReadLine;
  /// Asked about every 50 ms while something is waited for, and after each row of a list; true gives that up.
  std::function<bool()> GiveUp;
  bool Colors = false;  ///< failures and times in colours, by escape sequences
};

/// Connects and carries out line by line what the user enters: commands, "$" rows, "$RUN FILE" for a command
/// file. Rows from a "$REPEAT" or "$IF..." to its end are carried out together. What fails is reported, and
/// the conversation goes on; a lost connection is made again by the next command. Ends with the input, or
/// once StopRequested is true; kAnswerFailed where anything failed. Otherwise as RunCommandList.
KOLVANE_EXPORT CommandRunStatus RunShell(const ShellHost& Host, const CommandRunOptions& Options);

/// How the line `Typed` could go on, whole lines: "$" words and what they take, file names, and the words
/// that end an exchange.
KOLVANE_EXPORT std::vector<std::string> ShellCompletions(const std::string& Typed);

}  // namespace kolvane
