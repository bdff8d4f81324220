#include "device/histories.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/encoding.h"
#include "base/files.h"
#include "base/system.h"
#include "base/text.h"

namespace kolvane::device {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kLineEnd = "\r\n";

std::optional<std::string> ReadBytes(const std::string& path) {
  std::error_code error;
  std::string bytes;
  if (!fs::is_regular_file(path, error) || base::ReadFile(path, bytes) != 0) return std::nullopt;
  return bytes;
}

std::string BytesOf(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) bytes.append(base::ToWindows1252(line)).append(kLineEnd);
  return bytes;
}

}  // namespace

std::string FolderFile(const std::string& folder, std::string_view name) {
  if (folder.empty()) return {};
  const fs::path exact = fs::path(folder) / name;
  std::error_code error;
  if (fs::exists(exact, error)) return exact;
  std::string found;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const std::string other = entry->path().filename();
    if (base::EqualsNoCase(other, name) && (found.empty() || other < found)) found = other;
  }
  return found.empty() ? exact : fs::path(folder) / found;
}

std::string FirstFolderFile(const std::vector<std::string>& folders, std::string_view name) {
  for (const std::string& folder : folders) {
    const std::string file = FolderFile(folder, name);
    std::error_code error;
    if (fs::exists(file, error)) return file;
  }
  return folders.empty() ? std::string() : FolderFile(folders.front(), name);
}

std::optional<std::vector<std::string>> ReadLines(const std::string& path) {
  const std::optional<std::string> bytes = ReadBytes(path);
  if (!bytes) return std::nullopt;
  std::vector<std::string> lines;
  for (std::string_view rest = *bytes; !rest.empty();)
    lines.push_back(base::FromWindows1252(base::TakeLine(rest)));
  return lines;
}

void WriteLines(const std::string& path, const std::vector<std::string>& lines) {
  if (path.empty()) return;
  const std::string bytes = BytesOf(lines);
  // Most starts and most uses of the dialog change nothing; this avoids the write.
  if (ReadBytes(path) == bytes) return;
  [[maybe_unused]] const int error = base::ReplaceFile(path, bytes);
}

void CreateLines(const std::string& path, const std::vector<std::string>& lines) {
  [[maybe_unused]] const int error = base::CreateFile(path, BytesOf(lines));
}

namespace {

bool IsWritable(const std::string& folder) {
  return !folder.empty() && faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

void CopyMissing(const std::string& from, const std::string& to, const char* name) {
  std::error_code error;
  const std::string target = FolderFile(to, name);
  if (fs::exists(target, error)) return;
  if (const auto lines = ReadLines(FolderFile(from, name))) CreateLines(target, *lines);
}

}  // namespace

std::string HistoryFolder(const std::string& component_folder) {
  if (IsWritable(component_folder)) return component_folder;
  const std::string own = base::UserDataFolder();
  if (own.empty()) return component_folder;
  std::error_code error;
  fs::create_directories(own, error);
  if (!fs::is_directory(own, error)) return component_folder;
  if (component_folder.empty()) return own;
  for (const char* name : {kIpHistoryFile, kUsbHistoryFile, kModemScriptFile})
    CopyMissing(component_folder, own, name);
  return own;
}

std::string ModemScriptFolder(const std::string& component_folder) {
  if (component_folder.empty() || IsWritable(component_folder)) return component_folder;
  const std::string own = base::UserDataFolder();
  std::error_code error;
  return fs::exists(FolderFile(own, kModemScriptFile), error) ? own : component_folder;
}

AddressHistory LoadIpHistory(const std::string& folder) {
  AddressHistory history = ReadLines(FolderFile(folder, kIpHistoryFile)).value_or(AddressHistory{});
  std::erase_if(history, [](const std::string& line) { return line == "0" || line == "1"; });
  return history;
}

AddressHistory LoadUsbHistory(const std::string& folder) {
  return ReadLines(FolderFile(folder, kUsbHistoryFile)).value_or(AddressHistory{});
}

void Remember(AddressHistory& history, const std::string& address) {
  if (address.find_first_of("\r\n") != std::string::npos) return;
  const std::string entry = base::FromWindows1252(base::ToWindows1252(address));
  if (std::find(history.begin(), history.end(), entry) == history.end()) history.push_back(entry);
}

void SaveIpHistory(const std::string& folder, const AddressHistory& history) {
  WriteLines(FolderFile(folder, kIpHistoryFile), history);
}

void SaveUsbHistory(const std::string& folder, const AddressHistory& history) {
  WriteLines(FolderFile(folder, kUsbHistoryFile), history);
}

std::string LoadModemScript(const std::string& folder) {
  const auto lines = ReadLines(FolderFile(folder, kModemScriptFile));
  if (!lines) return {};
  std::string script;
  for (const std::string& line : *lines) {
    if (line.empty()) continue;
    if (!script.empty()) script += "\r\n";
    script += line;
  }
  return script;
}

void SaveModemScript(const std::string& folder, const std::string& script) {
  WriteLines(FolderFile(folder, kModemScriptFile), {script});
}

}  // namespace kolvane::device
