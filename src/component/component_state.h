#pragma once

#include <optional>

#include "component/host_parameters.h"
#include "device/connection_parameters.h"
#include "device/device_state.h"
#include "device/waits.h"
#include "kolvane/MainClass.h"
#include "script/script_state.h"
#include "terminal/terminal_state.h"

namespace kolvane::component {

/// All state that lives as long as the component. MainClass uses a single instance; a test creates its own.
struct ComponentState {
  device::DeviceState device;
  device::ConnectionParameters connection;
  std::optional<HostParts> host_parts;  ///< which connection data a host gave, operating modes 0 and 1
  terminal::TerminalState terminal;
  script::ScriptState script;
  terminal::WindowSettings window;
  TerminalOptions options;
  device::Waits* waits = nullptr;  ///< of the open window
  bool window_open = false;
  bool can_unload = false;
};

}  // namespace kolvane::component
