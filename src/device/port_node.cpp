#include "device/port_node.h"

#include "device/connection_parameters.h"
#include "devlnk/node_names.h"

namespace kolvane::device {

std::string PortNode(std::int16_t code) {
  switch (code) {
    case port_code::kCom1:
    case port_code::kCom1Rs485:
      return devlnk::NodeFor("COM1");
    case port_code::kCom2:
    case port_code::kCom2Rs485:
      return devlnk::NodeFor("COM2");
    case port_code::kLpt1:
      return devlnk::NodeFor("LPT1");
    case port_code::kLpt2:
      return devlnk::NodeFor("LPT2");
    case port_code::kGpib:
      return devlnk::NodeFor("GPIB");
    default:
      return {};
  }
}

}  // namespace kolvane::device
