#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::device {

/// The path of the file `name` in `folder`, ignoring case: the file with exactly this name, else the first
/// one in alphabetical order that differs only in case, else `folder`/`name`. Empty if `folder` is empty,
/// which does not mean the current folder.
std::string FolderFile(const std::string& folder, std::string_view name);

/// The same in the first of `folders` that has the file, or in the first one if none has it.
std::string FirstFolderFile(const std::vector<std::string>& folders, std::string_view name);

/// The lines of a Windows-1252 file as UTF-8; nothing if it cannot be read or is not a regular file. CR LF,
/// LF and CR each end a line.
std::optional<std::vector<std::string>> ReadLines(const std::string& path);

/// Replaces the file's content by these lines (UTF-8), each ended by CR LF, as Windows-1252. A failure is not
/// reported and leaves the file unchanged. An empty path is ignored.
void WriteLines(const std::string& path, const std::vector<std::string>& lines);

/// Like WriteLines, but an existing file, even one created at the same moment, stays unchanged.
void CreateLines(const std::string& path, const std::vector<std::string>& lines);

/// The folder of the histories and the modem script: the component's folder or, if it does not exist or the
/// user cannot write to it, the user's own ($XDG_DATA_HOME/Kolvane, default ~/.local/share/Kolvane). The
/// user's own is created, and missing files are copied from the component's; if it cannot be created, the
/// component's is returned, for reading at least.
std::string HistoryFolder(const std::string& component_folder);

/// The folder with the modem script that HistoryFolder would contain. Creates and copies nothing; an empty
/// folder stays empty.
std::string ModemScriptFolder(const std::string& component_folder);

inline constexpr const char* kIpHistoryFile = "IPADDR.INI";
inline constexpr const char* kUsbHistoryFile = "USBADDR.INI";

/// Addresses in the order of their first use; UTF-8, unlimited.
using AddressHistory = std::vector<std::string>;

/// The file's lines except those that are exactly "0" or "1"; empty lines are entries. A missing file gives
/// an empty list.
AddressHistory LoadIpHistory(const std::string& folder);

/// Every line of the file.
AddressHistory LoadUsbHistory(const std::string& folder);

/// Appends `address` unless an exactly equal entry exists. It is stored as it will be in the file: characters
/// outside Windows-1252 become "?". A text of several lines is ignored.
void Remember(AddressHistory& history, const std::string& address);

/// Writes one line per entry, in order; failures are ignored.
void SaveIpHistory(const std::string& folder, const AddressHistory& history);
void SaveUsbHistory(const std::string& folder, const AddressHistory& history);

inline constexpr const char* kModemScriptFile = "MODEM.INI";

/// The dial script (UTF-8), lines separated by CR LF, without empty ones. A missing file gives an empty
/// script.
std::string LoadModemScript(const std::string& folder);

/// Writes the script, lines separated by CR LF, and a final CR LF; failures are ignored.
void SaveModemScript(const std::string& folder, const std::string& script);

}  // namespace kolvane::device
