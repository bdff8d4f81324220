#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "device/connection_parameters.h"
#include "device/loaded_port_library.h"

namespace kolvane::soak {

/// A port library whose every port leads to one TCP/IP port of this computer, whatever is chosen: no other
/// device is ever opened.
class OnePeerPort final : public device::PortLibrary {
 public:
  OnePeerPort(device::PortLibrary& real, std::uint16_t port) : real_(real), port_(port) {}

  std::int32_t OpenPort(std::int16_t, std::int32_t, const std::string&, std::int32_t, std::int16_t,
                        std::int16_t) override {
    return real_.OpenPort(device::port_code::kTcpIp, 1, "127.0.0.1", port_, 1, 0);
  }
  std::int32_t SelectDevice(std::int16_t address) override { return real_.SelectDevice(address); }
  std::int32_t SetTimeout(std::int32_t milliseconds) override { return real_.SetTimeout(milliseconds); }
  std::int32_t SetGpibControlBlock(std::int16_t, std::int16_t, std::int16_t, std::int16_t, std::int16_t,
                                   std::int16_t, std::int32_t) override {
    return 0;
  }
  std::int32_t EnablePortIo(std::int16_t) override { return 0; }
  std::int32_t WritePort(const std::string& text) override { return real_.WritePort(text); }
  std::int32_t ReadPort(char* buffer, std::int32_t count, std::int16_t terminator) override {
    return real_.ReadPort(buffer, count, terminator);
  }
  std::int32_t Delivered() const override { return real_.Delivered(); }
  std::int32_t FlushInQueue() override { return real_.FlushInQueue(); }
  std::int32_t ActivateInterpreter(std::int16_t value) override { return real_.ActivateInterpreter(value); }
  std::int32_t CloseInterpreter(std::int16_t, std::int16_t value) override {
    return real_.CloseInterpreter(device::port_code::kTcpIp, value);
  }
  std::int32_t ClosePort() override { return real_.ClosePort(); }
  std::int32_t Delay(std::int32_t milliseconds) override { return real_.Delay(milliseconds); }
  std::int32_t MaxUsbDevices() override { return real_.MaxUsbDevices(); }
  std::int32_t ScanUsbDevices(std::int32_t slots, char* buffer) override {
    return real_.ScanUsbDevices(slots, buffer);
  }
  std::int32_t BytesWaiting() override { return real_.BytesWaiting(); }
  std::int32_t WaitDescriptor() override { return real_.WaitDescriptor(); }
  std::string StatusText(std::int32_t status) override { return real_.StatusText(status); }
  bool TakesNode() const override { return true; }
  std::int32_t SetNode(std::int16_t, const std::string&) override { return 0; }

 private:
  device::PortLibrary& real_;
  const std::uint16_t port_;
};

class OnePeerLibrary final : public device::PortLibrarySource {
 public:
  explicit OnePeerLibrary(std::uint16_t port) : real_(KOLVANE_LIBRARY_FOLDER), peer_port_(port) {}

  device::PortLibrary* Library() override {
    device::PortLibrary* const library = real_.Library();
    if (library == nullptr) return nullptr;
    if (!port_) port_.emplace(*library, peer_port_);
    return &*port_;
  }
  std::string Failure() const override { return real_.Failure(); }
  void SetWaitHandler(const device::WaitHandler& handler) override { real_.SetWaitHandler(handler); }
  bool IsAttended() const override { return real_.IsAttended(); }

 private:
  device::LazyPortLibrary real_;
  const std::uint16_t peer_port_;
  std::optional<OnePeerPort> port_;
};

}  // namespace kolvane::soak
