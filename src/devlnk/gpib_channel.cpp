#include "devlnk/gpib_channel.h"

#include <algorithm>
#include <string>

#include "base/number.h"
#include "devlnk/driver_thread.h"
#include "devlnk/gpib_library.h"

namespace kolvane::devlnk {
namespace {

// Bits of the driver's status word.
constexpr int kError = 0x8000;
constexpr int kTimedOut = 0x4000;
constexpr int kEnd = 0x2000;

// The driver's error numbers with a status of their own.
constexpr int kSystemError = 0;  // errno is in the count
constexpr int kNoListener = 2;
constexpr int kBadArgument = 4;
constexpr int kAborted = 6;
constexpr int kNoBoard = 7;
constexpr int kNoCapability = 11;
constexpr int kBusFault = 14;

constexpr int kRepeatAddressing = 6;  // option of ibconfig
constexpr int kNoSecondaryAddress = 0;
constexpr std::int16_t kLastAddress = 30;  // 31 means "nobody listens" on the bus
constexpr int kLastBoard = 15;

/// A device on the bus, taken offline by the destructor. The driver keeps the result of the last transfer per
/// thread, so each transfer queries it on the same thread.
class GpibDevice {
 public:
  GpibDevice(std::shared_ptr<const GpibLibrary> library, int handle)
      : library_(std::move(library)), handle_(handle) {}
  GpibDevice(const GpibDevice&) = delete;
  GpibDevice& operator=(const GpibDevice&) = delete;
  ~GpibDevice() { library_->ibonl(handle_, 0); }

  /// The result of one transfer. Neither bytes nor a failure if it timed out.
  struct Transfer {
    Received moved;
    bool timed_out = false;
  };
  Transfer Read(std::span<char> room) const {
    return OutcomeOf(library_->ibrd(handle_, room.data(), static_cast<long>(room.size())), room.size());
  }
  Transfer Write(std::string_view bytes) const {
    return OutcomeOf(library_->ibwrt(handle_, bytes.data(), static_cast<long>(bytes.size())), bytes.size());
  }
  Transfer Poll(char& status_byte) const { return OutcomeOf(library_->ibrsp(handle_, &status_byte), 0); }
  bool Clear() const { return (library_->ibclr(handle_) & kError) == 0; }
  void SetTimeoutCode(int code) const { library_->ibtmo(handle_, code); }

 private:
  Transfer OutcomeOf(int status, std::size_t max_bytes) const;

  std::shared_ptr<const GpibLibrary> library_;
  int handle_;
};

Status FailureOfSelect(const GpibLibrary& library) {
  switch (library.ThreadIberr()) {
    case kSystemError:
      return StatusFromErrno(static_cast<int>(library.ThreadIbcntl()));
    case kNoListener:
    case kAborted:
    case kNoBoard:
    case kBusFault:
      return Status::kNoSuchNode;
    case kBadArgument:
      return Status::kInvalidArgument;
    case kNoCapability:
      return Status::kNotAvailable;
    default:
      return Status::kIoError;
  }
}

Status FailureOfTransfer(const GpibLibrary& library) {
  const Status status = FailureOfSelect(library);
  return status == Status::kNoSuchNode ? Status::kConnectionLost : status;
}

GpibDevice::Transfer GpibDevice::OutcomeOf(int status, std::size_t max_bytes) const {
  const bool error = (status & kError) != 0;
  const bool timed_out = (status & kTimedOut) != 0 || (error && library_->ThreadIberr() == kAborted);
  const bool failed = error && !timed_out;
  // After a system error the count is its errno.
  const bool counts = !failed || library_->ThreadIberr() != kSystemError;
  const long count = counts ? library_->ThreadIbcntl() : 0;
  const std::size_t moved = count <= 0 ? 0 : std::min(static_cast<std::size_t>(count), max_bytes);
  const bool ends = !error && (status & kEnd) != 0;
  return {{moved, failed ? FailureOfTransfer(*library_) : Status::kOk, ends}, timed_out};
}

struct DeviceOnBus {
  int board;
  int address;
  int timeout_code;
  GpibOptions options;
};

/// `device` is set exactly if the status is kOk.
struct Selected {
  std::shared_ptr<GpibDevice> device;
  Status status = Status::kOk;
};

Selected SelectDevice(const std::shared_ptr<const GpibLibrary>& library, const DeviceOnBus& wanted) {
  const int handle = library->ibdev(wanted.board, wanted.address, kNoSecondaryAddress, wanted.timeout_code,
                                    wanted.options.eoi_on_write ? 1 : 0, GpibEosWord(wanted.options));
  if (handle < 0) return {nullptr, FailureOfSelect(*library)};
  auto device = std::make_shared<GpibDevice>(library, handle);
  library->ibconfig(handle, kRepeatAddressing, wanted.options.repeat_addressing ? 1 : 0);
  if (!device->Clear()) return {nullptr, FailureOfSelect(*library)};
  return {std::move(device), Status::kOk};
}

class GpibChannel final : public Channel {
 public:
  GpibChannel(std::shared_ptr<const GpibLibrary> library, int board, const GpibOptions& options)
      : library_(std::move(library)), board_(board), options_(options) {}

  Status Select(std::int16_t address, Deadline& deadline) override;
  Received Read(std::span<char> room, Deadline& deadline) override;
  Status Write(std::string_view bytes, Deadline& deadline) override;
  void DiscardInput(Deadline& deadline) override;
  Status ReadStatusByte(std::uint8_t& status_byte, Deadline& deadline) override;

