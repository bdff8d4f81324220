#pragma once

#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "device/fake_port_library.h"
#include "script/list_text.h"
#include "script/script_core.h"
#include "terminal/session_bench.h"

namespace kolvane::script {

/// A front end that writes down the locks and, after each row, does what a test asks for.
class FakeRunHost final : public RunHost {
 public:
  void LockGUI(bool flag) override {
    locks.push_back(flag);
    if (flag && lock_fails) throw std::bad_alloc();
  }
  void Yield() override {
    ++yields;
    if (at_yield) at_yield();
  }

  std::vector<bool> locks;
  bool lock_fails = false;
  int yields = 0;
  std::function<void()> at_yield;
};

/// A command list with a session that is connected, and nothing but fakes around them.
struct RunBench : terminal::SessionBench {
  using Lines = std::vector<std::string>;

  /// Fills the list, "|" between the rows, and runs it to its end.
  void Play(std::string_view rows) {
    FillList(core.list, rows);
    core.runner.Play();
  }

  /// What went to the device, "|" between the commands.
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
