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

/// The list is there, and not empty, exactly when the status is kOk.
struct FoundHost {
  Status status = Status::kOk;
  AddressList addresses;
};

/// The addresses of a host for stream connections, IPv4 and IPv6, in the order to try them. An address in
/// figures never asks a name service; a name is waited for until the deadline.
FoundHost FindHost(const std::string& host, std::uint16_t port, Deadline& deadline);

/// The status for an EAI_ code other than 0.
Status StatusFromLookup(int code);

/// Port kind "Ethernet TCP/IP": text is the host, data_bits the IP port. Looking the name up and connecting
/// share the deadline.
Opened OpenTcp(const PortRequest& request, Deadline& deadline);

/// The IP port that the data-bits position stands for; nothing where it is not a port.
std::optional<std::uint16_t> IpPortFrom(std::int32_t data_bits);

}  // namespace kolvane::devlnk