 private:
  void SetTimeout(Deadline& deadline);

  std::shared_ptr<const GpibLibrary> library_;
  int board_;
  GpibOptions options_;
  std::shared_ptr<GpibDevice> device_;
  DriverThread thread_;
  int timeout_code_ = 0;
};

Status GpibChannel::Select(std::int16_t address, Deadline& deadline) {
  if (address > kLastAddress) return Status::kInvalidArgument;
  if (!thread_.AwaitIdle(deadline)) return Status::kReadTimeout;
  thread_.DropLate();
  device_.reset();
  timeout_code_ = GpibTimeoutCode(deadline.RemainingMs());
  const auto selected = std::make_shared<Selected>();
  const bool done = thread_.Run(deadline, [selected, library = library_,
                                           device = DeviceOnBus{board_, address, timeout_code_, options_}] {
    *selected = SelectDevice(library, device);
  });
  if (!done) return Status::kGivenUp;
  device_ = selected->device;
  return selected->status;
}

void GpibChannel::SetTimeout(Deadline& deadline) {
  const int code = GpibTimeoutCode(deadline.RemainingMs());
  if (code != timeout_code_) device_->SetTimeoutCode(code);
  timeout_code_ = code;
}

// Unread input waits in the device; only a clear discards it.
void GpibChannel::DiscardInput(Deadline& deadline) {
  if (device_ == nullptr || !thread_.AwaitIdle(deadline)) return;
  thread_.DropLate();
  (void)thread_.Run(deadline, [device = device_] { (void)device->Clear(); });
}

Status GpibChannel::ReadStatusByte(std::uint8_t& status_byte, Deadline& deadline) {
  struct Polled {
    char byte = 0;
    GpibDevice::Transfer transfer;
  };
  if (library_->ibrsp == nullptr) return Status::kNotAvailable;
  if (device_ == nullptr) return Status::kNotOpen;
  if (!thread_.AwaitIdle(deadline)) return Status::kReadTimeout;
  SetTimeout(deadline);
  const auto polled = std::make_shared<Polled>();
  const bool done =
      thread_.Run(deadline, [device = device_, polled] { polled->transfer = device->Poll(polled->byte); });
  if (!done || polled->transfer.timed_out) return Status::kReadTimeout;
  status_byte = static_cast<std::uint8_t>(polled->byte);
  return polled->transfer.moved.status;
}

// A device asked for more than it has to say may report an error, so nothing is asked if there is no time to
// wait.
Received GpibChannel::Read(std::span<char> room, Deadline& deadline) {
  if (device_ == nullptr) return {0, Status::kNotOpen};
  while (!deadline.HasExpired() && thread_.AwaitIdle(deadline)) {
    SetTimeout(deadline);
    const auto timed_out = std::make_shared<bool>(false);
    const Received received =
        thread_.Read(room, deadline, [device = device_, timed_out](std::span<char> into) {
          const GpibDevice::Transfer transfer = device->Read(into);
          *timed_out = transfer.timed_out;
          return transfer.moved;
        });
    if (deadline.given_up() || received.bytes > 0 || !*timed_out) return received;
    deadline.Attend();
  }
  return {};
}

Status GpibChannel::Write(std::string_view bytes, Deadline& deadline) {
  if (device_ == nullptr) return Status::kNotOpen;
  while (!bytes.empty()) {
    if (!thread_.AwaitIdle(deadline)) return Status::kWriteTimeout;
    SetTimeout(deadline);
    const auto transfer = std::make_shared<GpibDevice::Transfer>();
    const bool done = thread_.Run(
        deadline, [device = device_, transfer, own = std::string(bytes)] { *transfer = device->Write(own); });
    if (!done) return Status::kWriteTimeout;
    if (transfer->moved.status != Status::kOk) return transfer->moved.status;
    bytes.remove_prefix(transfer->moved.bytes);
    if (transfer->moved.bytes == 0 && !transfer->timed_out) return Status::kIoError;
    if (!bytes.empty() && deadline.HasExpired()) return Status::kWriteTimeout;
  }
  return Status::kOk;
}

}  // namespace

int GpibTimeoutCode(std::int32_t milliseconds) {
  constexpr int kLastCode = 17;
  const std::int64_t wanted_us = std::int64_t{milliseconds} * 1000;
  std::int64_t decade = 1;
  for (int code = 1; code < kLastCode; ++code) {
    const bool three = code % 2 == 0;
    if ((three ? 30 : 10) * decade >= wanted_us) return code;
    if (three) decade *= 10;
  }
  return kLastCode;
}

int GpibEosWord(const GpibOptions& options) {
  constexpr int kEndReads = 0x400;
  constexpr int kEndWrites = 0x800;
  constexpr int kEightBits = 0x1000;
  const int uses = (options.stop_read_on_eos ? kEndReads : 0) | (options.eoi_with_eos ? kEndWrites : 0);
  return uses == 0 ? 0 : uses | kEightBits | options.eos;
}

Opened OpenGpib(const PortRequest& request, Deadline&) {
  const auto board = base::NumberValue(NodeOf(request), 0, kLastBoard);
  if (!board) return {Status::kInvalidArgument, nullptr};
  auto library = LoadGpibLibrary();
  if (library == nullptr) return {Status::kNotAvailable, nullptr};
  return {Status::kOk, std::make_unique<GpibChannel>(std::move(library), *board, request.gpib)};
}

}  // namespace kolvane::devlnk
