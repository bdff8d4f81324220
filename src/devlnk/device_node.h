#pragma once

#include <sys/types.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "devlnk/deadline.h"
#include "devlnk/status.h"

namespace kolvane::devlnk {

/// A device node whose driver has special calls. Results are those of the system calls, errno included.
class DeviceNode {
 public:
  virtual ~DeviceNode() = default;

  virtual int Control(unsigned long request, void* argument) = 0;
  virtual ssize_t Read(std::span<char> room) = 0;
  virtual ssize_t Write(std::string_view bytes) = 0;
  /// Waits until the driver signals an event or the deadline is over.
  virtual void Wait(Deadline& deadline) = 0;
};

/// Opens and locks the node. Returns kOk and sets `node`, or returns why it is not available. `flags` are
/// those of open(2) besides O_RDWR.
Status OpenDeviceNode(const std::string& path, int flags, std::unique_ptr<DeviceNode>& node);

}  // namespace kolvane::devlnk
