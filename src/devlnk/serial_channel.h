#pragma once

#include "devlnk/channel.h"

namespace kolvane::devlnk {

/// Port kinds "COM" and "RS485": text is the parity letter. Bytes that came before are discarded.
Opened OpenSerial(const PortRequest& request, Deadline& deadline);
Opened OpenRs485(const PortRequest& request, Deadline& deadline);

}  // namespace kolvane::devlnk
