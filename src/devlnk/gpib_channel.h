#pragma once

#include <cstdint>

#include "devlnk/channel.h"
#include "devlnk/gpib_library.h"

namespace kolvane::devlnk {

/// Port kind "GPIB". Opening claims the board; the device is opened and cleared once its address is selected,
/// and transfers before that return kNotOpen.
Opened OpenGpib(const PortRequest& request, Deadline& deadline);

/// The driver's code of the shortest time-out not shorter than `milliseconds`: 1 (10 us) to 17 (1000 s), 17
/// also for longer ones.
int GpibTimeoutCode(std::int32_t milliseconds);

/// The driver's end-of-string setting.
int GpibEosWord(const GpibOptions& options);

}  // namespace kolvane::devlnk
