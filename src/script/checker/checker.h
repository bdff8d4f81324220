#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "script/command_list.h"
#include "script/script_state.h"

namespace kolvane::script::checker {

enum class FindingKind {
  kError,  ///< every run that gets there is refused and ends
  kHint    ///< odd, or refused on some paths only
};

/// "Fehler" or "Hinweis".
constexpr const char* NameOf(FindingKind kind) { return kind == FindingKind::kError ? "Fehler" : "Hinweis"; }

/// What is wrong with a row of a command list. Texts are German, UTF-8, one line.
struct Finding {
  int row = 0;
  FindingKind kind = FindingKind::kHint;
  std::string text = {};
  std::string replacement = {};  ///< proposed text for the row; empty: none
  int other_row = 0;             ///< a related row; 0: none
};

/// "Fehler: ..." or "Hinweis: ...".
std::string FindingLine(const Finding& finding);

enum class LogAtStart { kClosed, kOpen, kUnknown };

/// The state that a run starts in. The default is a newly started program's, except that a log may be open
/// (by --log or by hand). An unknown log counts as closed for $OPENLOG and as perhaps closed for $WRITELOG.
struct RunStart {
  /// The state left by earlier runs.
  static RunStart Of(const InterpreterState& state, LogAtStart log);

  LogAtStart log = LogAtStart::kUnknown;
  bool has_parameters = false;  ///< some answer has been split
  bool skips_rows = false;
  std::int16_t if_depth = 0;
  std::int16_t repeat_level = 0;
  std::array<std::int32_t, kLevels> repeat_counts{};
  std::array<std::int16_t, kLevels> repeat_rows{};
};

inline RunStart RunStart::Of(const InterpreterState& state, LogAtStart log) {
  return {log,
          !state.ParamList.empty(),
          state.SkipRows,
          state.IfDepth,
          state.RepeatLevel,
          state.RepeatCount,
          state.RepeatRow};
}

/// Checks a list that runs from row 1; findings are sorted by row, errors first. A run that executes a row
/// with an error is refused there. A run is refused only in rows with a finding, except for a $GETPARAM
/// beyond the answer's fields. Log files are assumed to open and to be writable.
std::vector<Finding> CheckList(const std::vector<std::string_view>& rows, const RunStart& start = {});

/// Checks the rows of `list`.
std::vector<Finding> CheckList(const CommandList& list, const RunStart& start = {});

/// The nesting depth of each row in loops and conditions, by its text only; element 0 is row 1's.
std::vector<int> Indents(const CommandList& list);

}  // namespace kolvane::script::checker
