#include "device/port_table.h"

#include <algorithm>

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

}  // namespace kolvane::device
