#pragma once

#include "terminal/connect_bench.h"
#include "terminal/session.h"

namespace kolvane::terminal {

/// A connected session with only fakes around it.
struct SessionBench : ConnectBench {
  SessionBench() { device_state.connected = true; }

  Session session{device, device_state, state, output, connect};
};

}  // namespace kolvane::terminal
