#pragma once

#include <string>

#include "device/operating_mode.h"
#include "window/main_window.h"

namespace kolvane::window {

/// What a terminal window works on, as the component would keep it, on the way through a port library. A
/// base, so that it outlives the window.
class WindowRecords {
 protected:
  WindowRecords() { device_.OperMode = device::operating_mode::kPortLibrary; }

  WindowContext ContextWith(device::PortLibrarySource& library, const std::string& folder) {
    return {{device_, connection_, terminal_}, script_, settings_, library, folder};
  }

  device::DeviceState device_;
  device::ConnectionParameters connection_;
  terminal::TerminalState terminal_;
  terminal::WindowSettings settings_;
  script::ScriptState script_;
};

}  // namespace kolvane::window
