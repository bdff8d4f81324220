#pragma once

#include <cstdint>
#include <memory>

#include "kolvane/HostObject.h"

namespace kolvane::device {

/// Values of DeviceState::OperMode; with any other the operations do nothing.
namespace operating_mode {
inline constexpr std::int16_t kHostByIndex = 0;
inline constexpr std::int16_t kHost = 1;
inline constexpr std::int16_t kPortLibrary = 2;
}  // namespace operating_mode

/// Failures that this layer itself reports as a last result, apart from those of host and port library.
namespace device_status {
inline constexpr std::int16_t kGivenUp = -60;         ///< by whoever waited; the port library's number for it
inline constexpr std::int16_t kHostFailed = -901;     ///< the host's object raised an exception
inline constexpr std::int16_t kNoPortLibrary = -902;  ///< the port library cannot be loaded
inline constexpr std::int16_t kTestAnswerEnd = -903;  ///< offline: the test answer has been read to its end
inline constexpr std::int16_t kNoNodeFunction = -904;  ///< a node was chosen, the port library takes none
}  // namespace device_status

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
