#pragma once

#include <cstdint>
#include <string>

namespace kolvane::device {

/// Called about every 50 ms by a call that waits, from 50 ms on, with the time waited so far; a result other
/// than 0 gives the call up. Without a function nothing is called.
struct WaitHandler {
  std::int32_t (*function)(void* context, std::int32_t waited_ms) = nullptr;
  void* context = nullptr;
};

/// The port library for the device operations. Statuses are signed 32-bit, negative = failure; texts are
/// 8-bit strings. devlnk.h describes each function. The virtual functions with a body are the optional ones.
class PortLibrary {
 public:
  virtual ~PortLibrary() = default;
  virtual std::int32_t OpenPort(std::int16_t port, std::int32_t baud, const std::string& text,
                                std::int32_t data_bits, std::int16_t stop_bits,
                                std::int16_t receive_buffer) = 0;
  virtual std::int32_t SelectDevice(std::int16_t address) = 0;
  virtual std::int32_t SetTimeout(std::int32_t milliseconds) = 0;
  virtual std::int32_t SetGpibControlBlock(std::int16_t eoi_on_write, std::int16_t stop_read_on_eos,
                                           std::int16_t eoi_with_eos, std::int16_t eos_char,
                                           std::int16_t zero, std::int16_t repeat_addressing,
                                           std::int32_t milliseconds) = 0;
  virtual std::int32_t EnablePortIo(std::int16_t port) = 0;
  virtual std::int32_t WritePort(const std::string& text) = 0;
  virtual std::int32_t ReadPort(char* buffer, std::int32_t count, std::int16_t terminator) = 0;
  /// How many bytes the last ReadPort wrote, all at the start of its buffer; negative if the library may have
  /// written anywhere.
  virtual std::int32_t Delivered() const { return -1; }
  virtual std::int32_t FlushInQueue() = 0;
  virtual std::int32_t ActivateInterpreter(std::int16_t value) = 0;
  virtual std::int32_t CloseInterpreter(std::int16_t port, std::int16_t value) = 0;
  virtual std::int32_t ClosePort() = 0;
  virtual std::int32_t Delay(std::int32_t milliseconds) = 0;
  virtual std::int32_t MaxUsbDevices() = 0;
  virtual std::int32_t ScanUsbDevices(std::int32_t slots, char* buffer) = 0;

  /// False if the library has no wait handler.
  virtual bool SetWaitHandler(const WaitHandler& /*handler*/) { return false; }
  virtual std::int32_t BytesWaiting() { return 0; }
  virtual std::int32_t WaitDescriptor() { return -1; }
  /// UTF-8; empty for an unknown status.
  virtual std::string StatusText(std::int32_t /*status*/) { return {}; }

  /// Whether the library has SetNode.
  virtual bool TakesNode() const { return false; }
  virtual std::int32_t SetNode(std::int16_t /*port*/, const std::string& /*node*/) { return -1; }
};

/// Provides the port library at each use.
class PortLibrarySource {
 public:
  virtual ~PortLibrarySource() = default;
  /// Null if none is available; Failure() then gives the reason.
  virtual PortLibrary* Library() = 0;
  /// A German sentence for the user; empty if the last Library() was not null.
  virtual std::string Failure() const = 0;

  /// Applies to this library and any loaded later.
  virtual void SetWaitHandler(const WaitHandler& /*handler*/) {}
  /// Whether a library is loaded that calls the handler.
  virtual bool IsAttended() const { return false; }
};

}  // namespace kolvane::device
