#pragma once

#include "base/clock.h"
#include "base/prompt.h"
#include "device/connection_parameters.h"
#include "device/device_io.h"
#include "device/device_state.h"
#include "device/port_library.h"
#include "device/waits.h"
#include "pane/pane.h"
#include "terminal/connect_commands.h"
#include "terminal/exchange.h"
#include "terminal/output.h"
#include "terminal/session.h"
#include "terminal/terminal_state.h"

namespace kolvane::terminal {

/// The parts of the process-wide record that a terminal works on.
struct TerminalSlices {
  device::DeviceState& device;
  device::ConnectionParameters& connection;
  TerminalState& terminal;
};

/// Passes the additions on to where they take effect; call it when they have changed. UTF-8 is for the
/// terminal's own connection; a host's bytes are always Windows-1252.
void ApplyExtras(const TerminalSlices& slices);

/// What a front end provides, whether the window or the command line.
struct FrontEnd {
  pane::Pane& pane;
  Log& log;
  base::Prompt& prompt;
  ConnectionView& connection_view;
};

/// One terminal without its front end: from a command to the device and back to the pane.
struct TerminalCore {
  TerminalCore(TerminalSlices slices, device::PortLibrarySource& library, FrontEnd front_end);

  base::SteadyClock clock;
  device::Waits waits;
  device::DeviceIo device;
  Output output;
  ConnectCommands connect;
  Session session;
  Exchange exchange;
};

}  // namespace kolvane::terminal
