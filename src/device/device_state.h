#pragma once

#include <cstdint>
#include <memory>

#include "kolvane/HostObject.h"

namespace kolvane::device {

/// Which device the operations work on and how the last of them ended.
struct DeviceState {
  std::shared_ptr<HostObject> gObj;  ///< the host's device object, operating modes 0 and 1
  std::int16_t OperMode = 0;  ///< 0 host by index, 1 host, 2 port library; any other: operations do nothing
  std::int16_t DevIdx = 0;
  bool connected = false;
  std::int16_t test_mode = 0;    ///< 0, or the port code -1 while connected offline
  std::int32_t last_result = 0;  ///< of the last port-library call or host operation; negative = failure
  std::int32_t open_step_status =
      0;  ///< of control block, port enable, time-out, dialling, scan; -1: cancelled
};

}  // namespace kolvane::device
