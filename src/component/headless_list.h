#pragma once

#include <string>

#include "component/component_state.h"
#include "component/headless_terminal.h"
#include "kolvane/CommandRun.h"
#include "script/run_host.h"
#include "script/script_core.h"
#include "window/script_log_adapter.h"

namespace kolvane::component {

/// A command list that runs in a terminal without a window.
class HeadlessList final : private script::RunHost {
 public:
  HeadlessList(HeadlessTerminal& terminal, ComponentState& state);

  /// False, and the user has been told, where `file` cannot be read or a stop was asked for meanwhile.
  [[nodiscard]] bool Load(const std::string& file);

  /// Runs the list on the open connection.
  CommandRunStatus Play();

 private:
  void LockGUI(bool) override {}
  void Yield() override;

  HeadlessTerminal& terminal_;
  window::ScriptLogAdapter log_;
  script::ScriptCore core_;
};

}  // namespace kolvane::component
