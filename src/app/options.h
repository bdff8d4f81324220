#pragma once

#include <cstdint>
#include <string>

namespace kolvane::app {

/// What the command line asks for.
struct Options {
  enum class Action { kOpen, kDemo, kHelp, kVersion, kUsageError };
  Action action = Action::kOpen;
  std::int16_t mode = 2;
  std::string folder;
  std::string error;  ///< one line, with kUsageError
};

/// Reads the arguments after the program's name; never exits and never prints.
Options ParseOptions(int argc, char** argv);

/// The text of --help.
std::string HelpText();

}  // namespace kolvane::app
