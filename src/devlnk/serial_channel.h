#pragma once

#include <string>

#include "devlnk/channel.h"
#include "devlnk/serial_line.h"

namespace kolvane::devlnk {

/// Port kinds "COM" and "RS485": text is the parity letter. Bytes that came before are discarded.
Opened OpenSerial(const PortRequest& request, Deadline& deadline);
Opened OpenRs485(const PortRequest& request, Deadline& deadline);

/// A line at a node that is known already.
Opened OpenSerialNode(const std::string& node, const SerialParameters& parameters);

}  // namespace kolvane::devlnk
