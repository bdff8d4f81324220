#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "device/connection_parameters.h"
#include "headless/terminal.h"
#include "kolvane/Shell.h"

namespace kolvane::headless {

/// Collects rows that belong together.
class ShellRows {
 public:
  /// Adds a row. Returns the rows to execute; none while a loop or condition is open and a list has room for
  /// more.
  std::vector<std::string> Take(std::string_view row);
  bool open() const { return !rows_.empty(); }
  /// Returns the rows added so far, complete or not.
  std::vector<std::string> Finish();

 private:
  std::vector<std::string> rows_;
  int depth_ = 0;
};

/// The connection's name in the prompt: "localhost:5025", "/dev/ttyUSB0", "GPIB 4".
std::string ConnectionName(const device::ConnectionParameters& connection);

/// Implements kolvane::RunShell.
CommandRunStatus RunShell(const RunSetup& setup, const ShellHost& host);

/// Implements kolvane::ShellCompletions.
std::vector<std::string> CompleteShellLine(std::string_view typed);

}  // namespace kolvane::headless
