#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/read_file.h"
#include "script/command_list.h"
#include "script/file_result.h"

/// Command files, see docs/formats/command-file.md.
namespace kolvane::script {

inline constexpr std::size_t kLineLimit = 1 << 20;  ///< bytes of one line

/// How long a pipe may bring nothing before it is given up, while nobody can stop the wait.
inline constexpr int kQuietMs = 5000;

/// Shows the file `name`, which may be a pipe, in `list`, which keeps what it held where that fails. Lines
/// beyond the last row are counted in CommandList::left_out().
FileResult LoadCommandFile(
    CommandList& list, const std::string& name,
    const base::GiveUp& give_up = [](int waited_ms) { return waited_ms >= kQuietMs; });

/// The rows with characters that a command file writes as '?'.
std::vector<int> RowsOutsideCodePage(const CommandList& list);

/// Writes all rows of `list` into the file `name`, or leaves the file as it was.
FileResult WriteCommandFile(const CommandList& list, const std::string& name);

/// Makes `name` an empty file.
FileResult WriteEmptyFile(const std::string& name);

}  // namespace kolvane::script
