#pragma once

#include <sys/types.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "devlnk/deadline.h"
#include "devlnk/status.h"

namespace kolvane::devlnk {

/// A device node of a driver with calls of its own. Answers are those of the system calls, errno included.
class DeviceNode {
 public:
  virtual ~DeviceNode() = default;

  virtual int Control(unsigned long request, void* argument) = 0;
  virtual ssize_t Read(std::span<char> room) = 0;
  virtual ssize_t Write(std::string_view bytes) = 0;
  /// Until the driver has news or the deadline is over.
  virtual void Wait(Deadline& deadline) = 0;
};

/// Opens and locks the node: kOk, or why it is not available; `node` is set in the first case. `flags` are
/// those of open(2) beyond O_RDWR.
Status OpenDeviceNode(const std::string& path, int flags, std::unique_ptr<DeviceNode>& node);

}  // namespace kolvane::devlnk
