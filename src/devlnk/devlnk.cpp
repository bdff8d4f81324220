#include "devlnk/devlnk.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "base/encoding.h"
#include "devlnk/gpib_library.h"
#include "devlnk/port_scan.h"
#include "devlnk/port_session.h"

namespace {

using kolvane::base::EightBitText;
using kolvane::devlnk::AttachedUsb;
using kolvane::devlnk::Code;
using kolvane::devlnk::Deadline;
using kolvane::devlnk::DefaultNode;
using kolvane::devlnk::FindPortKind;
using kolvane::devlnk::GpibAvailability;
using kolvane::devlnk::GpibOptions;
using kolvane::devlnk::InputQueue;
using kolvane::devlnk::PortKind;
using kolvane::devlnk::PortRequest;
using kolvane::devlnk::PortSession;
using kolvane::devlnk::Status;
using kolvane::devlnk::UsbDevice;
using kolvane::devlnk::Waiting;

constexpr std::size_t kScanField = 255;
constexpr std::size_t kScanRecord = 2 * kScanField;
constexpr std::int32_t kScanSlots = 64;

// The C interface has no port handles, so there is one session per process.
[[gnu::hot]] PortSession& Session() {
  static PortSession session;
  return session;
}

// An operation is running; a wait handler may call back.
bool busy = false;

// No exception may reach a caller written in another language; the only one expected here is lack of memory.
template <typename Operation>
std::int32_t Operate(Operation operation) {
  if (std::exchange(busy, true)) return Code(Status::kBusy);
  Status status = Status::kOutOfResources;
  try {
    status = operation(Session());
  } catch (...) {
  }
  busy = false;
  return Code(status);
}

// Like Operate, for operations that need an open port.
template <typename Operation>
std::int32_t OperateOpen(Operation operation) {
  return Operate(
      [&](PortSession& session) { return session.is_open() ? operation(session) : Status::kNotOpen; });
}

Status OpenStatus(const PortSession& session) { return session.is_open() ? Status::kOk : Status::kNotOpen; }

bool IsByte(std::int16_t value) { return value >= 0 && value <= 255; }

bool IsFlag(std::int16_t value) { return value == 0 || value == 1; }

void FillRecord(const UsbDevice& device, char* record) {
  EightBitText(device.serial).copy(record, kScanField);
  EightBitText(device.description).copy(record + kScanField, kScanField);
}

bool IsReadable(const char* buffer, std::int32_t count, std::int16_t terminator) {
  const bool fits = count >= 0 && static_cast<std::size_t>(count) <= InputQueue::kLimit;
  return fits && (buffer != nullptr || count == 0) && IsByte(terminator);
}

}  // namespace

std::int32_t QDX_OpenPort(std::int16_t port, std::int32_t baud, const char* text, std::int32_t data_bits,
                          std::int16_t stop_bits, std::int16_t /*receive_buffer*/) {
  return Operate([&](PortSession& session) {
    return session.OpenPort(port, PortRequest{{}, baud, text == nullptr ? "" : text, data_bits, stop_bits});
  });
}

std::int32_t QDX_SelectDevice(std::int16_t address) {
  return OperateOpen([&](PortSession& session) {
    return address < 0 || address > 31 ? Status::kInvalidArgument : session.Select(address);
  });
}

[[gnu::hot]] std::int32_t QDX_SetTimeout(std::int32_t milliseconds) {
  return Operate([&](PortSession& session) { return session.SetTimeout(milliseconds); });
}

std::int32_t QDX_SetGPIBCtrlBlock(std::int16_t eoi_on_write, std::int16_t stop_read_on_eos,
                                  std::int16_t eoi_with_eos, std::int16_t eos_char, std::int16_t zero,
                                  std::int16_t repeat_addressing, std::int32_t milliseconds) {
  const bool valid = IsFlag(eoi_on_write) && IsFlag(stop_read_on_eos) && IsFlag(eoi_with_eos) &&
                     IsByte(eos_char) && zero == 0 && IsFlag(repeat_addressing) && milliseconds >= 0;
  if (!valid) return Code(Status::kInvalidArgument);
  const GpibOptions options{eoi_on_write == 1, stop_read_on_eos == 1, eoi_with_eos == 1,
                            static_cast<unsigned char>(eos_char), repeat_addressing == 1};
  return Operate([&](PortSession& session) {
    session.SetGpib(options, milliseconds);
    return GpibAvailability();
  });
}

