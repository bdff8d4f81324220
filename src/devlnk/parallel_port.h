#pragma once

#include <memory>
#include <optional>

#include "devlnk/channel.h"
#include "devlnk/device_node.h"

namespace kolvane::devlnk {

/// How a parallel port carries data, as the list of modes numbers it.
enum class ParallelMode { kNibble = 1, kBit8 = 2, kByte = 3, kEpp = 4, kInterlink = 95 };

/// From the number in the place of the baud rate; nothing for one that stands for no mode.
std::optional<ParallelMode> ParallelModeFrom(std::int32_t number);

/// Claims the port and enters the mode; the channel gives the port back. kModeRefused where port or
/// instrument cannot do it.
Opened OpenParallelNode(std::unique_ptr<DeviceNode> node, ParallelMode mode);

/// Port kind "LPT": baud is the mode's number.
Opened OpenParallel(const PortRequest& request, Deadline& deadline);

}  // namespace kolvane::devlnk
