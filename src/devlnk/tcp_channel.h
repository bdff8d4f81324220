#pragma once

#include <netdb.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "devlnk/channel.h"
#include "devlnk/deadline.h"
#include "devlnk/status.h"

namespace kolvane::devlnk {

struct FreeAddresses {
  void operator()(addrinfo* list) const { freeaddrinfo(list); }
};
using AddressList = std::unique_ptr<addrinfo, FreeAddresses>;

/// The list is set, and not empty, exactly if the status is kOk.
struct FoundHost {
  Status status = Status::kOk;
  AddressList addresses;
};

/// The addresses of a host for stream connections, IPv4 and IPv6, in the order to try them. A numeric address
/// never asks a name service; a name lookup ends with the deadline.
FoundHost FindHost(const std::string& host, std::uint16_t port, Deadline& deadline);

/// The status for an EAI_ code other than 0.
Status StatusFromLookup(int code);

/// Port kind "Ethernet TCP/IP": text is the host, data_bits the IP port. Name lookup and connecting share the
/// deadline.
Opened OpenTcp(const PortRequest& request, Deadline& deadline);

/// The IP port for the data-bits argument; nothing if it is not a port.
std::optional<std::uint16_t> IpPortFrom(std::int32_t data_bits);

}  // namespace kolvane::devlnk
