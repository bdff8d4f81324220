#include "devlnk/usb_scan.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "devlnk/background_work.h"

namespace kolvane::devlnk {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestValue = 4096;  // bytes
constexpr std::int32_t kLongestScanMs = 1500;

struct NodeClass {
  const char* folder;
  const char* prefix;
  UsbDriver driver;
};

constexpr NodeClass kClasses[] = {
    {"class/usbmisc", "usbtmc", UsbDriver::kTmc},
    {"class/tty", "ttyUSB", UsbDriver::kSerial},
    {"class/tty", "ttyACM", UsbDriver::kSerial},
};

std::string FileStart(const fs::path& path) {
  std::string text(kLongestValue, '\0');
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return {};
  std::ifstream file(path, std::ios::binary);
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(file.gcount()));
  return text;
}

/// One line, without control characters and the blanks at its ends.
std::string Attribute(const fs::path& path) {
  std::string text = FileStart(path);
  text.erase(std::min(text.find('\n'), text.size()));
  std::replace_if(
      text.begin(), text.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, ' ');
  text.erase(text.find_last_not_of(' ') + 1);
  text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

/// The folder of the USB device that an interface or port below it belongs to; empty when there is none.
fs::path DeviceAbove(const fs::path& below, const fs::path& root) {
  std::error_code error;
  fs::path folder = fs::canonical(below, error);
  const fs::path top = fs::canonical(root, error);
  while (!error && folder != top && folder.has_relative_path()) {
    if (fs::exists(folder / "idVendor", error)) return folder;
    folder = folder.parent_path();
  }
  return {};
}

/// The node's name by the system's record, which may differ from that of the entry.
std::string NodeOf(const fs::path& entry) {
  constexpr std::string_view kKey = "DEVNAME=";
  const std::string text = "\n" + FileStart(entry / "uevent");
  const std::size_t at = text.find("\n" + std::string(kKey));
  if (at == std::string::npos) return "/dev/" + entry.filename().string();
  const std::size_t start = at + 1 + kKey.size();
  const std::string name = text.substr(start, text.find('\n', start) - start);
  return name.starts_with('/') ? name : "/dev/" + name;
}

std::string DescriptionOf(const fs::path& device) {
  const std::string maker = Attribute(device / "manufacturer");
  const std::string product = Attribute(device / "product");
  if (maker.empty() || product.empty()) return maker + product;
  return product.starts_with(maker) ? product : maker + " " + product;
}

std::vector<fs::path> EntriesOf(const fs::path& folder, std::string_view prefix) {
  std::vector<fs::path> entries;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (entry->path().filename().string().starts_with(prefix)) entries.push_back(entry->path());
  }
  // Shorter names first: ttyUSB2 before ttyUSB10.
  std::sort(entries.begin(), entries.end(), [](const fs::path& a, const fs::path& b) {
    const std::size_t left = a.native().size();
    const std::size_t right = b.native().size();
    return left != right ? left < right : a < b;
  });
  return entries;
}

bool Holds(const std::vector<UsbDevice>& devices, const std::string& serial) {
  return std::any_of(devices.begin(), devices.end(),
                     [&](const UsbDevice& device) { return device.serial == serial; });
}

}  // namespace

std::vector<UsbDevice> ScanUsb(const std::string& root, Deadline& deadline) {
  std::vector<UsbDevice> devices;
  deadline.Start();
  for (const NodeClass& kind : kClasses) {
    for (const fs::path& entry : EntriesOf(fs::path(root) / kind.folder, kind.prefix)) {
      if (deadline.IsOver()) return devices;
      const fs::path device = DeviceAbove(entry / "device", root);
      const std::string serial = device.empty() ? std::string() : Attribute(device / "serial");
      if (serial.empty() || Holds(devices, serial)) continue;
      devices.push_back({kind.driver, NodeOf(entry), serial, DescriptionOf(device)});
    }
  }
  return devices;
}

std::vector<UsbDevice> AttachedUsb() {
  const char* named = std::getenv("KOLVANE_SYSFS");
  const std::string root = named == nullptr || named[0] == '\0' ? "/sys" : named;
  Deadline deadline(kLongestScanMs);
  auto devices = ResultBy(deadline, [root] {
    Deadline own(kLongestScanMs);
    return ScanUsb(root, own);
  });
  return devices ? std::move(*devices) : std::vector<UsbDevice>();
}

}  // namespace kolvane::devlnk
