#include "device/port_table.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

#include "base/number.h"
#include "device/connection_parameters.h"
#include "devlnk/node_names.h"

namespace kolvane::device {
namespace {

const PortKind* Find(std::int16_t PortKind::*field, std::int16_t value) {
  const auto row = std::ranges::find(kPortKinds, value, field);
  return row == kPortKinds.end() ? nullptr : &*row;
}

}  // namespace

const PortKind* PortKindOfOption(std::int16_t option) { return Find(&PortKind::option, option); }

const PortKind* PortKindOfCode(std::int16_t code) { return Find(&PortKind::code, code); }

ParameterPage PageOfCode(std::int16_t code) {
  const PortKind* kind = PortKindOfCode(code);
  return kind == nullptr ? ParameterPage::kRs232 : kind->page;
}

std::string_view NodeName(std::int16_t code) {
  switch (code) {
    case port_code::kCom1:
    case port_code::kCom1Rs485:
      return "COM1";
    case port_code::kCom2:
    case port_code::kCom2Rs485:
      return "COM2";
    case port_code::kLpt1:
      return "LPT1";
    case port_code::kLpt2:
      return "LPT2";
    case port_code::kGpib:
      return "GPIB";
    default:
      return {};
  }
}

std::string DefaultNode(std::string_view name) { return std::string(devlnk::DefaultNode(name)); }

std::string PortNode(std::int16_t code) { return devlnk::NodeFor(NodeName(code)); }

std::optional<std::int32_t> ConfiguredRate(std::int16_t code) {
  const std::string_view name = NodeName(code);
  if (!name.starts_with("COM")) return std::nullopt;
  const std::string text = devlnk::ReadPortsFile();
  const std::string_view rate = devlnk::FindPort(text, std::string(name) + "_BAUD");
  return base::NumberValue(rate, 1, std::numeric_limits<std::int32_t>::max());
}

}  // namespace kolvane::device
