#pragma once

#include <memory>

#include "devlnk/channel.h"
#include "devlnk/device_node.h"

namespace kolvane::devlnk {

/// Port kind "USB": text is the serial number. An instrument uses its message driver; an adapter with a
/// serial line is opened as that line, at 9600 baud, 8 data bits, no parity and 1 stop bit.
Opened OpenUsb(const PortRequest& request, Deadline& deadline);

/// Clears the instrument of an open node of the message driver.
Opened OpenUsbNode(std::unique_ptr<DeviceNode> node, Deadline& deadline);

}  // namespace kolvane::devlnk
