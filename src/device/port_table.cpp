#include "device/port_table.h"

#include <algorithm>

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

std::string PortNode(std::int16_t code) {
  switch (code) {
    case port_code::kCom1:
    case port_code::kCom1Rs485:
      return devlnk::NodeFor("COM1");
    case port_code::kCom2:
    case port_code::kCom2Rs485:
      return devlnk::NodeFor("COM2");
    case port_code::kLpt1:
      return devlnk::NodeFor("LPT1");
    case port_code::kLpt2:
      return devlnk::NodeFor("LPT2");
    case port_code::kGpib:
      return devlnk::NodeFor("GPIB");
    default:
      return {};
  }
}

}  // namespace kolvane::device
