#include "devlnk/usb_channel.h"

#include <linux/usb/tmc.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <string>

#include "base/encoding.h"
#include "devlnk/driver_thread.h"
#include "devlnk/port_scan.h"
#include "devlnk/serial_channel.h"

namespace kolvane::devlnk {
namespace {

constexpr std::uint32_t kShortestTimeoutMs = 100;  // the driver refuses shorter ones

// Unplugging during a transfer appears as a protocol error on most controllers; a stalled pipe does not mean
// that the instrument has gone.
Status FailureOfTransfer(int error) {
  switch (error) {
    case EPROTO:
    case EILSEQ:
      return Status::kConnectionLost;
    case EPIPE:
      return Status::kIoError;
    default:
      return StatusOfTransfer(error);
  }
}

class UsbChannel final : public Channel {
 public:
  explicit UsbChannel(std::unique_ptr<DeviceNode> node) : node_(std::move(node)) {}

  /// To be called first.
  Status Prepare(Deadline& deadline);

  Received Read(std::span<char> room, Deadline& deadline) override;
  Status Write(std::string_view bytes, Deadline& deadline) override;
  void DiscardInput(Deadline& deadline) override;
  Status ReadStatusByte(std::uint8_t& status_byte, Deadline& deadline) override;

 private:
  bool Clear(Deadline& deadline, int& error);
  void SetTimeout(Deadline& deadline);

  std::shared_ptr<DeviceNode> node_;
  DriverThread thread_;
  std::uint32_t timeout_ms_ = 0;
};

// False if given up; `error` is an errno, 0 for none.
bool UsbChannel::Clear(Deadline& deadline, int& error) {
  const auto result = std::make_shared<int>(0);
  const bool done = thread_.Run(deadline, [node = node_, result] {
    if (node->Control(USBTMC_IOCTL_CLEAR, nullptr) != 0) *result = errno;
  });
  if (done) error = *result;
  return done;
}

Status UsbChannel::Prepare(Deadline& deadline) {
  std::uint8_t on = 1;
  // After a time-out the driver itself cancels the request; older drivers do not support this.
  node_->Control(USBTMC_IOCTL_AUTO_ABORT, &on);
  int error = 0;
  if (!Clear(deadline, error)) return Status::kGivenUp;
  // An instrument need not support a clear; a node without that request is not an instrument.
  return error == ENOTTY || error == ENODEV ? StatusFromErrno(error) : Status::kOk;
}

// Unread input waits in the instrument; only a clear discards it.
void UsbChannel::DiscardInput(Deadline& deadline) {
  if (!thread_.AwaitIdle(deadline)) return;
  thread_.DropLate();
  int error = 0;
  (void)Clear(deadline, error);
}

void UsbChannel::SetTimeout(Deadline& deadline) {
  auto wanted = std::max(kShortestTimeoutMs, static_cast<std::uint32_t>(deadline.RemainingMs()));
  if (wanted != timeout_ms_) node_->Control(USBTMC_IOCTL_SET_TIMEOUT, &wanted);
  timeout_ms_ = wanted;
}

// An instrument asked for more than it has to say may report an error, so nothing is asked if there is no
// time to wait.
Received UsbChannel::Read(std::span<char> room, Deadline& deadline) {
  while (!deadline.HasExpired() && thread_.AwaitIdle(deadline)) {
    SetTimeout(deadline);
    // An empty message ends the read like any other.
    const auto timed_out = std::make_shared<bool>(false);
    const Received received = thread_.Read(room, deadline, [node = node_, timed_out](std::span<char> into) {
      const ssize_t got = node->Read(into);
      // The driver continues until the room is full or the message ends.
      if (got >= 0) {
        const auto bytes = static_cast<std::size_t>(got);
        return Received{bytes, Status::kOk, bytes < into.size()};
      }
      *timed_out = errno == ETIMEDOUT || errno == EINTR;
      return *timed_out ? Received{} : Received{0, FailureOfTransfer(errno)};
    });
    if (deadline.given_up() || !*timed_out) return received;
    deadline.Attend();
  }
  return {};
}

Status UsbChannel::Write(std::string_view bytes, Deadline& deadline) {
  struct Outcome {
    ssize_t sent = 0;
    int error = 0;
  };
  while (!bytes.empty()) {
    if (!thread_.AwaitIdle(deadline)) return Status::kWriteTimeout;
    SetTimeout(deadline);
    const auto outcome = std::make_shared<Outcome>();
    const bool done = thread_.Run(deadline, [node = node_, outcome, own = std::string(bytes)] {
      outcome->sent = node->Write(own);
      outcome->error = errno;
    });
    if (!done || (outcome->sent < 0 && outcome->error == ETIMEDOUT)) return Status::kWriteTimeout;
    if (outcome->sent < 0 && outcome->error != EINTR) return FailureOfTransfer(outcome->error);
    if (outcome->sent > 0) bytes.remove_prefix(static_cast<std::size_t>(outcome->sent));
    if (!bytes.empty() && deadline.HasExpired()) return Status::kWriteTimeout;
  }
  return Status::kOk;
}

// A basic instrument of this class has no status byte: it refuses the request, which stalls the pipe.
Status UsbChannel::ReadStatusByte(std::uint8_t& status_byte, Deadline& deadline) {
  struct Polled {
    std::uint8_t byte = 0;
    int error = 0;
  };
  if (!thread_.AwaitIdle(deadline)) return Status::kReadTimeout;
  SetTimeout(deadline);
  const auto polled = std::make_shared<Polled>();
  const bool done = thread_.Run(deadline, [node = node_, polled] {
    if (node->Control(USBTMC488_IOCTL_READ_STB, &polled->byte) != 0) polled->error = errno;
  });
  if (!done || polled->error == ETIMEDOUT) return Status::kReadTimeout;
  if (polled->error == ENOTTY || polled->error == EPIPE) return Status::kNotAvailable;
  if (polled->error != 0) return FailureOfTransfer(polled->error);
  status_byte = polled->byte;
  return Status::kOk;
}

Opened OpenDevice(const UsbDevice& device, Deadline& deadline) {
  if (device.driver == UsbDriver::kSerial) return OpenSerialNode(device.node, SerialParameters{});
  std::unique_ptr<DeviceNode> node;
  const Status status = OpenDeviceNode(device.node, 0, node);
  if (status != Status::kOk) return {status, nullptr};
  return OpenUsbNode(std::move(node), deadline);
}

}  // namespace

Opened OpenUsbNode(std::unique_ptr<DeviceNode> node, Deadline& deadline) {
  auto channel = std::make_unique<UsbChannel>(std::move(node));
  const Status status = channel->Prepare(deadline);
  if (status != Status::kOk) return {status, nullptr};
  return {Status::kOk, std::move(channel)};
}

Opened OpenUsb(const PortRequest& request, Deadline& deadline) {
  if (request.text.empty()) return {Status::kInvalidArgument, nullptr};
  for (const UsbDevice& device : AttachedUsb(deadline.waiting())) {
    if (base::EightBitText(device.serial) == request.text) return OpenDevice(device, deadline);
  }
  return {Status::kNoSuchNode, nullptr};
}

}  // namespace kolvane::devlnk
