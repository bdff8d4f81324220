#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

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
/// The port library's own numbers that mean something to the terminal.
inline constexpr std::int16_t kUnreachable = -23;
inline constexpr std::int16_t kReadTimeout = -30;
inline constexpr std::int16_t kClosedByPeer = -40;
inline constexpr std::int16_t kConnectionLost = -41;
inline constexpr std::int16_t kGivenUp = -60;
inline constexpr std::int16_t kBlockTooLong = -61;     ///< this layer's, in the library's range
inline constexpr std::int16_t kHostFailed = -901;      ///< the host's object raised an exception
inline constexpr std::int16_t kNoPortLibrary = -902;   ///< the port library cannot be loaded
inline constexpr std::int16_t kTestAnswerEnd = -903;   ///< offline: the test answer has been read to its end
inline constexpr std::int16_t kNoNodeFunction = -904;  ///< a node was chosen, the port library takes none
}  // namespace device_status

/// Whether the port library says so that nothing can be transferred any more until it opens the port again.
constexpr bool EndsConnection(std::int32_t status) {
  return status == device_status::kClosedByPeer || status == device_status::kConnectionLost ||
         status == device_status::kUnreachable;
}

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
  std::optional<std::string> modem_word;  ///< the modem's last one where the last opening failed in dialling
  bool utf8 = false;                      ///< the device's bytes are UTF-8, in port-library mode
  std::string put_back;                   ///< bytes that were read and belong to the next answer
};

}  // namespace kolvane::device
