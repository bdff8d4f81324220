#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "device/connection_parameters.h"

namespace kolvane::device {

/// The page of the connection dialog that a kind's port parameters are read from.
enum class ParameterPage { kRs232, kGpib, kParallel, kTcpIp };

struct PortKind {
  std::int16_t option;  ///< index of the option button
  const char* caption;
  std::int16_t code;
  ParameterPage page;
};

/// The ten kinds in the order of their option buttons. USB and Offline have no port parameters and use those
/// of the RS232 page.
inline constexpr std::array<PortKind, 10> kPortKinds = {{
    {0, "COM 1", port_code::kCom1, ParameterPage::kRs232},
    {1, "COM 2", port_code::kCom2, ParameterPage::kRs232},
    {2, "COM 1 (RS485)", port_code::kCom1Rs485, ParameterPage::kRs232},
    {3, "COM 2 (RS485)", port_code::kCom2Rs485, ParameterPage::kRs232},
    {4, "LPT1", port_code::kLpt1, ParameterPage::kParallel},
    {5, "LPT2", port_code::kLpt2, ParameterPage::kParallel},
    {6, "GPIB (IEEE488)", port_code::kGpib, ParameterPage::kGpib},
    {7, "Offline", port_code::kOffline, ParameterPage::kRs232},
    {8, "Ethernet TCP/IP", port_code::kTcpIp, ParameterPage::kTcpIp},
    {9, "USB", port_code::kUsb, ParameterPage::kRs232},
}};

/// Null for an unknown index or code.
const PortKind* PortKindOfOption(std::int16_t option);
const PortKind* PortKindOfCode(std::int16_t code);

constexpr bool IsParallel(std::int16_t code) { return code == port_code::kLpt1 || code == port_code::kLpt2; }

/// A serial line with one device.
constexpr bool IsSerial(std::int16_t code) { return code == port_code::kCom1 || code == port_code::kCom2; }

/// Several devices on one serial line, distinguished by their address.
constexpr bool IsRs485(std::int16_t code) {
  return code == port_code::kCom1Rs485 || code == port_code::kCom2Rs485;
}

/// Kinds whose connection leads to a single device with its own address.
constexpr bool IsPointToPoint(std::int16_t code) {
  return code == port_code::kTcpIp || code == port_code::kUsb;
}

/// The RS232 page for an unknown code.
ParameterPage PageOfCode(std::int16_t code);

/// The name of a port code in ports.ini, "COM1", "COM2", "LPT1", "LPT2" or "GPIB"; empty for the kinds
/// without a node.
std::string_view NodeName(std::int16_t code);

/// What a port code refers to on this computer, for the user: the device node of COM and LPT, the board
/// number of GPIB; empty for the other kinds.
std::string PortNode(std::int16_t code);

/// The default device node or board number of a port in ports.ini ("COM1", "GPIB"); empty for any other name.
std::string DefaultNode(std::string_view name);

/// The rate in ports.ini for the line of a port code, "COM1_BAUD=115200"; nothing if there is none.
std::optional<std::int32_t> ConfiguredRate(std::int16_t code);

}  // namespace kolvane::device
