#include "devlnk/port_scan.h"

#include <sys/stat.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "base/number.h"
#include "devlnk/background_work.h"
#include "devlnk/gpib_library.h"
#include "devlnk/node_names.h"
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

using Ports = std::vector<FoundPort>;
using Kind = FoundPort::Kind;

// The GPIB driver always creates this many entries, whatever boards exist.
constexpr std::size_t kGpibTable = 16;

/// A port kind with two named ports.
struct NamedKind {
  Kind kind;
  const char* first;
  const char* second;
  const char* description;
};

constexpr NamedKind kSerialKind = {Kind::kSerial, "COM1", "COM2", "serial port"};
constexpr NamedKind kParallelKind = {Kind::kParallel, "LPT1", "LPT2", "parallel port"};

/// The device of a node; nothing if there is none.
std::optional<dev_t> DeviceOf(const std::string& node) {
  struct stat status {};
  if (stat(node.c_str(), &status) != 0 || !S_ISCHR(status.st_mode)) return std::nullopt;
  return status.st_rdev;
}

bool IsSameNode(const std::string& a, const std::string& b) {
  if (a == b) return true;
  const auto device = DeviceOf(a);
  return device && device == DeviceOf(b);
}

std::string NameOf(const NamedKind& kind, const std::string& node) {
  for (const char* name : {kind.first, kind.second}) {
    if (IsSameNode(NodeFor(name), node)) return name;
  }
  return {};
}

void Add(Ports& ports, const NamedKind& kind, const std::string& node, const std::string& description) {
  ports.push_back({kind.kind, NameOf(kind, node), node, 0, {}, description});
}

// Adds nodes that the user has configured for a name but the system's records do not list, such as a line
// created by another program. A default node often exists without a port.
void AddNamed(Ports& ports, const NamedKind& kind, const std::vector<std::string>& recorded) {
  for (const char* name : {kind.first, kind.second}) {
    const std::string node = NodeFor(name);
    const bool known =
        std::ranges::any_of(recorded, [&](const auto& each) { return IsSameNode(each, node); });
    if (!known && node != DefaultNode(name) && DeviceOf(node))
      ports.push_back({kind.kind, name, node, 0, {}, kind.description});
  }
}

// Consoles and pseudo terminals have no device, and most lines that the driver reserves have no chip.
bool IsSerialPort(const fs::path& entry) {
  std::error_code error;
  return fs::exists(entry / "device", error) && sysfs::Attribute(entry / "type") != "0";
}

void AddSerial(Ports& ports, const std::string& root, Deadline& deadline) {
  std::vector<std::string> recorded;
  for (const fs::path& entry : sysfs::EntriesOf(fs::path(root) / "class/tty", "")) {
    if (deadline.HasExpired()) return;
    recorded.push_back(sysfs::NodeOf(entry));
    if (!IsSerialPort(entry)) continue;
    const fs::path device = sysfs::UsbDeviceOf(entry, root);
    const std::string description = device.empty() ? "" : sysfs::DescriptionOf(device);
    Add(ports, kSerialKind, recorded.back(), description.empty() ? kSerialKind.description : description);
  }
  AddNamed(ports, kSerialKind, recorded);
}

void AddUsb(Ports& ports, const std::string& root, Deadline& deadline) {
  for (const UsbDevice& device : ScanUsb(root, deadline))
    ports.push_back({Kind::kUsb, {}, device.node, 0, device.serial, device.description});
}

std::optional<int> BoardFrom(std::string_view text) {
  return base::NumberValue(text, 0, std::numeric_limits<int>::max());
}

// The driver's own table does not show which boards exist, and another driver may have no table: then only
// the configured board is listed.
void AddGpib(Ports& ports, const std::string& root) {
  constexpr std::string_view kPrefix = "gpib";
  const auto configured = BoardFrom(NodeFor("GPIB"));
  const auto entries = sysfs::EntriesOf(fs::path(root) / "class/gpib_common", kPrefix);
  for (const fs::path& entry : entries) {
    const auto board = BoardFrom(entry.filename().string().substr(kPrefix.size()));
    const bool chosen = board == configured;
    if (board && (chosen || entries.size() != kGpibTable))
      ports.push_back({Kind::kGpib, chosen ? "GPIB" : "", sysfs::NodeOf(entry), *board, {}, "GPIB board"});
  }
  if (entries.empty() && configured && GpibAvailability() == Status::kOk)
    ports.push_back({Kind::kGpib, "GPIB", {}, *configured, {}, "GPIB driver"});
}

void AddParallel(Ports& ports, const std::string& root) {
  std::vector<std::string> recorded;
  for (const fs::path& entry : sysfs::EntriesOf(fs::path(root) / "class/ppdev", "parport")) {
    recorded.push_back(sysfs::NodeOf(entry));
    Add(ports, kParallelKind, recorded.back(), kParallelKind.description);
  }
  AddNamed(ports, kParallelKind, recorded);
}

}  // namespace

std::vector<UsbDevice> ScanUsb(const std::string& root, Deadline& deadline) {
  std::vector<UsbDevice> devices;
  deadline.Start();
  for (const NodeClass& kind : kClasses) {
    for (const fs::path& entry : sysfs::EntriesOf(fs::path(root) / kind.folder, kind.prefix)) {
      if (deadline.HasExpired()) return devices;
      const fs::path device = sysfs::UsbDeviceOf(entry, root);
      const std::string serial = device.empty() ? std::string() : sysfs::Attribute(device / "serial");
      if (serial.empty() || Holds(devices, serial)) continue;
      devices.push_back({kind.driver, sysfs::NodeOf(entry), serial, sysfs::DescriptionOf(device)});
    }
  }
  return devices;
}

std::vector<UsbDevice> AttachedUsb(Waiting* waiting) { return ScanInTime(ScanUsb, waiting); }

std::vector<FoundPort> ScanPorts(const std::string& root, Deadline& deadline) {
  Ports ports;
  deadline.Start();
  AddSerial(ports, root, deadline);
  AddUsb(ports, root, deadline);
  AddGpib(ports, root);
  AddParallel(ports, root);
  return ports;
}

std::vector<FoundPort> AttachedPorts() { return ScanInTime(ScanPorts); }

}  // namespace kolvane::devlnk
