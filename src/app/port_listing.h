#pragma once

#include <string>
#include <vector>

#include "kolvane/Ports.h"

namespace kolvane::app {

/// One line a port: RESOURCE, device node and description in columns that two spaces keep apart; "-" stands
/// for what a port has none of.
std::string PortTable(const std::vector<Port>& ports);

}  // namespace kolvane::app
