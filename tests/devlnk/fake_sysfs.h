#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/temp_folder.h"

namespace kolvane::devlnk {

/// A folder laid out as the system's record of USB devices is.
class FakeSysfs {
 public:
  /// Attributes as "name=value"; one without a value exists but is empty.
  void AddDevice(const std::string& bus, const std::vector<std::string>& attributes);
  /// An interface of the device `bus` and the node's entry in the class; an empty `node` leaves out its
  /// record.
  void AddNode(const std::string& kind, const std::string& name, const std::string& bus,
               const std::string& node);
  /// An entry of a class that belongs to no device.
  void AddClassEntry(const std::string& kind, const std::string& name);
  std::string root() const { return root_.string(); }
  std::filesystem::path DeviceFolder(const std::string& bus) const { return root_ / "devices/usb1" / bus; }

 private:
  base::TempFolder folder_;
  const std::filesystem::path root_ = folder_.path();
};

}  // namespace kolvane::devlnk
