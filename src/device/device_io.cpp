#include "device/device_io.h"

#include "device/device_state.h"

namespace kolvane::device {

DeviceIo::DeviceIo(DeviceState& state, ConnectionParameters& parameters, PortLibrarySource& source,
                   const base::Clock& clock, DialListener& listener, DateTimeSource date_time)
    : state_(state),
      indexed_host_(state),
      single_host_(state),
      port_(state, parameters, source, clock, std::move(date_time), listener) {}

Device& DeviceIo::Path() {
  switch (state_.OperMode) {
    case operating_mode::kHostByIndex:
      return indexed_host_;
    case operating_mode::kHost:
      return single_host_;
    case operating_mode::kPortLibrary:
      return port_;
    default:
      return none_;
  }
}

std::optional<std::int32_t> DeviceIo::FlushInput() {
  return state_.connected ? Path().FlushInput() : std::nullopt;
}

}  // namespace kolvane::device
