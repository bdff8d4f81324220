#include "devlnk/usb_channel.h"

#include <linux/usb/tmc.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>

#include "devlnk/eight_bit.h"
#include "devlnk/serial_channel.h"
#include "devlnk/usb_scan.h"

namespace kolvane::devlnk {
namespace {

constexpr std::uint32_t kShortestTimeoutMs = 100;  // the driver refuses shorter ones

// Pulling the plug during a transfer shows as a protocol error on most controllers; a stalled pipe does not
// mean that the instrument has gone.
Status FailureOfTransfer(int error) {
  switch (error) {
    case ENODEV:
    case ENXIO:
    case EIO:
    case EPROTO:
    case EILSEQ:
      return Status::kConnectionLost;
    case EPIPE:
      return Status::kIoError;
    default:
      return StatusFromErrno(error);
  }
}

class UsbChannel final : public Channel {
 public:
  explicit UsbChannel(std::unique_ptr<DeviceNode> node) : node_(std::move(node)) {}

  /// Before anything else.
  Status Prepare();

  Received Read(std::span<char> room, Deadline& deadline) override;
  Status Write(std::string_view bytes, Deadline& deadline) override;
  // What the host has not asked for waits in the instrument; only a clear makes the instrument forget it.
  void DiscardInput() override { node_->Control(USBTMC_IOCTL_CLEAR, nullptr); }

 private:
  void SetTimeout(Deadline& deadline);

  std::unique_ptr<DeviceNode> node_;
  std::uint32_t timeout_ms_ = 0;
};

Status UsbChannel::Prepare() {
  std::uint8_t on = 1;
  // After a time-out the driver itself withdraws the request; older drivers do not know this.
  node_->Control(USBTMC_IOCTL_AUTO_ABORT, &on);
  if (node_->Control(USBTMC_IOCTL_CLEAR, nullptr) == 0) return Status::kOk;
  // A clear that the instrument does not know is no hindrance; a node without that request is no instrument.
  return errno == ENOTTY || errno == ENODEV ? StatusFromErrno(errno) : Status::kOk;
}

void UsbChannel::SetTimeout(Deadline& deadline) {
  auto wanted = std::max(kShortestTimeoutMs, static_cast<std::uint32_t>(deadline.RemainingMs()));
  if (wanted != timeout_ms_) node_->Control(USBTMC_IOCTL_SET_TIMEOUT, &wanted);
  timeout_ms_ = wanted;
}

// An instrument that is asked for more than it has to say may report an error of its own, so nothing is asked
// when there is no time to wait for it.
Received UsbChannel::Read(std::span<char> room, Deadline& deadline) {
  while (!deadline.IsOver()) {
    SetTimeout(deadline);
    const ssize_t got = node_->Read(room);
    if (got >= 0) return {static_cast<std::size_t>(got)};
    if (errno != ETIMEDOUT && errno != EINTR) return {0, FailureOfTransfer(errno)};
  }
  return {};
}

Status UsbChannel::Write(std::string_view bytes, Deadline& deadline) {
  while (!bytes.empty()) {
    SetTimeout(deadline);
    const ssize_t sent = node_->Write(bytes);
    if (sent < 0 && errno == ETIMEDOUT) return Status::kWriteTimeout;
    if (sent < 0 && errno != EINTR) return FailureOfTransfer(errno);
    if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
    if (!bytes.empty() && deadline.IsOver()) return Status::kWriteTimeout;
  }
  return Status::kOk;
}

Opened OpenDevice(const UsbDevice& device) {
  if (device.driver == UsbDriver::kSerial) return OpenSerialNode(device.node, SerialParameters{});
  std::unique_ptr<DeviceNode> node;
  const Status status = OpenDeviceNode(device.node, 0, node);
  if (status != Status::kOk) return {status, nullptr};
  return OpenUsbNode(std::move(node));
}

}  // namespace

Opened OpenUsbNode(std::unique_ptr<DeviceNode> node) {
  auto channel = std::make_unique<UsbChannel>(std::move(node));
  const Status status = channel->Prepare();
  if (status != Status::kOk) return {status, nullptr};
  return {Status::kOk, std::move(channel)};
}

Opened OpenUsb(const PortRequest& request, Deadline&) {
  if (request.text.empty()) return {Status::kInvalidArgument, nullptr};
  for (const UsbDevice& device : AttachedUsb()) {
    if (EightBitText(device.serial) == request.text) return OpenDevice(device);
  }
  return {Status::kNoSuchNode, nullptr};
}

}  // namespace kolvane::devlnk
