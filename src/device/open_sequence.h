#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "device/connection_parameters.h"
#include "device/device_state.h"
#include "device/port_library.h"
#include "device/waits.h"

namespace kolvane::device {

/// The commands of a dial script, whose lines are separated by CR LF; empty lines are skipped.
std::vector<std::string> ModemCommands(const std::string& script);

/// Whether a modem's word means that no connection will be made.
bool IsRefusal(std::string_view word);

/// Dials with the modem on an open serial port: sends each command with CR after it and reads its reply; then
/// reads replies until one, the last command's own included, contains "CONNECT" in any case. Blocks for at
/// most `timeout_s` seconds, and one read, after the last command.
class ModemDialler {
 public:
  ModemDialler(PortLibrary& library, const base::Clock& clock, Waits& waits)
      : library_(library), clock_(clock), waits_(waits) {}

  /// 0 once connected, -1 if the time is over, it was given up or the library cannot even wait. `commands`
  /// must not be empty.
  [[nodiscard]] std::int32_t Dial(const std::vector<std::string>& commands, std::int32_t timeout_s);

  /// The modem's last word; empty if there was none.
  const std::string& last_word() const { return last_word_; }

 private:
  void Report(const std::string& command, double seconds_left);
  std::int32_t ReadReply();
  std::int32_t ReadReplyPaced();

  PortLibrary& library_;
  const base::Clock& clock_;
  Waits& waits_;
  std::string reply_;
  std::string last_word_;  ///< of the replies to the current command; UTF-8
};

/// Argument of the library's interpreter activation.
inline constexpr std::int16_t kInterpreterValue = 200;

/// Whether the last opening ended with a serial port closed again because setting the time-out or dialling
/// failed. The operations treat that as success; DeviceState::open_step_status has the reason.
bool WasClosedAgain(const DeviceState& state, const ConnectionParameters& parameters);

/// Opens the connection described by `parameters` through the port library; one object per attempt. Changes
/// the record: a time-out of 0 becomes 5000, the address becomes 1 for TCP/IP and USB.
class OpenSequence {
 public:
  OpenSequence(DeviceState& state, ConnectionParameters& parameters, PortLibrarySource& source,
               const base::Clock& clock, Waits& waits)
      : state_(state), parameters_(parameters), source_(source), clock_(clock), waits_(waits) {}

  /// Negative for a failure. 0 means success, or a port for which WasClosedAgain is true.
  [[nodiscard]] std::int32_t Run();

 private:
  std::int32_t ChooseNode(PortLibrary& library);
  void Prepare(PortLibrary& library);
  std::int32_t OpenPort(PortLibrary& library);
  std::int32_t Finish(PortLibrary& library);
  void Dial(PortLibrary& library, const std::vector<std::string>& commands);
  void SetTimeout(PortLibrary& library);

  DeviceState& state_;
  ConnectionParameters& parameters_;
  PortLibrarySource& source_;
  const base::Clock& clock_;
  Waits& waits_;
};

}  // namespace kolvane::device
