#pragma once

#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "device/fake_port_library.h"
#include "script/fake_run_host.h"
#include "script/list_text.h"
#include "script/script_core.h"
#include "terminal/session_bench.h"

namespace kolvane::script {

/// A command list and a connected session, with only fakes around them.
struct RunBench : terminal::SessionBench {
  using Lines = std::vector<std::string>;

  /// Fills the list, "|" between the rows, and runs it to the end.
  void Play(std::string_view rows) {
    FillList(core.list, rows);
    core.runner.Play();
  }

  /// What was sent to the device, "|" between the commands.
  std::string Sent() const {
    std::string sent;
    for (const std::string& call : device.calls) {
      if (!call.starts_with("Write ")) continue;
      const std::string command = call.substr(6, call.find('|') - 6);
      sent += (sent.empty() ? "" : "|") + command;
    }
    return sent;
  }

  ScriptState script;
  terminal::FakeClock clock;
  terminal::Exchange exchange{session, waits, state.options, output, clock, ","};
  FakeRunHost host;
  ScriptCore core{{script, state, device_state, exchange, pane, waits, prompt, log, host}};
};

}  // namespace kolvane::script
