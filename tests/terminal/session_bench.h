#pragma once

#include "terminal/connect_bench.h"
#include "terminal/session.h"

namespace kolvane::terminal {

/// A session with nothing but fakes around it, connected.
struct SessionBench : ConnectBench {
  SessionBench() { device_state.connected = true; }

  Session session{device, device_state, state, output, connect};
};

}  // namespace kolvane::terminal
