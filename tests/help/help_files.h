#pragma once

#include <array>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace kolvane::help {

/// Every `$` command of a command list.
inline constexpr std::array<std::string_view, 18> kSpecialCommands = {
    "$REPEAT",    "$ENDREPEAT",   "$DELAY",    "$STOP",  "$IFERR",   "$IFEQUAL",
    "$IFGREATER", "$IFLESS",      "$ENDIF",    "$GOTO",  "$OPENLOG", "$WRITELOG",
    "$CLOSELOG",  "$SPLITPARAMS", "$GETPARAM", "$CLEAR", "$SILENT",  "$AUTOLOG"};

/// Those that are additions; they share a page, and the demo does without them.
inline constexpr std::array<std::string_view, 3> kAddedCommands = {"$READ", "$FLUSH", "$ANSWERS"};

/// The bytes of a file in help/ of the source tree; empty when it is missing.
inline std::string SourceOfHelp(const std::string& name) {
  std::ifstream file(std::string(KOLVANE_HELP_FOLDER) + "/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The first word of a row.
inline std::string_view FirstWord(std::string_view row) { return row.substr(0, row.find(' ')); }

}  // namespace kolvane::help
