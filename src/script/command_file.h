#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "script/command_list.h"
#include "script/file_result.h"

/// Command files, see docs/formats/command-file.md.
namespace kolvane::script {

inline constexpr std::size_t kLineLimit = 1 << 20;  ///< bytes of one line

/// Shows the file `name` in `list`, which keeps what it held where that fails. Lines beyond the last row are
/// counted in CommandList::left_out().
FileResult LoadCommandFile(CommandList& list, const std::string& name);

/// The rows with characters that a command file writes as '?'.
std::vector<int> RowsOutsideCodePage(const CommandList& list);

/// Writes all rows of `list` into the file `name`, or leaves the file as it was.
FileResult WriteCommandFile(const CommandList& list, const std::string& name);

/// Makes `name` an empty file.
FileResult WriteEmptyFile(const std::string& name);

}  // namespace kolvane::script
