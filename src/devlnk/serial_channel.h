#pragma once

#include <string>

#include "devlnk/channel.h"
#include "devlnk/serial_line.h"

namespace kolvane::devlnk {

/// Port kinds "COM" and "RS485": text is the parity letter. Bytes received before are discarded.
Opened OpenSerial(const PortRequest& request, Deadline& deadline);
Opened OpenRs485(const PortRequest& request, Deadline& deadline);

/// Opens a line by its node.
Opened OpenSerialNode(const std::string& node, const SerialParameters& parameters);

}  // namespace kolvane::devlnk
