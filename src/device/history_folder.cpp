#include "device/history_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "base/user_folder.h"
#include "device/address_history.h"
#include "device/folder_file.h"
#include "device/modem_script_file.h"

namespace kolvane::device {
namespace {

namespace fs = std::filesystem;

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

}  // namespace kolvane::device
