#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::devlnk::sysfs {

/// /sys, or the folder named by the variable KOLVANE_SYSFS.
std::string Root();

/// The entries of a class (such as "class/tty") whose names start with `prefix`, sorted by name, shorter ones
/// first: ttyUSB2 before ttyUSB10.
std::vector<std::filesystem::path> EntriesOf(const std::filesystem::path& folder, std::string_view prefix);

/// The first line of a file, without control characters and outer spaces; empty if there is none.
std::string Attribute(const std::filesystem::path& path);

/// The device node of an entry by the system's records, which may differ from the entry's name.
std::string NodeOf(const std::filesystem::path& entry);

/// The folder of the USB device that an entry belongs to; empty if there is none.
std::filesystem::path UsbDeviceOf(const std::filesystem::path& entry, const std::filesystem::path& root);

/// Manufacturer and product of a USB device.
std::string DescriptionOf(const std::filesystem::path& usb_device);

}  // namespace kolvane::devlnk::sysfs
