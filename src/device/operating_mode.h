#pragma once

#include <cstdint>

namespace kolvane::device {

/// Values of DeviceState::OperMode; with any other the operations do nothing.
namespace operating_mode {
inline constexpr std::int16_t kHostByIndex = 0;
inline constexpr std::int16_t kHost = 1;
inline constexpr std::int16_t kPortLibrary = 2;
}  // namespace operating_mode

}  // namespace kolvane::device
