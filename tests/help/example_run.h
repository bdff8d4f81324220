#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "amplifier/instrument.h"
#include "base/encoding.h"
#include "base/fake_prompt.h"
#include "device/device.h"
#include "device/fake_clock.h"
#include "device/fake_device.h"
#include "device/fake_port_library.h"
#include "pane/fake_pane.h"
#include "script/run_bench.h"
#include "script/script_core.h"
#include "terminal/session_fakes.h"
#include "terminal/terminal_core.h"

namespace kolvane::help {

/// The simulated amplifier as a device without a line; its clock is the test's.
class AmplifierDevice final : public device::Device {
 public:
  explicit AmplifierDevice(const base::Clock& clock) : instrument_(clock, {}) {}

  void Open() override {}
  void Close() override {}
  void Write(std::string_view command, std::string_view /*terminator*/, std::int16_t /*extra*/) override {
    const std::string bytes = base::ToWindows1252(command);
    instrument_.Handle({bytes}, reply_);
  }
  void ReadText(std::string_view terminator, std::int32_t /*count*/, std::string& answer,
                Bytes& /*buffer*/) override {
    const bool succeeds = reply_.kind != amplifier::Reply::Kind::kNone;
    error_ = succeeds ? device::DeviceError{} : device::FakeDevice::TimeOut();
    if (succeeds) answer = base::FromWindows1252(reply_.bytes).append(terminator);
    reply_ = {};
  }
  std::size_t ReadBinary(std::string_view, std::int32_t, Bytes&) override {
    error_ = device::FakeDevice::TimeOut();
    return 0;
  }
  void SetTimeout(std::int32_t) override {}
  device::DeviceError LastError() override { return error_; }
  void ClearLastError() override { error_ = {}; }
  std::optional<std::int32_t> FlushInput() override { return std::nullopt; }
  void ActivateInterpreter() override {}

  /// The bytes of the instrument's answer.
  std::string Ask(std::string_view command) {
    Write(command, "", 0);
    return reply_.bytes;
  }

 private:
  amplifier::Instrument instrument_;
  amplifier::Reply reply_;
  device::DeviceError error_;
};

/// Plays a list on the simulated amplifier, as fast as the processor goes: $DELAY moves the clock.
class ExampleRun {
 public:
  explicit ExampleRun(const std::vector<std::string>& rows) {
    device_state_.connected = true;
    for (std::size_t row = 0; row < rows.size(); ++row)
      core_.list.SetText(static_cast<int>(row) + 1, rows[row]);
    core_.runner.Play();
  }

  const std::vector<std::string>& errors() const { return prompt_.errors; }
  const std::vector<std::string>& log() const { return log_.calls; }
  const std::string& pane() const { return pane_.text; }
  /// Whether every loop and condition that was started has ended.
  bool closed() const { return script_.interpreter.RepeatLevel == 0 && script_.interpreter.IfDepth == 0; }

 private:
  device::FakeClock clock_;
  AmplifierDevice device_{clock_};
  device::FakePortLibrary library_{&clock_};
  device::FakePortLibrarySource libraries_{&library_};
  device::DeviceState device_state_;
  script::ScriptState script_;
  terminal::TerminalState state_;
  pane::FakePane pane_;
  terminal::FakeLog unused_log_;
  terminal::FakeConnectionView view_;
  device::FakeClock wait_clock_;
  device::Waits waits_{libraries_, wait_clock_, view_};
  base::FakePrompt prompt_;
  terminal::FakeLog log_;
  script::FakeRunHost host_;
  terminal::Output output_{state_.output, pane_, unused_log_};
  terminal::ConnectCommands connect_{device_, device_state_, output_,
                                     prompt_, view_,         {.description = [] { return std::string(); }}};
  terminal::Session session_{device_, device_state_, state_, output_, connect_};
  terminal::Exchange exchange_{session_, waits_, state_.options, output_, clock_, ","};
  script::ScriptCore core_{{script_, state_, device_state_, exchange_, pane_, waits_, prompt_, log_, host_}};
};

}  // namespace kolvane::help
