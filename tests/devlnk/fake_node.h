#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "devlnk/device_node.h"

namespace kolvane::devlnk {

/// One read brings `bytes`; one write takes that many characters. `error` is the errno of a failure.
struct NodeStep {
  std::string bytes;
  int error = 0;
};

/// What a node does and records. Without steps a write is taken whole, a read finds nothing (EAGAIN).
struct NodeScript {
  std::vector<std::string> calls;
  std::deque<NodeStep> reads;
  std::deque<NodeStep> writes;
  std::map<std::string, int> failing;            ///< name of a request to the errno it fails with
  std::map<std::string, std::uint32_t> answers;  ///< name of a request to the number it returns
  int silence_error = 11;                        ///< EAGAIN
  std::int32_t wait_ms = 0;                      ///< the time-out of the latest wait
};

/// Requests are recorded by name, and with their number if they take one.
std::unique_ptr<DeviceNode> MakeFakeNode(NodeScript& script);

}  // namespace kolvane::devlnk
