#pragma once

#include <string_view>

#include "base/encoding.h"
#include "device/device_state.h"

namespace kolvane::device {

inline constexpr std::string_view kShownNul = "<00>";

/// The first character of `command` that the device cannot be sent, as messages show it; empty if there is
/// none. For the port library a NUL ends the text: the rest and the terminator would be missing.
inline std::string_view UnsendableCharacter(const DeviceState& state, std::string_view command) {
  if (state.OperMode == operating_mode::kPortLibrary && command.find('\0') != command.npos) return kShownNul;
  return base::UnsendableCharacter(command, state.utf8);
}

}  // namespace kolvane::device
