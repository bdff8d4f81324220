#pragma once

#include <cstdint>

namespace kolvane {

/// What a line of the output is.
enum class LineKind : std::uint8_t {
  kCommand,  ///< a command that was sent
  kAnswer,   ///< the device's answer to it
  kNotice,   ///< a message of the terminal: connected, disconnected, input flushed, exchange ended
  kError,    ///< why a command was not written or an answer did not arrive
  kTime      ///< the response time of the answer before it
};

}  // namespace kolvane
