#pragma once

#include <pybind11/pybind11.h>

#include "device_failure.h"
#include "kolvane/HostObject.h"

namespace kolvane::python {

/// The Python object of a host interface: its members are looked up by name at each call, so that it may be
/// of any class and may change while the terminal is open.
class LateBound {
 public:
  /// To be called with the interpreter lock held.
  explicit LateBound(pybind11::object object) : object_(std::move(object)) {}
  ~LateBound();
  LateBound(const LateBound&) = delete;
  LateBound& operator=(const LateBound&) = delete;

  /// Runs `use(object)` with the interpreter lock held; a Python exception is rethrown as DeviceFailure. The
  /// call may destroy this object.
  template <typename Use>
  auto With(Use use) const {
    const pybind11::gil_scoped_acquire lock;
    const pybind11::object object = object_;
    try {
      return use(object);
    } catch (pybind11::error_already_set& raised) {
      throw DeviceFailure(std::move(raised));
    }
  }

  /// The same for an operation of the session, which shows only the text of a failure; the details are
  /// logged.
  template <typename Use>
  auto InSession(const char* operation, Use use) const {
    try {
      return With(std::move(use));
    } catch (const DeviceFailure& failure) {
      failure.Log(operation);
      throw;
    } catch (const std::exception& error) {
      LogMismatch(operation, error);
      throw;
    }
  }

 private:
  pybind11::object object_;
};

/// The attribute `IO` of a Python device object (operating mode 0).
class PythonIo final : public IoObject {
 public:
  explicit PythonIo(const LateBound& host) : host_(host) {}

  void InitializeDevice(std::int16_t& DevIdx) override;
  void CloseDevice(std::int16_t& DevIdx) override;
  void WriteCommand(std::int16_t& DevIdx, std::string& Command, std::int16_t& Terminator,
                    std::int16_t& Extra) override;
  void Read(std::int16_t& DevIdx, std::int16_t& Binary, std::int16_t& Zero, std::int16_t& Terminator,
            std::int32_t& Count, Variant& Answer, Variant& Buffer) override;
  void SetIOTimeout(std::int16_t& DevIdx, std::int32_t& Milliseconds) override;
  void FlushInQ(std::int16_t& DevIdx) override;
  void GetDeviceProperty(std::int16_t& DevIdx, std::int16_t& Number, Variant& Value) override;

 private:
  const LateBound& host_;
};

/// Any Python object as a host's device object.
class PythonHost final : public HostObject {
 public:
  explicit PythonHost(pybind11::object object) : host_(std::move(object)) {}

  IoObject& IO() override { return io_; }
  void OpenDevice() override;
  void CloseDevice() override;
  void WriteCommand(const std::string& Command) override;
  void Read(std::int16_t& Binary, std::int16_t& Terminator, std::int32_t& Count, Variant& Answer,
            Variant& Buffer) override;
  void FlushInQ(std::int32_t& Count) override;
  void GetDeviceInfo(Variant& Kind, Variant& Address) override;
  Variant LastError() override;
  void SetLastError(std::int16_t Code) override;
  std::string LastErrorDescription() override;

 private:
  LateBound host_;
  PythonIo io_{host_};
};

}  // namespace kolvane::python
