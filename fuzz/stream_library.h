#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "device/fake_clock.h"
#include "device/port_library.h"
#include "devlnk/input_queue.h"

namespace kolvane::fuzz {

/// A port library whose instrument has sent the given bytes in two pieces; answers are cut out of them by the
/// rules of the real library. Time passes only on the fake clock.
class StreamLibrary final : public device::PortLibrary {
 public:
  static constexpr std::int32_t kTimedOut = -9;

  explicit StreamLibrary(device::FakeClock& clock) : clock_(clock) {}

  /// Replaces the bytes that are left.
  void Send(std::string_view first, std::string_view second) {
    queue_ = {};
    Arrive(first);
    later_ = second;
    consumed_.clear();
    timeouts = 0;
  }

  /// All bytes read so far, terminators included.
  const std::string& consumed() const { return consumed_; }
  std::size_t left() const { return queue_.size() + later_.size(); }

  std::int32_t OpenPort(std::int16_t, std::int32_t, const std::string&, std::int32_t, std::int16_t,
                        std::int16_t) override {
    return open_status;
  }
  std::int32_t SelectDevice(std::int16_t) override { return 0; }
  std::int32_t SetTimeout(std::int32_t milliseconds) override {
    timeout_ms_ = std::max(milliseconds, 1);
    return 0;
  }
  std::int32_t SetGpibControlBlock(std::int16_t, std::int16_t, std::int16_t, std::int16_t, std::int16_t,
                                   std::int16_t, std::int32_t) override {
    return 0;
  }
  std::int32_t EnablePortIo(std::int16_t) override { return 0; }
  std::int32_t WritePort(const std::string&) override { return 0; }
  std::int32_t ReadPort(char* buffer, std::int32_t count, std::int16_t terminator) override {
    const auto wanted = static_cast<std::size_t>(count);
    const auto end = static_cast<unsigned char>(terminator);
    auto answer = queue_.FindAnswer(wanted, end);
    if (!answer) {
      Arrive(std::exchange(later_, {}));
      answer = queue_.FindAnswer(wanted, end);
    }
    if (!answer) return TimeOut();
    std::memcpy(buffer, queue_.data(), answer->delivered);
    consumed_.append(queue_.data(), answer->consumed);
    queue_.Consume(answer->consumed);
    return 0;
  }
  std::int32_t FlushInQueue() override {
    const auto size = static_cast<std::int32_t>(queue_.size());
    queue_.Clear();
    return size;
  }
  std::int32_t ActivateInterpreter(std::int16_t) override { return 0; }
  std::int32_t CloseInterpreter(std::int16_t, std::int16_t) override { return 0; }
  std::int32_t ClosePort() override { return 0; }
  std::int32_t Delay(std::int32_t milliseconds) override {
    clock_.Advance(std::max(milliseconds, 0) / 1000.0);
    return 0;
  }
  std::int32_t MaxUsbDevices() override { return 0; }
  std::int32_t ScanUsbDevices(std::int32_t, char*) override { return 0; }

  std::int32_t open_status = 0;
  int timeouts = 0;

 private:
  void Arrive(std::string_view bytes) {
    while (!bytes.empty()) {
      const auto room = queue_.Room();
      const std::size_t size = std::min(room.size(), bytes.size());
      std::memcpy(room.data(), bytes.data(), size);
      queue_.Commit(size);
      bytes.remove_prefix(size);
    }
  }

  std::int32_t TimeOut() {
    ++timeouts;
    clock_.Advance(timeout_ms_ / 1000.0);
    return kTimedOut;
  }

  device::FakeClock& clock_;
  devlnk::InputQueue queue_;
  std::string_view later_;
  std::string consumed_;
  std::int32_t timeout_ms_ = 1;
};

class StreamLibrarySource final : public device::PortLibrarySource {
 public:
  explicit StreamLibrarySource(StreamLibrary& library) : library_(library) {}
  device::PortLibrary* Library() override { return &library_; }
  std::string Failure() const override { return {}; }

 private:
  StreamLibrary& library_;
};

}  // namespace kolvane::fuzz
