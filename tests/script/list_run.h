#pragma once

#include <string>

#include "base/fake_prompt.h"
#include "device/fake_port_library.h"
#include "pane/fake_pane.h"
#include "script/command_file.h"
#include "script/dialogue.h"
#include "script/run_bench.h"
#include "script/script_core.h"
#include "terminal/connect_bench.h"
#include "terminal/exchange.h"

namespace kolvane::script {

/// One run of a command file over the real session, connected to the instrument of a dialogue.
class ListRun {
 public:
  ListRun(const std::string& command_file, const std::string& dialogue_text) : device_(dialogue_text) {
    device_state_.connected = true;
    loaded_ = LoadCommandFile(core_.list, command_file).ok();
    core_.runner.Play();
  }

  bool loaded() const { return loaded_; }
  std::string Dialogue() const { return device_.transcript(); }
  std::string Messages() const { return Joined(prompt_.errors); }
  std::string Log() const { return Joined(log_.lines); }
  /// The pane's text, one line per row.
  std::string Pane() const {
    std::string lines = pane_.text.starts_with("\r\n") ? pane_.text.substr(2) : pane_.text;
    for (std::size_t at; (at = lines.find("\r\n")) != std::string::npos;) lines.replace(at, 2, "\n");
    return lines.empty() ? lines : lines + "\n";
  }

 private:
  static std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
  }

  ScriptState script_;
  terminal::TerminalState state_;
  device::DeviceState device_state_;
  DialogueDevice device_;
  device::FakePortLibrary library_;
  device::FakePortLibrarySource libraries_{&library_};
  pane::FakePane pane_;
  terminal::FakeLog log_;
  base::FakePrompt prompt_;
  terminal::FakeClock clock_;
  terminal::FakeConnectionView view_;
  device::FakeClock wait_clock_;
  device::Waits waits_{libraries_, wait_clock_, view_};
  terminal::Output output_{state_.output, pane_, log_};
  terminal::ConnectCommands connect_{
      device_, device_state_, output_, prompt_, view_, {.description = [] { return std::string("TCP/IP"); }}};
  terminal::Session session_{device_, device_state_, state_, output_, connect_};
  terminal::Exchange exchange_{session_, waits_, state_.options, output_, clock_, ","};
  FakeRunHost host_;
  ScriptCore core_{{script_, state_, device_state_, exchange_, pane_, waits_, prompt_, log_, host_}};
  bool loaded_ = false;
};

}  // namespace kolvane::script
