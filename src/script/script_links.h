#pragma once

#include "base/prompt.h"
#include "device/device_state.h"
#include "device/waits.h"
#include "pane/pane.h"
#include "script/script_state.h"
#include "terminal/exchange.h"
#include "terminal/output.h"
#include "terminal/terminal_state.h"

namespace kolvane::script {

/// The front end that a list runs in.
class RunHost {
 public:
  virtual ~RunHost() = default;
  /// Locks or unlocks the controls that would disturb a run.
  virtual void LockGUI(bool locked) = 0;
  /// Called when the run has reached a row, before executing it.
  virtual void RowStarts() {}
  /// Called after each row of a run, to process events or to check for a stop request. The implementation
  /// decides how often to do so.
  virtual void Yield() = 0;
};

/// What a command list uses while it runs. All of it must outlive the list.
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
