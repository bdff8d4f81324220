#include "devlnk/usb_devices.h"

#include <algorithm>

#include "devlnk/background_work.h"
#include "devlnk/sysfs.h"

namespace kolvane::devlnk {
namespace {

namespace fs = std::filesystem;

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

bool Holds(const std::vector<UsbDevice>& devices, const std::string& serial) {
  return std::any_of(devices.begin(), devices.end(),
                     [&](const UsbDevice& device) { return device.serial == serial; });
}

}  // namespace

std::vector<UsbDevice> ScanUsb(const std::string& root, Deadline& deadline) {
  std::vector<UsbDevice> devices;
  deadline.Start();
  for (const NodeClass& kind : kClasses) {
    for (const fs::path& entry : sysfs::EntriesOf(fs::path(root) / kind.folder, kind.prefix)) {
      if (deadline.IsOver()) return devices;
      const fs::path device = sysfs::UsbDeviceOf(entry, root);
      const std::string serial = device.empty() ? std::string() : sysfs::Attribute(device / "serial");
      if (serial.empty() || Holds(devices, serial)) continue;
      devices.push_back({kind.driver, sysfs::NodeOf(entry), serial, sysfs::DescriptionOf(device)});
    }
  }
  return devices;
}

std::vector<UsbDevice> AttachedUsb(Waiting* waiting) { return ScanInTime(ScanUsb, waiting); }

}  // namespace kolvane::devlnk
