#pragma once

#include <cstdint>
#include <optional>

#include "devlnk/channel.h"

namespace kolvane::devlnk {

/// Port kind "Ethernet TCP/IP": text is the host, data_bits the IP port. Looking the name up and connecting
/// share the deadline.
Opened OpenTcp(const PortRequest& request, Deadline& deadline);

/// The IP port that the data-bits position stands for; nothing where it is not a port.
std::optional<std::uint16_t> IpPortFrom(std::int32_t data_bits);

}  // namespace kolvane::devlnk
