#pragma once

#include <cstdint>
#include <string>

namespace kolvane::device {

/// What this computer has behind a port code, for the user to read: the device node of COM and LPT, the board
/// number of GPIB; empty for the other kinds.
std::string PortNode(std::int16_t code);

}  // namespace kolvane::device
