#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/clock.h"
#include "device/connection_parameters.h"
#include "device/device_state.h"
#include "device/modem_dialler.h"
#include "device/port_library.h"

namespace kolvane::device {

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
