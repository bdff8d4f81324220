#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "device/connection_parameters.h"
#include "headless/terminal.h"
#include "kolvane/Shell.h"

namespace kolvane::headless {

/// Puts together rows that belong together.
class ShellRows {
 public:
  /// Takes a row; the rows to carry out, none while a loop or condition is open and a list has room for more.
  std::vector<std::string> Take(std::string_view row);
  bool open() const { return !rows_.empty(); }
  /// What was taken, its end or not.
  std::vector<std::string> Finish();

 private:
  std::vector<std::string> rows_;
  int depth_ = 0;
};

/// What the prompt calls the connection: "localhost:5025", "/dev/ttyUSB0", "GPIB 4".
std::string ConnectionName(const device::ConnectionParameters& connection);

/// As kolvane::RunShell.
CommandRunStatus RunShell(const RunSetup& setup, const ShellHost& host);

/// As kolvane::ShellCompletions.
std::vector<std::string> CompleteShellLine(std::string_view typed);

}  // namespace kolvane::headless
