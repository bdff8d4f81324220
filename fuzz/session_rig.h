#pragma once

#include "base/fake_prompt.h"
#include "device/device_io.h"
#include "fuzz/stream_library.h"
#include "pane/fake_pane.h"
#include "terminal/connect_bench.h"
#include "terminal/connect_commands.h"
#include "terminal/session.h"
#include "terminal/session_fakes.h"

namespace kolvane::fuzz {

/// A session over the device operations of mode 2, with fakes at both ends. Made once, since making it costs
/// far more than a run; Reset undoes what runs change.
struct SessionRig {
  SessionRig() { Reset(); }

  void Reset() {
    state = {};
    parameters = {};
    parameters.port_code = device::port_code::kTcpIp;
    device_state = {};
    device_state.OperMode = 2;
    device_state.connected = true;
    pane.text.clear();
    pane.lines.clear();
    pane.kinds.clear();
    pane.text_kinds.clear();
    log.lines.clear();
    prompt.errors.clear();
    prompt.messages.clear();
    clock.now = 0;
    library.open_status = 0;
    library.Send({}, {});
  }

  terminal::TerminalState state;
  device::ConnectionParameters parameters;
  device::DeviceState device_state;
  device::FakeClock clock;
  StreamLibrary library{clock};
  StreamLibrarySource libraries{library};
  device::WaitListener listener;
  device::Waits waits{libraries, clock, listener};
  device::DeviceIo io{device_state, parameters, libraries,
                      clock,        waits,      [] { return std::string("20.11.2026 08:05:09"); }};
  pane::FakePane pane;
  terminal::FakeLog log;
  base::FakePrompt prompt;
  terminal::FakeConnectionView view;
  terminal::Output output{state.output, pane, log};
  terminal::ConnectCommands connect{io,
                                    device_state,
                                    output,
                                    prompt,
                                    view,
                                    {.description = [] { return std::string("TCP/IP"); },
                                     .now = [] { return std::string("20.11.2026 08:05:09"); }}};
  terminal::Session session{io, device_state, state, output, connect};
};

}  // namespace kolvane::fuzz
