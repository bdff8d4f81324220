#pragma once

#include <memory>
#include <optional>

#include "devlnk/channel.h"
#include "devlnk/device_node.h"

namespace kolvane::devlnk {

/// Transfer mode of a parallel port, with its number in the list of modes.
enum class ParallelMode { kNibble = 1, kBit8 = 2, kByte = 3, kEpp = 4, kInterlink = 95 };

/// The mode for the number passed as the baud rate; nothing if there is no such mode.
std::optional<ParallelMode> ParallelModeFrom(std::int32_t number);

/// Claims the port and enters the mode; the channel releases the port. kModeRefused if port or instrument
/// does not support it.
Opened OpenParallelNode(std::unique_ptr<DeviceNode> node, ParallelMode mode);

/// Port kind "LPT": baud is the mode's number.
Opened OpenParallel(const PortRequest& request, Deadline& deadline);

}  // namespace kolvane::devlnk
