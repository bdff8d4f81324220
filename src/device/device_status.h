#pragma once

#include <cstdint>

namespace kolvane::device {

/// Failures that this layer itself reports as a last result, apart from those of host and port library.
namespace device_status {
inline constexpr std::int16_t kHostFailed = -901;      ///< the host's object raised an exception
inline constexpr std::int16_t kNoPortLibrary = -902;   ///< the port library cannot be loaded
inline constexpr std::int16_t kTestAnswerEnd = -903;   ///< offline: the test answer has been read to its end
inline constexpr std::int16_t kNoNodeFunction = -904;  ///< a node was chosen, the port library takes none
}  // namespace device_status

}  // namespace kolvane::device
