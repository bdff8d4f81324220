#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "device/connection_parameters.h"

namespace kolvane::device {

/// What a RESOURCE names. Fields that its port kind does not use are left empty.
struct Resource {
  std::int16_t port_code = port_code::kOffline;
  std::int16_t address = 0;  ///< bus address, 0 to 31
  std::string host = {};     ///< name or number; an IPv6 address without its brackets
  std::int16_t ip_port = 0;  ///< as ConnectionParameters::ip_port
  std::string serial_number = {};
  std::string node = {};  ///< of a serial line; empty: the one that is configured
  bool operator==(const Resource&) const = default;
};

/// Why a text is no RESOURCE, one English line.
struct ResourceProblem {
  std::string text;
};

/// Reads a name as docs/command-line.md lists them; upper and lower case of key words are the same.
[[nodiscard]] std::variant<Resource, ResourceProblem> ParseResourceName(std::string_view name);

/// Puts `resource` into `parameters`, port option included, and derives the rest of them as for a stored
/// connection.
void ApplyResource(const Resource& resource, ConnectionParameters& parameters);

}  // namespace kolvane::device
