#pragma once

#include <memory>
#include <string>
#include <vector>

#include "device/device_io.h"
#include "device/device_state.h"
#include "fake_clock.h"
#include "fake_port_library.h"
#include "recording_host.h"
#include "recording_wait_listener.h"

namespace kolvane::device {

using Calls = std::vector<std::string>;

/// A DeviceIo with everything around it faked; device index 3, offline answers at "24.10.2026 08:00:00".
struct DeviceRig {
  explicit DeviceRig(std::int16_t mode) {
    state.OperMode = mode;
    state.DevIdx = 3;
    state.gObj = host;
  }

  std::shared_ptr<RecordingHost> host = std::make_shared<RecordingHost>();
  DeviceState state;
  ConnectionParameters parameters;
  FakeClock clock;
  RecordingWaitListener listener;
  FakePortLibrary library{&clock};
  FakePortLibrarySource source{&library};
  Waits waits{source, clock, listener};
  DeviceIo io{state, parameters, source, clock, waits, [] { return std::string("24.10.2026 08:00:00"); }};
  std::string answer;
  Bytes buffer;
};

}  // namespace kolvane::device
