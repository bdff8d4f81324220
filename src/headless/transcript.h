#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/descriptor.h"
#include "base/prompt.h"
#include "device/port_library.h"

namespace kolvane::headless {

/// A file with a line for each transfer of a connection, docs/formats/transcript.md. Each line is appended by
/// a single write as soon as it is complete.
class Transcript {
 public:
  enum class Way { kOpen, kOut, kIn, kClose };

  struct Moment {
    double seconds = 0;  ///< since the transcript was opened
    std::int64_t time_ms = 0;
  };

  /// Creates the file if it does not exist. Returns 0 or an errno. Without `times` the transcripts of
  /// identical exchanges are identical.
  [[nodiscard]] int Open(const std::string& file, bool times);
  const std::string& file() const { return name_; }

  Moment Now() const { return {clock_.Seconds(), base::WallClockMs()}; }

  /// Returns 0 or an errno, after which nothing more is written. `status`: why the connection ended if the
  /// terminal did not close it, else 0.
  [[nodiscard]] int Write(Way way, std::string_view bytes, const Moment& moment, std::int32_t status = 0);

 private:
  base::SteadyClock clock_;
  base::Descriptor file_;
  std::string name_;
  bool times_ = true;
};

/// A port library that records its transfers in a transcript. Bytes that the library would discard on a flush
/// or close are read first.
class RecordedPort final : public device::PortLibrary {
 public:
  /// `prompt` shows one message if the transcript cannot be written.
  RecordedPort(device::PortLibrary& library, Transcript& transcript, base::Prompt& prompt)
      : library_(library), transcript_(transcript), prompt_(prompt) {}

  std::int32_t OpenPort(std::int16_t port, std::int32_t baud, const std::string& text, std::int32_t data_bits,
                        std::int16_t stop_bits, std::int16_t receive_buffer) override;
  std::int32_t WritePort(const std::string& text) override;
  std::int32_t ReadPort(char* buffer, std::int32_t count, std::int16_t terminator) override;
  std::int32_t FlushInQueue() override;
  std::int32_t ClosePort() override;

  std::int32_t SelectDevice(std::int16_t address) override { return library_.SelectDevice(address); }
  std::int32_t SetTimeout(std::int32_t milliseconds) override { return library_.SetTimeout(milliseconds); }
  std::int32_t SetGpibControlBlock(std::int16_t eoi_on_write, std::int16_t stop_read_on_eos,
                                   std::int16_t eoi_with_eos, std::int16_t eos_char, std::int16_t zero,
                                   std::int16_t repeat_addressing, std::int32_t milliseconds) override {
    return library_.SetGpibControlBlock(eoi_on_write, stop_read_on_eos, eoi_with_eos, eos_char, zero,
                                        repeat_addressing, milliseconds);
  }
  std::int32_t EnablePortIo(std::int16_t port) override { return library_.EnablePortIo(port); }
  std::int32_t ActivateInterpreter(std::int16_t value) override {
    return library_.ActivateInterpreter(value);
  }
  std::int32_t CloseInterpreter(std::int16_t port, std::int16_t value) override {
    return library_.CloseInterpreter(port, value);
  }
  std::int32_t Delay(std::int32_t milliseconds) override { return library_.Delay(milliseconds); }
  std::int32_t MaxUsbDevices() override { return library_.MaxUsbDevices(); }
  std::int32_t ScanUsbDevices(std::int32_t slots, char* buffer) override {
    return library_.ScanUsbDevices(slots, buffer);
  }
  bool SetWaitHandler(const device::WaitHandler& handler) override {
    return library_.SetWaitHandler(handler);
  }
  std::int32_t BytesWaiting() override { return library_.BytesWaiting(); }
  std::int32_t WaitDescriptor() override { return library_.WaitDescriptor(); }
  std::string StatusText(std::int32_t status) override { return library_.StatusText(status); }
  bool TakesNode() const override { return library_.TakesNode(); }
  std::int32_t SetNode(std::int16_t port, const std::string& node) override {
    return library_.SetNode(port, node);
  }

 private:
  /// Reads all waiting bytes and returns their number.
  std::int32_t Drain();
  /// Takes the first `count` bytes of the buffer.
  void Receive(std::size_t count);
  void WriteReceived();
  void Write(Transcript::Way way, std::string_view bytes, const Transcript::Moment& moment,
             std::int32_t status = 0);
  /// Returns the status of a transfer; if the connection is lost, records the end.
  std::int32_t Checked(std::int32_t status);
  void NoteLoss();
  void NoteClosed();

  device::PortLibrary& library_;
  Transcript& transcript_;
  base::Prompt& prompt_;
  bool open_ = false;
  std::int32_t lost_ = 0;  // status of the transfer that found the connection lost, until the end is recorded
  std::string buffer_;
  std::string received_;  // bytes received one by one and not yet written
  Transcript::Moment received_at_;
};

/// Wraps the libraries of another source for recording.
class RecordedSource final : public device::PortLibrarySource {
 public:
  RecordedSource(device::PortLibrarySource& source, Transcript& transcript, base::Prompt& prompt)
      : source_(source), transcript_(transcript), prompt_(prompt) {}

  device::PortLibrary* Library() override;
  std::string Failure() const override { return source_.Failure(); }
  void SetWaitHandler(const device::WaitHandler& handler) override { source_.SetWaitHandler(handler); }
  bool IsAttended() const override { return source_.IsAttended(); }

 private:
  device::PortLibrarySource& source_;
  Transcript& transcript_;
  base::Prompt& prompt_;
  std::unique_ptr<RecordedPort> port_;
};

}  // namespace kolvane::headless
