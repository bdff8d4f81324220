#include "device/address_history.h"

#include <algorithm>

#include "base/codepage.h"
#include "device/folder_file.h"

namespace kolvane::device {

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

}  // namespace kolvane::device
