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

/// What the command line asks for.
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
  std::optional<std::int16_t> mode;  ///< with kOpen only
  std::string folder;
  CommandRunOptions run;  ///< with kRun, kSend and kShell
  DecodeOptions decode;   ///< with kDecode
  /// With kOpen the list to open, if any, with kRun the one list, with kSend the commands, with kCheck the
  /// lists (at least one), with kDump the file.
  std::vector<std::string> words;
  std::string error;  ///< one line, with kUsageError
};

/// Reads the arguments after the program's name; never exits and never prints.
Options ParseOptions(int argc, char** argv);

/// Makes `options` those of a usage error.
void Refuse(Options& options, const std::string& why);

/// The same for `word`, an option for which getopt gave `choice`: ':' without its value, else not known.
void RefuseWord(Options& options, int choice, const std::string& word);

/// Reads what follows a command, argv[0]: options of `rows`, which a wrong value makes a usage error, and
/// words, in any order. It ends early where the action becomes another one: by --help, or by such an error.
void ParseWords(int argc, char** argv, std::span<const base::OptionRow<Options>> rows, Options& options);

/// The text of --help.
std::string HelpText();

}  // namespace kolvane::app
