#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "kolvane/HostObject.h"

namespace kolvane::device {

/// Values of DeviceState::OperMode; with any other value the operations do nothing.
namespace operating_mode {
inline constexpr std::int16_t kHostByIndex = 0;
inline constexpr std::int16_t kHost = 1;
inline constexpr std::int16_t kPortLibrary = 2;
}  // namespace operating_mode

/// Last results with a meaning for the terminal; any other is only shown.
namespace device_status {
// Of the port library.
inline constexpr std::int16_t kUnreachable = -23;
inline constexpr std::int16_t kReadTimeout = -30;
inline constexpr std::int16_t kClosedByPeer = -40;
inline constexpr std::int16_t kConnectionLost = -41;
inline constexpr std::int16_t kGivenUp = -60;
// Of this component.
inline constexpr std::int16_t kBlockTooLong = -61;     ///< in the port library's range
inline constexpr std::int16_t kHostFailed = -901;      ///< the host's object threw an exception
inline constexpr std::int16_t kNoPortLibrary = -902;   ///< the port library cannot be loaded
inline constexpr std::int16_t kTestAnswerEnd = -903;   ///< offline: the test answer has been read completely
inline constexpr std::int16_t kNoNodeFunction = -904;  ///< the port library cannot set the chosen node
}  // namespace device_status

/// Whether the status means that no transfer is possible until the port is reopened.
constexpr bool EndsConnection(std::int32_t status) {
  return status == device_status::kClosedByPeer || status == device_status::kConnectionLost ||
         status == device_status::kUnreachable;
}

/// The device that the operations use, and the result of the last one.
struct DeviceState {
  std::shared_ptr<HostObject> gObj;  ///< the host's device object, operating modes 0 and 1
  std::int16_t OperMode = 0;  ///< 0 host by index, 1 host, 2 port library; any other: operations do nothing
  std::int16_t DevIdx = 0;
  bool connected = false;
  std::int16_t test_mode = 0;    ///< 0, or the port code -1 while connected offline
  std::int32_t last_result = 0;  ///< of the last port-library call or host operation; negative = failure
  /// Of control block, port enable, time-out, dialling or scan; -1: cancelled.
  std::int32_t open_step_status = 0;
  std::optional<std::string> modem_word;  ///< the modem's last one if the last opening failed while dialling
  bool utf8 = false;                      ///< the device's bytes are UTF-8, in port-library mode
  std::string put_back;                   ///< bytes already read that belong to the next answer
};

}  // namespace kolvane::device
