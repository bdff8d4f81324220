#pragma once

#include <string>

#include "base/fake_prompt.h"
#include "device/device_state.h"
#include "window/main_window.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// A close request made by a test.
class FakeCloseRequest final : public CloseRequest {
 public:
  bool Made() const override { return made; }
  base::Prompt& Messages() override { return messages; }

  bool made = false;
  base::FakePrompt messages;
};

/// What a terminal window works on, as the component keeps it, connected through a port library. A base
/// class, so that it outlives the window.
class WindowRecords {
 protected:
  WindowRecords() { device_.OperMode = device::operating_mode::kPortLibrary; }

  WindowContext ContextWith(device::PortLibrarySource& library, const std::string& folder) {
    return {{device_, connection_, terminal_}, script_, settings_, library, folder, &close_};
  }

  device::DeviceState device_;
  device::ConnectionParameters connection_;
  terminal::TerminalState terminal_;
  terminal::WindowSettings settings_;
  script::ScriptState script_;
  FakeCloseRequest close_;
};

}  // namespace kolvane::window
