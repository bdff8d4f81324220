#pragma once

#include <string>
#include <vector>

namespace kolvane::device {

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

}  // namespace kolvane::device
