#include "devlnk/gpib_channel.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "devlnk/gpib_library.h"
#include "devlnk/node_names.h"

namespace kolvane::devlnk {
namespace {

// Bits of the driver's status word.
constexpr int kError = 0x8000;
constexpr int kTimedOut = 0x4000;

// The driver's error numbers that stand for something of their own.
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

class GpibChannel final : public Channel {
 public:
  GpibChannel(std::shared_ptr<const GpibLibrary> library, int board, const GpibOptions& options)
      : library_(std::move(library)), board_(board), options_(options) {}
  GpibChannel(const GpibChannel&) = delete;
  GpibChannel& operator=(const GpibChannel&) = delete;
  ~GpibChannel() override { CloseDevice(); }

  Status Select(std::int16_t address, Deadline& deadline) override;
  Received Read(std::span<char> room, Deadline& deadline) override;
  Status Write(std::string_view bytes, Deadline& deadline) override;
  // What the host has not asked for waits in the device; only a clear makes the device forget it.
  void DiscardInput() override {
    if (device_ >= 0) library_->ibclr(device_);
  }

 private:
  void CloseDevice();
  void SetTimeout(Deadline& deadline);
  bool TimedOut(int status) const;
  std::size_t Count(std::size_t most) const;
  Status FailureOfSelect() const;
  Status FailureOfTransfer() const;

  std::shared_ptr<const GpibLibrary> library_;
  int board_;
  GpibOptions options_;
  int device_ = -1;
  int timeout_code_ = 0;
};

void GpibChannel::CloseDevice() {
  if (device_ >= 0) library_->ibonl(device_, 0);
  device_ = -1;
}

Status GpibChannel::Select(std::int16_t address, Deadline& deadline) {
  if (address > kLastAddress) return Status::kInvalidArgument;
  CloseDevice();
  timeout_code_ = GpibTimeoutCode(deadline.RemainingMs());
  device_ = library_->ibdev(board_, address, kNoSecondaryAddress, timeout_code_,
                            options_.eoi_on_write ? 1 : 0, GpibEosWord(options_));
  if (device_ < 0) return FailureOfSelect();
  library_->ibconfig(device_, kRepeatAddressing, options_.repeat_addressing ? 1 : 0);
  if ((library_->ibclr(device_) & kError) == 0) return Status::kOk;
  const Status failure = FailureOfSelect();
  CloseDevice();
  return failure;
}

void GpibChannel::SetTimeout(Deadline& deadline) {
  const int code = GpibTimeoutCode(deadline.RemainingMs());
  if (code != timeout_code_) library_->ibtmo(device_, code);
  timeout_code_ = code;
}

bool GpibChannel::TimedOut(int status) const {
  return (status & kTimedOut) != 0 || ((status & kError) != 0 && library_->ThreadIberr() == kAborted);
}

std::size_t GpibChannel::Count(std::size_t most) const {
  const long count = library_->ThreadIbcntl();
  return count <= 0 ? 0 : std::min(static_cast<std::size_t>(count), most);
}

// A device that is asked for more than it has to say may report an error of its own, so nothing is asked when
// there is no time to wait for it.
Received GpibChannel::Read(std::span<char> room, Deadline& deadline) {
  if (device_ < 0) return {0, Status::kNotOpen};
  while (!deadline.IsOver()) {
    SetTimeout(deadline);
    const int status = library_->ibrd(device_, room.data(), static_cast<long>(room.size()));
    const bool timed_out = TimedOut(status);
    const bool failed = (status & kError) != 0 && !timed_out;
    const Status failure = failed ? FailureOfTransfer() : Status::kOk;
    // After a failure of the system the count is none.
    const bool counts = !failed || library_->ThreadIberr() != kSystemError;
    const std::size_t count = counts ? Count(room.size()) : 0;
    if (count > 0 || !timed_out) return {count, failure};
  }
  return {};
}

Status GpibChannel::Write(std::string_view bytes, Deadline& deadline) {
  if (device_ < 0) return Status::kNotOpen;
  while (!bytes.empty()) {
    SetTimeout(deadline);
    const int status = library_->ibwrt(device_, bytes.data(), static_cast<long>(bytes.size()));
    const bool timed_out = TimedOut(status);
    if ((status & kError) != 0 && !timed_out) return FailureOfTransfer();
    const std::size_t sent = Count(bytes.size());
    bytes.remove_prefix(sent);
    if (sent == 0 && !timed_out) return Status::kIoError;
    if (!bytes.empty() && deadline.IsOver()) return Status::kWriteTimeout;
  }
  return Status::kOk;
}

Status GpibChannel::FailureOfSelect() const {
  switch (library_->ThreadIberr()) {
    case kSystemError:
      return StatusFromErrno(static_cast<int>(library_->ThreadIbcntl()));
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

Status GpibChannel::FailureOfTransfer() const {
  const Status status = FailureOfSelect();
  return status == Status::kNoSuchNode ? Status::kConnectionLost : status;
}

std::optional<int> BoardFrom(std::string_view text) {
  int board = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), board);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  if (!whole || board < 0 || board > kLastBoard) return std::nullopt;
  return board;
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
  const auto board = BoardFrom(NodeFor(request.name));
  if (!board) return {Status::kInvalidArgument, nullptr};
  auto library = LoadGpibLibrary();
  if (library == nullptr) return {Status::kNotAvailable, nullptr};
  return {Status::kOk, std::make_unique<GpibChannel>(std::move(library), *board, request.gpib)};
}

}  // namespace kolvane::devlnk
