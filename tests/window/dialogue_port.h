#pragma once

#include <string>

#include "device/port_library.h"
#include "script/dialogue.h"

namespace kolvane::window {

/// A port library in front of a DialogueDevice: it answers according to a dialogue and records the actual
/// one.
class DialoguePort final : public device::PortLibrary, public device::PortLibrarySource {
 public:
  explicit DialoguePort(std::string_view dialogue) : device_(dialogue) {}

  const std::string& transcript() const { return device_.transcript(); }

  device::PortLibrary* Library() override { return this; }
  std::string Failure() const override { return ""; }

  std::int32_t OpenPort(std::int16_t, std::int32_t, const std::string&, std::int32_t, std::int16_t,
                        std::int16_t) override {
    return 0;
  }
  std::int32_t SelectDevice(std::int16_t) override { return 0; }
  std::int32_t SetTimeout(std::int32_t) override { return 0; }
  std::int32_t SetGpibControlBlock(std::int16_t, std::int16_t, std::int16_t, std::int16_t, std::int16_t,
                                   std::int16_t, std::int32_t) override {
    return 0;
  }
  std::int32_t EnablePortIo(std::int16_t) override { return 0; }
  std::int32_t WritePort(const std::string& text) override {
    device_.Write(base::FromWindows1252(text), "", 0);
    return 0;
  }
  std::int32_t ReadPort(char* buffer, std::int32_t count, std::int16_t) override {
    std::string answer;
    Bytes none;
    device_.ReadText("\r\n", count, answer, none);
    const device::DeviceError error = device_.LastError();
    if (error.code < 0) return error.code;
    const std::string bytes = base::ToWindows1252(answer);
    bytes.copy(buffer, static_cast<std::size_t>(count));
    return 0;
  }
  std::int32_t FlushInQueue() override { return 0; }
  std::int32_t ActivateInterpreter(std::int16_t) override { return 0; }
  std::int32_t CloseInterpreter(std::int16_t, std::int16_t) override { return 0; }
  std::int32_t ClosePort() override { return 0; }
  std::int32_t Delay(std::int32_t) override { return 0; }
  std::int32_t MaxUsbDevices() override { return 0; }
  std::int32_t ScanUsbDevices(std::int32_t, char*) override { return 0; }

 private:
  script::DialogueDevice device_;
};

}  // namespace kolvane::window
