#pragma once

#include "base/prompt.h"
#include "device/device_state.h"
#include "device/waits.h"
#include "pane/pane.h"
#include "script/command_list.h"
#include "script/interpreter.h"
#include "script/list_recorder.h"
#include "script/runner.h"
#include "script/script_state.h"
#include "terminal/exchange.h"
#include "terminal/terminal_state.h"

namespace kolvane::script {

/// What a front end brings along for its command list.
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

/// A command list, empty, with all that runs and records it, ready for use. What `links` refers to must
/// outlive this.
struct ScriptCore {
  explicit ScriptCore(const ScriptLinks& links)
      : list(&links.state.run),
        errors(list, links.prompt),
        interpreter(list, errors,
                    {links.state.interpreter, links.terminal, links.device, links.waits, links.pane,
                     links.exchange, links.log}),
        runner(list, interpreter, errors, {links.state, links.exchange, links.host}),
        recorder(list, links.state.record, links.prompt) {}

  CommandList list;
  ListErrors errors;
  Interpreter interpreter;
  Runner runner;
  ListRecorder recorder;
};

}  // namespace kolvane::script
