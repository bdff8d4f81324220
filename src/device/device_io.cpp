#include "device/device_io.h"

#include "device/device_state.h"

namespace kolvane::device {

DeviceIo::DeviceIo(DeviceState& state, ConnectionParameters& parameters, PortLibrarySource& source,
                   const base::Clock& clock, Waits& waits, DateTimeSource date_time)
    : state_(state),
      waits_(waits),
      indexed_host_(state),
      single_host_(state),
      port_(state, parameters, source, clock, std::move(date_time), waits) {}

[[gnu::hot]] Device& DeviceIo::Path() {
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

// The port's own path knows whether it calls the library.
[[gnu::hot]] Device& DeviceIo::PathBeforeWait() {
  Device& path = Path();
  if (&path != &port_) waits_.BeforeHostCall();
  return path;
}

void DeviceIo::Open() {
  const Waits::Scope scope(waits_, Operation::kConnecting);
  state_.put_back.clear();
  state_.modem_word.reset();
  PathBeforeWait().Open();
}

void DeviceIo::Close() {
  const Waits::Scope scope(waits_, Operation::kNone);
  PathBeforeWait().Close();
}

[[gnu::hot]] void DeviceIo::Write(std::string_view command, std::string_view terminator, std::int16_t extra) {
  const Waits::Scope scope(waits_, Operation::kSending);
  PathBeforeWait().Write(command, terminator, extra);
}

[[gnu::hot]] void DeviceIo::ReadText(std::string_view terminator, std::int32_t count, std::string& answer,
                                     Bytes& buffer) {
  const Waits::Scope scope(waits_, Operation::kAnswer);
  PathBeforeWait().ReadText(terminator, count, answer, buffer);
}

// Attends first: when an answer that drips is read byte by byte, no single call waits long.
std::size_t DeviceIo::ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) {
  const Waits::Scope scope(waits_, Operation::kAnswer);
  if (!waits_.Attend()) {
    state_.last_result = device_status::kGivenUp;
    return 0;
  }
  return PathBeforeWait().ReadBinary(terminator, count, buffer);
}

std::optional<std::int32_t> DeviceIo::FlushInput() {
  if (!state_.connected) return std::nullopt;
  const Waits::Scope scope(waits_);
  const std::optional<std::int32_t> discarded = PathBeforeWait().FlushInput();
  state_.put_back.clear();
  return discarded;
}

}  // namespace kolvane::device
