#include "device/resource_name.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "base/number.h"
#include "base/text.h"
#include "device/connection_form.h"
#include "device/connection_texts.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

using Fields = std::vector<std::string_view>;
using Result = std::variant<Resource, ResourceProblem>;

constexpr std::size_t kLongestName = 1024;
constexpr std::string_view kSeparator = "::";

Result Problem(std::string text) { return ResourceProblem{std::move(text)}; }

bool Is(std::string_view field, std::string_view word) { return base::EqualsNoCase(field, word); }

// The length of `text`'s first field; an IPv6 address in brackets contains colons.
std::size_t FieldSize(std::string_view text) {
  const std::size_t bracket = text.starts_with('[') ? text.find(']') : 0;
  if (bracket == std::string_view::npos) return text.size();
  return std::min(text.find(kSeparator, bracket), text.size());
}

Fields Split(std::string_view name) {
  Fields fields;
  for (;;) {
    const std::size_t size = FieldSize(name);
    fields.push_back(name.substr(0, size));
    if (size == name.size()) return fields;
    name.remove_prefix(size + kSeparator.size());
  }
}

std::optional<std::int16_t> BusAddress(std::string_view text) {
  const auto address = base::NumberValue<int>(text, 0, kLastAddress);
  return address ? std::optional(static_cast<std::int16_t>(*address)) : std::nullopt;
}

bool IsDeviceId(std::string_view text) {
  return base::UpperCase(text).starts_with("0X") && base::NumberValue(text.substr(2), 0, 0xFFFF, 16);
}

Result TcpIp(const Fields& fields) {
  if (fields.size() != 4 || !Is(fields[3], "SOCKET"))
    return Problem("write TCPIP::HOST::PORT::SOCKET, an IPv6 address in brackets");
  std::string_view host = fields[1];
  if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
  if (host.empty() || host.find_first_of(" []") != std::string_view::npos)
    return Problem("the host must be a name or an address");
  const auto port = base::NumberValue(fields[2], 1, UINT16_MAX);
  if (!port) return Problem("the port must be a number from 1 to 65535");
  Resource resource{.port_code = port_code::kTcpIp};
  resource.host = host;
  resource.ip_port = static_cast<std::int16_t>(*port);
  return resource;
}

Result Rs485(const Fields& fields, Resource resource) {
  const auto address = fields.size() == 3 ? BusAddress(fields[2]) : std::nullopt;
  if (!address) return Problem("an RS485 address must be a number from 0 to 31");
  resource.port_code = resource.port_code == port_code::kCom2 ? port_code::kCom2Rs485 : port_code::kCom1Rs485;
  resource.address = *address;
  return resource;
}

Result Serial(const Fields& fields) {
  const std::string_view line = fields[0].substr(4);
  Resource resource{.port_code = line == "2" ? port_code::kCom2 : port_code::kCom1};
  if (line.starts_with('/')) {
    resource.node = line;
  } else if (line != "1" && line != "2") {
    return Problem("a serial line is ASRL1, ASRL2 or ASRL and a device's path");
  }
  if (fields.size() > 1 && Is(fields[1], "RS485")) return Rs485(fields, std::move(resource));
  if (fields.size() != 2 || !Is(fields[1], "INSTR"))
    return Problem("a serial line ends in ::INSTR or ::RS485::ADDRESS");
  return resource;
}

Result Usb(const Fields& fields) {
  const bool by_number = fields.size() == 3;
  const bool in_full = fields.size() == 5 && IsDeviceId(fields[1]) && IsDeviceId(fields[2]);
  if ((!by_number && !in_full) || !Is(fields.back(), "INSTR"))
    return Problem("write USB::SERIALNUMBER::INSTR or USB0::0xVVVV::0xPPPP::SERIALNUMBER::INSTR");
  Resource resource{.port_code = port_code::kUsb};
  resource.serial_number = fields[fields.size() - 2];
  if (resource.serial_number.empty()) return Problem("the serial number is missing");
  return resource;
}

Result Gpib(const Fields& fields) {
  const auto address = fields.size() == 3 && Is(fields[2], "INSTR") ? BusAddress(fields[1]) : std::nullopt;
  if (!address) return Problem("write GPIB0::ADDRESS::INSTR with an address from 0 to 31");
  return Resource{.port_code = port_code::kGpib, .address = *address};
}

// HOST:PORT, the host in brackets if it contains colons; names of the other kinds contain "::".
std::optional<std::string> InFull(std::string_view name) {
  if (name.starts_with("/dev/")) return "ASRL" + std::string(name) + "::INSTR";
  const std::size_t colon = name.rfind(':');
  if (colon == std::string_view::npos || colon == 0 || colon + 1 == name.size()) return std::nullopt;
  const std::string_view host = name.substr(0, colon);
  const bool bracketed = host.starts_with('[') && host.ends_with(']');
  if (!bracketed && host.find(':') != std::string_view::npos) return std::nullopt;
  return "TCPIP::" + std::string(host) + "::" + std::string(name.substr(colon + 1)) + "::SOCKET";
}

Result Parse(std::string_view name) {
  if (name.size() > kLongestName) return Problem("it is too long");
  if (std::ranges::any_of(name, base::IsAsciiControl)) return Problem("it contains a control character");
  if (Is(name, "OFFLINE")) return Resource{};
  if (Is(name, "LPT1")) return Resource{.port_code = port_code::kLpt1};
  if (Is(name, "LPT2")) return Resource{.port_code = port_code::kLpt2};
  if (const auto full = InFull(name)) return Parse(*full);
  const Fields fields = Split(name);
  // The board number is optional; there is one of each.
  if (Is(fields[0], "TCPIP") || Is(fields[0], "TCPIP0")) return TcpIp(fields);
  if (Is(fields[0], "USB") || Is(fields[0], "USB0")) return Usb(fields);
  if (Is(fields[0], "GPIB") || Is(fields[0], "GPIB0")) return Gpib(fields);
  if (Is(fields[0].substr(0, 4), "ASRL")) return Serial(fields);
  return Problem(
      "it is neither HOST:PORT nor /dev/NODE, and starts with none of TCPIP, ASRL, USB, GPIB, LPT1, LPT2 and "
      "OFFLINE");
}

std::string Printable(std::string_view name) {
  constexpr std::size_t kShown = 200;
  std::string shown(name.substr(0, kShown));
  std::ranges::replace_if(shown, base::IsAsciiControl, '?');
  return name.size() > kShown ? shown + "..." : shown;
}

}  // namespace

Result ParseResourceName(std::string_view name) {
  Result result = Parse(name);
  if (auto* problem = std::get_if<ResourceProblem>(&result))
    problem->text = "bad RESOURCE '" + Printable(name) + "': " + problem->text;
  return result;
}

void ApplyResource(const Resource& resource, ConnectionParameters& parameters) {
  parameters.port_option = PortKindOfCode(resource.port_code)->option;
  parameters.address = resource.address;
  parameters.ip_address = resource.host;
  parameters.ip_port = resource.ip_port;
  parameters.usb_address = resource.serial_number;
  parameters.node = resource.node;
  // A named connection has no stored settings; these defaults suit every kind.
  parameters.data_bits = 8;
  parameters.stop_bits = 1;
  parameters.receive_buffer = 4096;
  // Parsing has already checked the address.
  static_cast<void>(CompleteConnection(parameters, ""));
}

}  // namespace kolvane::device
