#pragma once

#include <string>
#include <vector>

#include "kolvane/Export.h"

namespace kolvane {

/// What is wrong with a row of a command list. Texts are UTF-8, one line.
struct ListFinding {
  int Row = 0;              ///< from 1
  bool IsError = false;     ///< every run that gets there is refused; else odd, or refused on some paths only
  std::string Text;         ///< German
  std::string Replacement;  ///< proposed text for the row; empty: none
  int OtherRow = 0;         ///< the row that it has to do with; 0: none
};

/// A command file that was checked.
struct CheckedCommandList {
  std::string File;                   ///< as it was given
  std::string Problem;                ///< why it cannot be read, English, one line; empty: it was read
  std::vector<ListFinding> Findings;  ///< by row, errors of a row first
};

/// Checks the command files `Files` (UTF-8 paths) without running them, each as the first list that a program
/// runs, with a log open or not. Log files are assumed to open and to take what is written.
KOLVANE_EXPORT std::vector<CheckedCommandList> CheckCommandLists(const std::vector<std::string>& Files);

}  // namespace kolvane
