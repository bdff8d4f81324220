#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/fake_prompt.h"
#include "device/fake_port_library.h"
#include "pane/fake_pane.h"
#include "script/command_list.h"
#include "script/fake_run_host.h"
#include "script/interpreter.h"
#include "script/list_text.h"
#include "script/script_state.h"
#include "terminal/connect_bench.h"
#include "terminal/session_bench.h"
#include "terminal/session_fakes.h"

namespace kolvane::script {

/// A list and its interpreter with only fakes around them.
struct ScriptBench {
  using Lines = std::vector<std::string>;

  /// Executes `line` as the text of row `row`.
  bool Execute(std::string_view line, int row = 1) {
    list.SetCurrentRow(row);
    return interpreter.RunSpecialCommand(line);
  }

  /// The error message of `line` without the part that names row 1; empty if it succeeds.
  std::string ErrorOf(std::string_view line) {
    prompt.errors.clear();
    if (Execute(line)) return {};
    constexpr std::string_view kStart = "Fehler in Befehlsliste (Zeile 1): ";
    const std::string message = prompt.errors.size() == 1 ? prompt.errors.front() : "not one message";
    return message.starts_with(kStart) ? message.substr(kStart.size()) : message;
  }

  ScriptState state;
  terminal::TerminalState terminal;
  device::DeviceState device;
  device::FakePortLibrary library;
  device::FakePortLibrarySource libraries{&library};
  device::FakeClock wait_clock;
  terminal::FakeConnectionView view;
  device::Waits waits{libraries, wait_clock, view};
  pane::FakePane pane;
  base::FakePrompt prompt;
  terminal::FakeLog log;
  CommandList list{&state.run};
  ListErrors errors{list, prompt};
  terminal::SessionBench session;  ///< a separate one, for what reads and flushes
  base::SteadyClock clock;
  terminal::Exchange exchange{session.session, session.waits, session.state.options,
                              session.output,  clock,         ","};
  FakeRunHost host;
  Interpreter interpreter{list, errors, {state, terminal, device, exchange, pane, waits, prompt, log, host}};
};

}  // namespace kolvane::script
