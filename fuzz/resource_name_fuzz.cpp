// Values of --connect: each valid name, written out again, means the same.
#include "device/resource_name.h"

#include "device/port_table.h"
#include "fuzz/require.h"

namespace kolvane::fuzz {
namespace {

using device::Resource;
namespace port_code = device::port_code;

std::string SerialName(const Resource& resource) {
  const bool second = resource.port_code == port_code::kCom2 || resource.port_code == port_code::kCom2Rs485;
  std::string name = "ASRL" + (resource.node.empty() ? std::string(second ? "2" : "1") : resource.node);
  return name + (device::IsRs485(resource.port_code) ? "::RS485::" + std::to_string(resource.address)
                                                     : std::string("::INSTR"));
}

std::string TcpIpName(const Resource& resource) {
  const auto port = static_cast<std::uint16_t>(resource.ip_port);
  const bool numeric = resource.host.find(':') != std::string::npos;
  const std::string host = numeric ? "[" + resource.host + "]" : resource.host;
  return "TCPIP::" + host + "::" + std::to_string(port) + "::SOCKET";
}

std::string NameOf(const Resource& resource) {
  switch (resource.port_code) {
    case port_code::kLpt1:
      return "LPT1";
    case port_code::kLpt2:
      return "LPT2";
    case port_code::kOffline:
      return "OFFLINE";
    case port_code::kGpib:
      return "GPIB0::" + std::to_string(resource.address) + "::INSTR";
    case port_code::kUsb:
      return "USB::" + resource.serial_number + "::INSTR";
    case port_code::kTcpIp:
      return TcpIpName(resource);
    default:
      return SerialName(resource);
  }
}

void CheckResource(const Resource& resource) {
  const auto again = device::ParseResourceName(NameOf(resource));
  Require(std::holds_alternative<Resource>(again) && std::get<Resource>(again) == resource);
  device::ConnectionParameters parameters;
  device::ApplyResource(resource, parameters);
  Require(parameters.port_code == resource.port_code);
  Require(parameters.address >= 0 && parameters.address <= 31);
}

void CheckProblem(const device::ResourceProblem& problem) {
  Require(problem.text.starts_with("bad RESOURCE '") && problem.text.find('\n') == std::string::npos);
  Require(problem.text.size() < 400);
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  const auto result = device::ParseResourceName({reinterpret_cast<const char*>(data), size});
  if (const auto* resource = std::get_if<device::Resource>(&result)) {
    fuzz::CheckResource(*resource);
  } else {
    fuzz::CheckProblem(std::get<device::ResourceProblem>(result));
  }
  return 0;
}
