#pragma once

#include "base/clock.h"
#include "device/device.h"
#include "device/host_path.h"
#include "device/port_path.h"
#include "device/waits.h"

namespace kolvane::device {

/// The device of operating modes without one: no operation does anything or fails.
class NoDevice final : public Device {
 public:
  void Open() override {}
  void Close() override {}
  void Write(std::string_view, std::string_view, std::int16_t) override {}
  void ReadText(std::string_view, std::int32_t, std::string& answer, Bytes&) override { answer.clear(); }
  std::size_t ReadBinary(std::string_view, std::int32_t, Bytes&) override { return 0; }
  void SetTimeout(std::int32_t) override {}
  DeviceError LastError() override { return {}; }
  void ClearLastError() override {}
  std::optional<std::int32_t> FlushInput() override { return std::nullopt; }
  void ActivateInterpreter() override {}
};

/// The only access to the instrument: each call takes the path of the current DeviceState::OperMode. All
/// references must outlive this object.
class DeviceIo final : public Device {
 public:
  DeviceIo(DeviceState& state, ConnectionParameters& parameters, PortLibrarySource& source,
           const base::Clock& clock, Waits& waits, DateTimeSource date_time = base::CurrentDateTimeText);

  /// Forgets what the last connection left in the state: bytes put back, the modem's word.
  void Open() override;
  void Close() override;
  void Write(std::string_view command, std::string_view terminator, std::int16_t extra) override;
  void ReadText(std::string_view terminator, std::int32_t count, std::string& answer, Bytes& buffer) override;
  /// Fails with kGivenUp, without reading, once the current answer was given up.
  std::size_t ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) override;
  [[gnu::hot]] void SetTimeout(std::int32_t milliseconds) override {
    const Waits::Scope scope(waits_);
    Path().SetTimeout(milliseconds);
  }
  [[gnu::hot]] DeviceError LastError() override {
    const Waits::Scope scope(waits_);
    return Path().LastError();
  }
  [[gnu::hot]] void ClearLastError() override {
    const Waits::Scope scope(waits_);
    Path().ClearLastError();
  }
  /// Nothing in every mode while not connected. Also discards DeviceState::put_back.
  std::optional<std::int32_t> FlushInput() override;
  void ActivateInterpreter() override { Path().ActivateInterpreter(); }
  std::int32_t BytesWaiting() override { return state_.connected ? Path().BytesWaiting() : 0; }
  int WaitDescriptor() override { return state_.connected ? Path().WaitDescriptor() : -1; }
  void Pause(std::int32_t milliseconds) override { Path().Pause(milliseconds); }

 private:
  Device& Path();
  Device& PathBeforeWait();

  DeviceState& state_;
  Waits& waits_;
  IndexedHostPath indexed_host_;
  SingleHostPath single_host_;
  PortPath port_;
  NoDevice none_;
};

}  // namespace kolvane::device
