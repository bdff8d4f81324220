#include "devlnk/fake_sysfs.h"

#include <algorithm>
#include <fstream>

namespace kolvane::devlnk {

namespace fs = std::filesystem;

void FakeSysfs::AddDevice(const std::string& bus, const std::vector<std::string>& attributes) {
  fs::create_directories(DeviceFolder(bus));
  for (const std::string& attribute : attributes) {
    const std::size_t sign = std::min(attribute.find('='), attribute.size());
    const std::string value = sign < attribute.size() ? attribute.substr(sign + 1) + "\n" : "";
    std::ofstream(DeviceFolder(bus) / attribute.substr(0, sign)) << value;
  }
}

void FakeSysfs::AddNode(const std::string& kind, const std::string& name, const std::string& bus,
                        const std::string& node) {
  const fs::path interface = DeviceFolder(bus) / (bus + ":1.0");
  const fs::path entry = interface / kind / name;
  const fs::path folder = root_ / "class" / kind;
  fs::create_directories(entry);
  fs::create_directories(folder);
  fs::create_directory_symlink(interface, entry / "device");
  fs::create_directory_symlink(entry, folder / name);
  if (!node.empty()) std::ofstream(entry / "uevent") << "MAJOR=188\nMINOR=0\nDEVNAME=" << node << "\n";
}

void FakeSysfs::AddClassEntry(const std::string& kind, const std::string& name) {
  const fs::path entry = root_ / "devices/virtual" / kind / name;
  fs::create_directories(entry);
  fs::create_directories(root_ / "class" / kind);
  fs::create_directory_symlink(entry, root_ / "class" / kind / name);
  std::ofstream(entry / "uevent") << "DEVNAME=" << name << "\n";
}

}  // namespace kolvane::devlnk
