#pragma once

#include <string>
#include <vector>

#include "kolvane/Export.h"

namespace kolvane {

/// A problem in a row of a command list. Texts are UTF-8, one line.
struct ListFinding {
  int Row = 0;              ///< from 1
  bool IsError = false;     ///< every run that reaches the row is refused; false: suspicious, or refused on
                            ///< some paths only
  std::string Text;         ///< German
  std::string Replacement;  ///< suggested text for the row; empty: none
  int OtherRow = 0;         ///< the related row; 0: none
};

/// A command file that was checked.
struct CheckedCommandList {
  std::string File;                   ///< as passed in
  std::string Problem;                ///< why it cannot be read, English, one line; empty: it was read
  std::vector<ListFinding> Findings;  ///< by row, errors of a row first
};

/// Checks the command files `Files` (UTF-8 paths) without running them, each as the first list of a program,
/// with a log open or not. Log files are assumed to open and to be writable.
KOLVANE_EXPORT std::vector<CheckedCommandList> CheckCommandLists(const std::vector<std::string>& Files);

}  // namespace kolvane
