#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::device {

/// The path of the file `name` in `folder`, whose letter case does not matter: the file named exactly so,
/// else the first one in alphabetical order that differs in letter case alone, else `folder`/`name`. Empty
/// where there is no folder: it is not the one that the program was started in.
std::string FolderFile(const std::string& folder, std::string_view name);

/// The same in the first of `folders` that has the file; in the first one at all where none has it.
std::string FirstFolderFile(const std::vector<std::string>& folders, std::string_view name);

/// The lines of a Windows-1252 file as UTF-8; nothing where it cannot be read or is no regular file. Each of
/// CR LF, LF and CR ends a line.
std::optional<std::vector<std::string>> ReadLines(const std::string& path);

/// Gives the file these lines (UTF-8), each ended by CR LF, as Windows-1252. A failure is not reported: the
/// file is as it was then. An empty path is no file.
void WriteLines(const std::string& path, const std::vector<std::string>& lines);

/// As WriteLines, but a file that is there already, or comes to be at the same moment, stays as it is.
void CreateLines(const std::string& path, const std::vector<std::string>& lines);

}  // namespace kolvane::device
