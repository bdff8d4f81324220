#pragma once

#include "base/prompt.h"
#include "device/device_state.h"
#include "device/waits.h"
#include "pane/pane.h"
#include "script/script_state.h"
#include "terminal/exchange.h"
#include "terminal/log.h"
#include "terminal/terminal_state.h"

namespace kolvane::script {

/// The front end that a list runs in.
class RunHost {
 public:
  virtual ~RunHost() = default;
  /// Locks (true) or unlocks whatever would disturb a run.
  virtual void LockGUI(bool flag) = 0;
  /// Called once the run has come to a row, before that is carried out.
  virtual void RowStarts() {}
  /// Called after each row of a run: the time to process events, or to look whether a stop was asked for. The
  /// implementer decides how often that is worth while.
  virtual void Yield() = 0;
};

/// What a command list works on when it runs. All of it outlives the list.
struct ScriptLinks {
  ScriptState& state;
  terminal::TerminalState& terminal;
  device::DeviceState& device;
  terminal::Exchange& exchange;
  pane::Pane& pane;
  device::Waits& waits;
  base::Prompt& prompt;
  terminal::Log& log;
  RunHost& host;
};

}  // namespace kolvane::script
