#pragma once

#include <cstdint>

#include "devlnk/channel.h"
#include "devlnk/gpib_library.h"

namespace kolvane::devlnk {

/// Port kind "GPIB". Opening takes the board; the device opens, and is cleared, once its address is selected,
/// and transfers before that answer kNotOpen.
Opened OpenGpib(const PortRequest& request, Deadline& deadline);

/// The driver's code of the shortest time-out that is not shorter than asked: 1 (10 us) to 17 (1000 s); 17
/// for longer ones too.
int GpibTimeoutCode(std::int32_t milliseconds);

/// The driver's end-of-string word.
int GpibEosWord(const GpibOptions& options);

}  // namespace kolvane::devlnk
