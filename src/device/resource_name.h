#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "device/connection_parameters.h"

namespace kolvane::device {

/// A parsed RESOURCE. Fields that its port kind does not use are empty.
struct Resource {
  std::int16_t port_code = port_code::kOffline;
  std::int16_t address = 0;  ///< bus address, 0 to 31
  std::string host = {};     ///< name or numeric address; an IPv6 address without its brackets
  std::int16_t ip_port = 0;  ///< as ConnectionParameters::ip_port
  std::string serial_number = {};
  std::string node = {};  ///< of a serial line; empty: the configured one
  bool operator==(const Resource&) const = default;
};

/// Why a text is not a RESOURCE, one English line.
struct ResourceProblem {
  std::string text;
};

/// Parses a name as listed in docs/command-line.md; the case of key words does not matter.
[[nodiscard]] std::variant<Resource, ResourceProblem> ParseResourceName(std::string_view name);

/// Stores `resource` in `parameters`, port option included, and derives the others as for a stored
/// connection.
void ApplyResource(const Resource& resource, ConnectionParameters& parameters);

}  // namespace kolvane::device
