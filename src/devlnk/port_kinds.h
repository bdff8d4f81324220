#pragma once

#include <cstdint>
#include <string_view>

#include "devlnk/channel.h"

namespace kolvane::devlnk {

struct PortKind {
  std::int16_t code;
  std::string_view name;
  Opened (*open)(const PortRequest&, Deadline&);
  Status (*availability)();  ///< kNotAvailable where the system lacks what drives this kind of port
};

/// The row of a port code; null for a code that stands for no port.
const PortKind* FindPortKind(std::int16_t code);

}  // namespace kolvane::devlnk
