#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/option_table.h"
#include "kolvane/CommandRun.h"
#include "kolvane/Decode.h"

namespace kolvane::app {

/// The parsed command line.
struct Options {
  enum class Action {
    kOpen,
    kDemo,
    kRun,
    kSend,
    kShell,
    kCheck,
    kPorts,
    kDump,
    kDecode,
    kHelp,
    kVersion,
    kUsageError
  };
  Action action = Action::kOpen;
  std::optional<std::int16_t> mode;  ///< only with kOpen
  std::string folder;
  CommandRunOptions run;  ///< with kRun, kSend and kShell
  DecodeOptions decode;   ///< with kDecode
  /// kOpen: the list to open, if any; kRun: the list; kSend: the commands; kCheck: the lists (at least one);
  /// kDump: the file.
  std::vector<std::string> words;
  std::string error;  ///< one line, with kUsageError
};

/// Parses the arguments after the program's name; never exits or prints.
Options ParseOptions(int argc, char** argv);

/// Turns `options` into a usage error.
void Refuse(Options& options, const std::string& why);

/// The same for option `word`, for which getopt returned `choice`: ':' if its value is missing, else unknown.
void RefuseWord(Options& options, int choice, const std::string& word);

/// Parses the arguments of a command, argv[0]: options of `rows` and words, in any order; a wrong value is a
/// usage error. Stops early if the action changes, through --help or such an error.
void ParseWords(int argc, char** argv, std::span<const base::OptionRow<Options>> rows, Options& options);

/// The output of --help.
std::string HelpText();

}  // namespace kolvane::app