std::int32_t QDX_EnableNTPortIO(std::int16_t port) {
  if (port != 90 && port != 91) return Code(Status::kInvalidArgument);
  return Code(FindPortKind(port)->availability());
}

[[gnu::hot]] std::int32_t QDX_WritePort(const char* text) {
  return OperateOpen(
      [&](PortSession& session) { return text == nullptr ? Status::kInvalidArgument : session.Write(text); });
}

[[gnu::hot]] std::int32_t QDX_ReadPort(char* buffer, std::int32_t count, std::int32_t* first,
                                       std::int32_t* second, std::int16_t terminator) {
  return OperateOpen([&](PortSession& session) {
    if (!IsReadable(buffer, count, terminator)) return Status::kInvalidArgument;
    std::size_t delivered = 0;
    const Status status = session.Read({buffer, static_cast<std::size_t>(count)},
                                       static_cast<unsigned char>(terminator), delivered);
    if (first != nullptr) *first = static_cast<std::int32_t>(delivered);
    if (second != nullptr) *second = static_cast<std::int32_t>(session.queued());
    return status;
  });
}

std::int32_t QDX_FlushInQueue() {
  std::int32_t count = 0;
  const std::int32_t failed = OperateOpen([&](PortSession& session) {
    count = static_cast<std::int32_t>(session.Flush());
    return Status::kOk;
  });
  return failed < 0 ? failed : count;
}

std::int32_t QDX_ActivateInterpreter(std::int16_t /*value*/) { return Operate(OpenStatus); }

std::int32_t QDX_CloseInterpreterEx(std::int16_t /*port*/, std::int16_t /*value*/) {
  return Operate(OpenStatus);
}

std::int32_t QDX_ClosePort() {
  return Operate([](PortSession& session) {
    session.Close();
    return Status::kOk;
  });
}

std::int32_t QDX_Delay(std::int32_t milliseconds) {
  if (milliseconds < 0) return Code(Status::kInvalidArgument);
  return Operate([&](PortSession& session) {
    Waiting waiting(session.wait_handler());
    Deadline deadline(milliseconds, &waiting);
    SleepUntilExpired(deadline);
    return waiting.given_up() ? Status::kGivenUp : Status::kOk;
  });
}

std::int32_t QDX_SetNode(std::int16_t port, const char* node) {
  const PortKind* kind = FindPortKind(port);
  if (kind == nullptr || DefaultNode(kind->name).empty()) return Code(Status::kInvalidArgument);
  return Operate([&](PortSession& session) {
    session.SetNode(*kind, node == nullptr ? "" : node);
    return Status::kOk;
  });
}

std::int32_t USB_GetMaxUsbDevice() { return kScanSlots; }

std::int32_t USB_ScanUsbDevice(std::int32_t slots, char* buffer) {
  if (slots < 0 || (buffer == nullptr && slots > 0)) return Code(Status::kInvalidArgument);
  const auto count = static_cast<std::size_t>(slots);
  if (count > 0) std::memset(buffer, ' ', count * kScanRecord);
  return Operate([&](PortSession& session) {
    Waiting waiting(session.wait_handler());
    const auto devices = AttachedUsb(&waiting);
    for (std::size_t slot = 0; slot < std::min(count, devices.size()); ++slot)
      FillRecord(devices[slot], buffer + slot * kScanRecord);
    return waiting.given_up() ? Status::kGivenUp : Status::kOk;
  });
}

extern "C" KOLVANE_DEVLNK_EXPORT PortSession* KOLVANE_NewPortSession() {
  return new (std::nothrow) PortSession;
}

std::int32_t QDX_SetWaitHandler(std::int32_t (*handler)(void*, std::int32_t), void* context) {
  return Operate([&](PortSession& session) {
    session.SetWaitHandler({handler, context});
    return Status::kOk;
  });
}

std::int32_t QDX_BytesWaiting() {
  return static_cast<std::int32_t>(std::min<std::size_t>(Session().bytes_waiting(), INT32_MAX));
}

std::int32_t QDX_WaitDescriptor() { return Session().wait_fd(); }

std::int32_t QDX_StatusText(std::int32_t status, char* buffer, std::int32_t size) {
  if (buffer == nullptr || size <= 0) return 0;
  const std::string_view text =
      kolvane::base::Utf8Prefix(kolvane::devlnk::StatusText(status), static_cast<std::size_t>(size) - 1);
  buffer[text.copy(buffer, text.size())] = '\0';
  return static_cast<std::int32_t>(text.size());
}
