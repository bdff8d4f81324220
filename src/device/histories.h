#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::device {

/// The path of the file `name` in `folder`, whose case does not matter: the file named exactly so,
/// else the first one in alphabetical order that differs only in case, else `folder`/`name`. Empty
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

/// Where the histories and the modem script are kept: the component's folder, or the user's own
/// ($XDG_DATA_HOME/Kolvane, default ~/.local/share/Kolvane) where this user cannot write to the component's
/// or it is not there. The user's own is made, and each file that it lacks is copied from the component's;
/// where it cannot be made the component's is left, to be read at least.
std::string HistoryFolder(const std::string& component_folder);

/// The folder that holds the modem script which would stand in HistoryFolder. Makes and copies nothing; an
/// empty folder stays so.
std::string ModemScriptFolder(const std::string& component_folder);

inline constexpr const char* kIpHistoryFile = "IPADDR.INI";
inline constexpr const char* kUsbHistoryFile = "USBADDR.INI";

/// Addresses in the order in which they were first used; UTF-8, without a limit.
using AddressHistory = std::vector<std::string>;

/// The file's lines but those that are exactly "0" or "1"; empty lines are entries. No file is an empty list.
AddressHistory LoadIpHistory(const std::string& folder);

/// Every line of the file.
AddressHistory LoadUsbHistory(const std::string& folder);

/// Adds `address` at the end where no entry is exactly equal. It is entered as the file will hold it:
/// characters that Windows-1252 lacks are "?". A text of several lines is no address and is left out.
void Remember(AddressHistory& history, const std::string& address);

/// One line for each entry, in order; quiet where the file cannot be written.
void SaveIpHistory(const std::string& folder, const AddressHistory& history);
void SaveUsbHistory(const std::string& folder, const AddressHistory& history);

inline constexpr const char* kModemScriptFile = "MODEM.INI";

/// The dial script (UTF-8), its lines separated by CR LF, without the empty ones. No file is an empty script.
std::string LoadModemScript(const std::string& folder);

/// Writes the script, lines separated by CR LF, and one CR LF after it; quiet where the file cannot be
/// written.
void SaveModemScript(const std::string& folder, const std::string& script);

}  // namespace kolvane::device
