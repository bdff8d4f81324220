#pragma once

#include "script/command_list.h"
#include "script/interpreter.h"
#include "script/list_recorder.h"
#include "script/runner.h"
#include "script/script_links.h"

namespace kolvane::script {

/// An empty command list with everything that runs and records it, ready for use. What `links` refers to must
/// outlive this object.
struct ScriptCore {
  explicit ScriptCore(const ScriptLinks& links)
      : list(&links.state.run),
        errors(list, links.prompt),
        interpreter(list, errors, links),
        runner(list, interpreter, errors, links),
        recorder(list, links.state.record, links.prompt) {}

  CommandList list;
  ListErrors errors;
  Interpreter interpreter;
  Runner runner;
  ListRecorder recorder;
};

}  // namespace kolvane::script
