#pragma once

#include "base/date_text.h"
#include "device/device.h"
#include "device/indexed_host_path.h"
#include "device/no_device.h"
#include "device/port_path.h"
#include "device/single_host_path.h"

namespace kolvane::device {

/// The one way to the instrument: each call goes the path of DeviceState::OperMode as it stands at that
/// moment. Everything given by reference must outlive this object.
class DeviceIo final : public Device {
 public:
  DeviceIo(DeviceState& state, ConnectionParameters& parameters, PortLibrarySource& source,
           const base::Clock& clock, DialListener& listener,
           DateTimeSource date_time = base::CurrentDateTimeText);

  void Open() override { Path().Open(); }
  void Close() override { Path().Close(); }
  void Write(std::string_view command, std::string_view terminator, std::int16_t extra) override {
    Path().Write(command, terminator, extra);
  }
  void ReadText(std::string_view terminator, std::int32_t count, std::string& answer,
                Bytes& buffer) override {
    Path().ReadText(terminator, count, answer, buffer);
  }
  std::size_t ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) override {
    return Path().ReadBinary(terminator, count, buffer);
  }
  void SetTimeout(std::int32_t milliseconds) override { Path().SetTimeout(milliseconds); }
  DeviceError LastError() override { return Path().LastError(); }
  void ClearLastError() override { Path().ClearLastError(); }
  /// In every mode nothing while not connected.
  std::optional<std::int32_t> FlushInput() override;
  void ActivateInterpreter() override { Path().ActivateInterpreter(); }

 private:
  Device& Path();

  DeviceState& state_;
  IndexedHostPath indexed_host_;
  SingleHostPath single_host_;
  PortPath port_;
  NoDevice none_;
};

}  // namespace kolvane::device
