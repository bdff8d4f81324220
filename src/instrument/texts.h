#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/block_head.h"
#include "devlnk/status.h"
#include "kolvane/Instrument.h"

namespace kolvane::instrument {

/// "Verbindung abgelehnt"; empty for an unknown status.
inline std::string_view ReasonText(std::int32_t status) {
  if (status == InstrumentError::kBlockTooLong) return base::kBlockTooLong;
  if (status == InstrumentError::kNoBlock) return "Antwort ist kein Block";
  return devlnk::StatusText(status);
}

/// "TCPIP::amp::7::SOCKET: Verbindung abgelehnt (-22)"
inline std::string FailureText(const std::string& resource, std::string_view reason, std::int32_t status) {
  return resource + ": " + std::string(reason) + " (" + std::to_string(status) + ")";
}

}  // namespace kolvane::instrument
