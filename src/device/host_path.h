#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "device/device.h"
#include "device/device_state.h"

namespace kolvane::device {

/// Common to both host modes: reads, the error properties of the host's object, and catching everything that
/// a host throws. An exception makes the operation fail with its text as description, until the next
/// operation or ClearLastError. The host's object lives until the end of each call, even if it is released
/// during it.
class HostPath : public Device {
 public:
  explicit HostPath(DeviceState& state) : state_(state) {}

  /// The host gets `count` spaces to fill and may return a text or bytes.
  void ReadText(std::string_view terminator, std::int32_t count, std::string& answer, Bytes& buffer) override;
  /// The host gets `count` zero bytes to fill; bytes it leaves out stay zero and count as received. A
  /// one-byte read without a byte is a failure: an answer read byte by byte ends there.
  std::size_t ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) override;
  /// A host's code beyond 16 bits is clamped, so that its sign is kept.
  DeviceError LastError() override;
  void ClearLastError() override;

 protected:
  /// The arguments of a host's Read, which it may change.
  struct HostRead {
    std::int16_t binary;
    std::int16_t terminator;
    std::int32_t count;
    Variant answer;
    Variant buffer;
  };
  virtual void Read(HostObject& host, HostRead& read) = 0;

  /// Runs `call` on the host's object; false if it threw or there is no object.
  template <typename Call>
  bool Run(Call call) {
    read_was_empty_ = false;
    failure_ = FailureOf(call);
    if (failure_) state_.last_result = device_status::kHostFailed;
    return !failure_;
  }

  DeviceState& state() { return state_; }

 private:
  template <typename Call>
  std::optional<std::string> FailureOf(Call call) const {
    const std::shared_ptr<HostObject> held = state_.gObj;
    try {
      if (held == nullptr) throw RuntimeError(RuntimeError::Kind::kNoObject);
      call(*held);
    } catch (const std::exception& error) {
      return error.what();
    } catch (...) {
      return RuntimeError::Description(RuntimeError::Kind::kOther);
    }
    return std::nullopt;
  }

  std::string HostDescription() const;

  DeviceState& state_;
  std::optional<std::string> failure_;
  bool read_was_empty_ = false;  // the one-byte read returned no byte
};

/// Operating mode 0: one of many devices, by index, through the host object's IO(). The index is passed by
/// reference, so a host may change it.
class IndexedHostPath final : public HostPath {
 public:
  using HostPath::HostPath;

  void Open() override;
  void Close() override;
  void Write(std::string_view command, std::string_view terminator, std::int16_t extra) override;
  void SetTimeout(std::int32_t milliseconds) override;
  /// 0, because this host call returns no count.
  std::optional<std::int32_t> FlushInput() override;
  void ActivateInterpreter() override;

 private:
  void Read(HostObject& host, HostRead& read) override;
};

/// Operating mode 1: the host object itself, for one device. It has no time-out and no interpreter to
/// activate.
class SingleHostPath final : public HostPath {
 public:
  using HostPath::HostPath;

  void Open() override;
  void Close() override;
  void Write(std::string_view command, std::string_view terminator, std::int16_t extra) override;
  void SetTimeout(std::int32_t) override {}
  /// The host's count; 0 if the call failed.
  std::optional<std::int32_t> FlushInput() override;
  void ActivateInterpreter() override {}

 private:
  void Read(HostObject& host, HostRead& read) override;

  std::string message_;
};

}  // namespace kolvane::device
